#include "transport/FileWriteStream.h"

FileWriteStream::FileWriteStream(const WideString& path) : file(_wfopen(path.c_str(), TEXT("wb"))) {
    mode = writing;
    good = static_cast<bool>(file);
}

void FileWriteStream::Write(const void* data, uint32_t size) {
    if (good) good = fwrite(data, size, 1, file.Get()) == 1;
}

void FileWriteStream::Flush() {
    if (good) good = fflush(file.Get()) == 0;
}

bool FileWriteStream::Read(void* /*data*/, uint32_t /*size*/) {
    good = false;
    return false;
}
