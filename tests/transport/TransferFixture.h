/* A host whose answers are scripted, and an application that downloads from it through the exports. */
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "LMOnline.h"
#include "support/NetworkTest.h"
#include "transport/BufferSizes.h"

/* What one read from the network asks for, in bytes. */
inline constexpr uint32_t chunk = downloadChunkSize;

inline constexpr WCHAR host[] = TEXT("maps.example");
inline constexpr WCHAR target[] = TEXT("\\Storage\\file.map");
inline constexpr WCHAR temporary[] = TEXT("\\Storage\\file.map.TMP");

/* Bytes that no shift or repetition of theirs equals. */
inline std::string Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 4096);
    return bytes;
}

class Transfer : public NetworkTest {
protected:
    void Answer(WebReply reply) { device.AddHost(host, 80, std::move(reply)); }
    void Answer(std::string bytes) { Answer(WebReply::WithBody(std::move(bytes))); }

    /* Called at every callback; its answer is the callback's. */
    std::function<int32_t()> atCallback = [] { return 1; };
    size_t callbacks = 0;

    static int LM_CALL Callback(void* context) {
        auto* const test = static_cast<Transfer*>(context);
        ++test->callbacks;
        return test->atCallback();
    }

    int32_t Fetch() {
        return LMDownloadWebFileProgress(host, TEXT("/maps/file.map"), target, Callback, this, &progress);
    }

    void ExpectNeitherFile() {
        EXPECT_FALSE(device.Exists(target));
        EXPECT_FALSE(device.Exists(temporary));
    }

    DownloadProgress progress = {-7, -7};
};
