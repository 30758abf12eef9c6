#include "transport/FileReadStream.h"

FileReadStream::FileReadStream(const WideString& path) : file(_wfopen(path.c_str(), TEXT("rb"))) {
    mode = reading;
    good = static_cast<bool>(file);
}

void FileReadStream::Write(const void* /*data*/, uint32_t /*size*/) {
    good = false;
}

bool FileReadStream::Read(void* data, uint32_t size) {
    if (good) good = fread(data, size, 1, file.Get()) == 1;
    return good;
}
