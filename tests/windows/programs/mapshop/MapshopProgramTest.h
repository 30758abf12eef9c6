/* Tests of the console program mapshop. */
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "helpers/ChildProcess.h"
#include "helpers/ScratchFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"

/* The program runs in a folder of the test's own. */
class MapshopProgramTest : public testing::Test {
protected:
    void SetUp() override;

    /* Runs the program; relative names mean files in the folder. */
    ChildOutcome Run(const std::wstring& arguments) const;

    [[nodiscard]] std::wstring PathOf(const std::wstring& name) const { return folder.Path() + L"\\" + name; }

    /* Expects this message and nothing else. */
    static void ExpectFailure(DWORD exitCode, const std::string& message, const ChildOutcome& outcome);

    /* Bytes of which no 251 are like the next. */
    static std::string Content(size_t size);

    static constexpr char plainHead[] = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    static constexpr char headOf10000[] =
        "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 10000\r\n\r\n";
    static constexpr char notFound[] =
        "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 9\r\n\r\nnot found";

    ScratchFolder folder;
};

/* The program reaches a scripted web server, whatever host it asks for. */
class MapshopWebTest : public MapshopProgramTest {
protected:
    /* Expects a message about the command line or the local file, before anything is sent. */
    void ExpectRefusal(DWORD exitCode, const std::wstring& arguments, const std::string& message);

    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

std::vector<std::string> LinesOf(std::string_view text);

/* Empty when there is no line. */
std::string LastLineOf(std::string_view text);
