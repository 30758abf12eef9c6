/* Owner of an open file of the C runtime, away from the handheld's last error. */
#pragma once

#include <cstdio>
#include <memory>

struct FileEnd {
    void operator()(FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using OpenedFile = std::unique_ptr<FILE, FileEnd>;
