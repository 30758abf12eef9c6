/* Files that `check` judges. Each test begins with a translation of all stand-in texts by themselves, which
 * is without mistakes, and changes a little. */
#pragma once

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"
#include "Samples.h"
#include "Utf16.h"
#include "files/TableFile.h"
#include "service/TemporaryFolder.h"
#include "texts/ShownTexts.h"

class CheckFixture : public testing::Test {
protected:
    /* The lines of a complete translation: "TEXT<TAB>TEXT" */
    CheckFixture() {
        for (const ShownText& shown : AllShownTexts()) {
            const std::string field = Utf8Of(EscapedText(shown.text));
            lines.push_back(field + "\t" + field);
        }
    }

    /* Puts `line` in place of the record of the text whose field is `text`; the number of the line. */
    size_t Replace(const std::string& text, const std::string& line) {
        for (std::string& each : lines) {
            if (!each.starts_with(text + "\t")) continue;
            each = line;
            return static_cast<size_t>(&each - lines.data()) + 1;
        }
        ADD_FAILURE() << "no record of " << text;
        return 0;
    }

    /* What a language file of the lines holds. */
    [[nodiscard]] std::string LanguageFile() const { return Utf16Bytes(u"\xFEFF" + Utf16Of(Joined("\r\n"))); }

    [[nodiscard]] std::string Joined(const std::string& end) const {
        std::string joined;
        for (const std::string& line : lines)
            joined += line + end;
        return joined;
    }

    /* What `check` says of a file of these bytes, one element a line: FILE stands for its path. */
    std::vector<std::string> Check(const std::string& bytes, const std::string& name = "French.txt") {
        const std::string path = (folder.Path() / name).string();
        std::ofstream(path, std::ios::binary) << bytes;
        const std::string arguments[] = {path};
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
        code = RunCheck(arguments);
        said = WithoutPath(testing::internal::GetCapturedStdout(), path);
        std::istringstream all(WithoutPath(testing::internal::GetCapturedStderr(), path));
        std::vector<std::string> told;
        for (std::string line; std::getline(all, line);)
            told.push_back(line);
        EXPECT_EQ(code, told.empty() ? 0 : 1);
        return told;
    }

    /* Of the file that was checked by default. */
    [[nodiscard]] std::string Path() const { return (folder.Path() / "French.txt").string(); }

    /* The same of a language file of the lines. */
    std::vector<std::string> Check() { return Check(LanguageFile()); }

    /* "FILE:LINE: error: SENTENCE" */
    static std::string Error(size_t line, const std::string& sentence) {
        return "FILE:" + std::to_string(line) + ": error: " + sentence;
    }

    std::vector<std::string> lines;
    int code = -1;
    std::string said; /* on the standard output */

private:
    static std::string WithoutPath(std::string text, const std::string& path) {
        for (size_t at = text.find(path); at != std::string::npos; at = text.find(path))
            text.replace(at, path.size(), "FILE");
        return text;
    }

    TemporaryFolder folder;
};
