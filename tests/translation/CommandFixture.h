/* What tests of commands share: a folder with files, a command that is run in it, and what it says. */
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Commands.h"
#include "files/Complaint.h"
#include "files/Files.h"
#include "service/TemporaryFolder.h"

class CommandTest : public testing::Test {
protected:
    /* What a command has returned and printed; paths without the folder. */
    struct Result {
        int code = -1;
        std::string output;
        std::string errors;
    };

    [[nodiscard]] std::string PathOf(const std::string& name) const {
        return (folder.Path() / name).string();
    }

    void Put(const std::string& name, std::string_view bytes) const { WriteFile(PathOf(name), bytes); }

    [[nodiscard]] std::string Take(const std::string& name) const { return ReadFile(PathOf(name)); }

    [[nodiscard]] bool Exists(const std::string& name) const { return std::filesystem::exists(PathOf(name)); }

    /* Arguments that do not begin with a dash are names of files in the folder. */
    Result Run(int (*command)(Arguments), std::vector<std::string> arguments) const {
        for (std::string& argument : arguments) {
            if (!argument.starts_with('-')) argument = PathOf(argument);
        }
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Result result;
        try {
            result.code = command(arguments);
        } catch (const UsageError& error) {
            result.code = 2;
            result.errors = error.what();
        }
        result.output = testing::internal::GetCapturedStdout();
        result.errors = WithoutFolder(testing::internal::GetCapturedStderr() + result.errors);
        return result;
    }

private:
    [[nodiscard]] std::string WithoutFolder(std::string text) const {
        const std::string prefix = folder.Path().string() + "/";
        for (size_t at = 0; (at = text.find(prefix)) != std::string::npos;)
            text.erase(at, prefix.size());
        return text;
    }

    TemporaryFolder folder;
};
