#include "programs/mapshop/MapshopProgramTest.h"

#include "helpers/ProgramFolder.h"

void MapshopProgramTest::SetUp() {
    SetEnvironmentVariableW(L"COLUMNS", L"100");
}

ChildOutcome MapshopProgramTest::Run(const std::wstring& arguments) const {
    return RunChild(L"\"" + ProgramFolder() + L"\\mapshop.exe\" " + arguments, folder.Path());
}

void MapshopProgramTest::ExpectFailure(DWORD exitCode, const std::string& message,
                                       const ChildOutcome& outcome) {
    EXPECT_EQ(exitCode, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ("mapshop: " + message + "\n", outcome.errors);
}

std::string MapshopProgramTest::Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251 + i / 251);
    return bytes;
}

void MapshopWebTest::ExpectRefusal(DWORD exitCode, const std::wstring& arguments,
                                   const std::string& message) {
    SCOPED_TRACE(message);
    ExpectFailure(exitCode, message, Run(arguments));
    EXPECT_EQ(0U, server.TakeRequests().size());
}

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (size_t end; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1))
        lines.emplace_back(text.substr(0, end));
    if (!text.empty()) lines.emplace_back(text);
    return lines;
}

std::string LastLineOf(std::string_view text) {
    const std::vector<std::string> lines = LinesOf(text);
    return lines.empty() ? "" : lines.back();
}
