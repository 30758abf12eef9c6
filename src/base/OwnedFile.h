/* Owner of an open file of the C runtime. */
#pragma once

#include "base/Owned.h"

struct FileKind {
    using Handle = FILE*;
    static constexpr Handle none = nullptr;
    static void Close(Handle file) noexcept { fclose(file); }
};
using FileHandle = Owned<FileKind>;
