/* A folder of a test's own. */
#pragma once

#include <string>
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
