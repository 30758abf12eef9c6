/* A test of downloads and ranged reads through the DLL's exports, against a scripted web server. */
#pragma once

#include "Platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "helpers/ScratchFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/WebProxy.h"
#include "transport/BufferSizes.h"

class TransferTest : public testing::Test {
protected:
    static constexpr const WCHAR* host = L"maps.example";
    static constexpr const WCHAR* urlPath = L"/maps/file.map";

    /* What one read from the network asks for, in bytes. */
    static constexpr uint32_t chunk = downloadChunkSize;

    /* Bytes of which no 4096 are like the next. */
    static std::string Content(size_t size);

    /* The head of a reply; `status` is like "200 OK", and each of `fields` ends with "\r\n". */
    static std::string Head(std::string_view status, std::string_view fields = "");

    /* The field of a reply's head that tells the length of its body. */
    static std::string LengthField(uint64_t length);

    /* Answers from here on with these bytes, head and body. */
    void AnswerRaw(std::string bytes) { server.Answer(ConnectionScript{std::move(bytes)}); }

    /* Counts itself, and answers what `atCallback` does; `context` is the test. */
    static int LM_CALL Callback(void* context);

    /* Downloads into `target`, with the callback and the record. */
    int32_t Download();

    /* The same with an older file there, a fresh count of callbacks and a fresh record. */
    int32_t DownloadOverOldFile();

    /* Downloads over an older file and expects all that a success promises. */
    void ExpectDownloadOf(const std::string& content, int64_t totalBytes);

    /* Expects the folder to be empty: neither target nor temporary file nor anything else. */
    void ExpectNoFiles() const;

    /* Expects the older file unchanged and nothing else, no callback, and an untouched record. */
    void ExpectOldFileUntouched() const;

    std::function<int()> atCallback = [] { return 1; };
    size_t callbacks = 0;
    DownloadProgress progress{-7, -7};

    ScratchFolder folder;
    const std::wstring target = folder.Path() + L"\\file.map";
    const std::wstring temporary = target + L".TMP";
    ScriptedServer server;
    WebProxy proxy{server.Port()};
    ShippedLibrary library;
};
