/* A folder of a test's own. */
#pragma once

#include "Platform.h"

#include <string>
#include <string_view>
#include <vector>

/* An empty folder among the user's temporary files, deleted with all that is in it at the end. */
class ScratchFolder {
public:
    /* Throws std::filesystem::filesystem_error. */
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /* Without a separator at its end. */
    [[nodiscard]] const std::wstring& Path() const { return path; }

    /* The names of what is in it, in their order. */
    [[nodiscard]] std::vector<std::wstring> Names() const;

private:
    std::wstring path;
};

/* The bytes of a file; "no file" when there is none or it cannot be read. */
std::string ContentOf(const std::wstring& path);

/* Makes a file anew. Throws std::runtime_error when that fails. */
void PutFile(const std::wstring& path, std::string_view bytes);

bool Exists(const std::wstring& path);

/* Waits until a file of that path is there; throws std::runtime_error when it does not come within 30 s. */
void WaitForFile(const std::wstring& path);
