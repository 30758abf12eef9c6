#include "ResumedDownload.h"

#include <algorithm>

namespace {

const DWORD pieceSize = 65536;
const DWORD sampleSize = 4096;
const DWORD firstNetworkError = 10000;  // those of sockets and of WinINet

}  // namespace

/* A local file, which is closed at the end of the object's life. Nobody else can open it meanwhile. */
class ResumedDownload::File {
public:
    File() : handle(INVALID_HANDLE_VALUE) {}
    ~File() { Close(); }

    bool Open(const Text& name, DWORD access, DWORD disposition) {
        handle = CreateFileW(name.c_str(), access, 0, NULL, disposition, FILE_ATTRIBUTE_NORMAL, NULL);
        return handle != INVALID_HANDLE_VALUE;
    }

    void Close() {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

    /* From `origin` on; the place from the file's beginning, or -1. */
    LMInt64 Seek(LMInt64 distance, DWORD origin) {
        LONG high = static_cast<LONG>(distance >> 32);
        const DWORD low = SetFilePointer(handle, static_cast<LONG>(distance & 0xFFFFFFFF), &high, origin);
        if (low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR) return -1;
        return static_cast<LMInt64>(high) << 32 | low;
    }

    /* Fills `bytes`; false when there are not as many. */
    bool Read(Bytes& bytes) {
        DWORD count = 0;
        return ReadFile(handle, &bytes[0], static_cast<DWORD>(bytes.size()), &count, NULL) &&
               count == bytes.size();
    }

    /* When this is true, the bytes are on the disk. */
    bool Write(const Bytes& bytes) {
        const DWORD size = static_cast<DWORD>(bytes.size());
        DWORD count = 0;
        if (!WriteFile(handle, &bytes[0], size, &count, NULL)) return false;
        if (count == size) return FlushFileBuffers(handle) != FALSE;
        SetLastError(ERROR_DISK_FULL);
        return false;
    }

private:
    File(const File&);
    File& operator=(const File&);

    HANDLE handle;
};

ResumedDownload::ResumedDownload(const Functions& library, const WCHAR* hostName, const WCHAR* urlPath,
                                 const WCHAR* localFile)
    : functions(library),
      host(hostName),
      path(urlPath),
      file(localFile),
      partFile(file + TEXT(".part")),
      descriptionFile(file + TEXT(".part.txt")),
      callback(NULL),
      callbackContext(NULL),
      wasCancelled(false),
      takenOver(0),
      result(resumeDone),
      error(0) {
    progress.bytesReceived = 0;
    progress.totalBytes = -1;
}

ResumeResult ResumedDownload::Run(LMProgressCallback function, void* context) {
    callback = function;
    callbackContext = context;
    wasCancelled = false;
    progress.bytesReceived = 0;
    takenOver = 0;
    result = resumeDone;
    error = 0;
    RunSteps();
    return result;
}

int LM_CALL ResumedDownload::OnRead(void* context) {
    ResumedDownload& download = *static_cast<ResumedDownload*>(context);
    download.wasCancelled = download.callback != NULL && download.callback(download.callbackContext) == 0;
    return download.wasCancelled ? 0 : 1;
}

/* The length is known by now, and the bytes are not wanted. */
int LM_CALL ResumedDownload::OnFirstRead(void* context) {
    *static_cast<bool*>(context) = true;
    return 0;
}

bool ResumedDownload::Fail(ResumeResult why, DWORD cause) {
    result = why;
    error = cause;
    return false;
}

bool ResumedDownload::RunSteps() {
    if (!AskLength(progress.totalBytes)) return false;
    bool inPieces = progress.totalBytes > static_cast<LMInt64>(pieceSize);
    if (inPieces && !AskWhetherRangesWork(inPieces)) return false;
    return inPieces ? DownloadPieces() : DownloadWhole();
}

bool ResumedDownload::AskLength(LMInt64& length) {
    const Text scratchFile = file + TEXT(".length");
    DownloadProgress asked = {0, -1};
    bool isKnown = false;
    functions.download(host.c_str(), path.c_str(), scratchFile.c_str(), OnFirstRead, &isKnown, &asked);
    const DWORD cause = GetLastError();
    length = asked.totalBytes;
    if (isKnown) return true;
    // Of its steps only the scratch file has such errors.
    const bool isOfFile = cause > 0 && cause < firstNetworkError && cause != ERROR_NOT_ENOUGH_MEMORY;
    return Fail(isOfFile ? resumeNotWritten : resumeBrokenOff, cause);
}

/* A server that does not know ranges sends the beginning of the file for each. */
bool ResumedDownload::AskWhetherRangesWork(bool& work) {
    Bytes first(sampleSize);
    Bytes second(sampleSize);
    if (!ReadPart(0, first) || !ReadPart(1, second)) return false;
    work = second != first && std::equal(first.begin() + 1, first.end(), second.begin());
    return true;
}

bool ResumedDownload::ReadPart(LMInt64 offset, Bytes& bytes) {
    const LMInt32 size = static_cast<LMInt32>(bytes.size());
    if (functions.readRange(host.c_str(), path.c_str(), offset, size, &bytes[0], OnRead, this) == size)
        return true;
    return FailRead(GetLastError());
}

bool ResumedDownload::DownloadWhole() {
    const LMInt32 isThere =
        functions.download(host.c_str(), path.c_str(), partFile.c_str(), OnRead, this, &progress);
    const DWORD cause = GetLastError();
    if (isThere != 0 && cause == 0) return ReplaceFile();
    // The reply may have ended before its length, or the library could not move it into place.
    if (isThere != 0) DeleteFileW(partFile.c_str());
    return FailRead(cause);
}

bool ResumedDownload::DownloadPieces() {
    File part;
    LMInt64 size = 0;
    if (!TakeOver(part, size)) return false;
    if (size == 0 && !Begin(part)) return false;
    takenOver = progress.bytesReceived = size;
    if (!AppendPieces(part) || !Check(part)) return false;
    part.Close();
    return ReplaceFile();
}

/* Opens what an earlier download has left, and finds out how much of it counts; 0, and it is not open, when
 * it must begin anew. */
bool ResumedDownload::TakeOver(File& part, LMInt64& size) {
    if (!IsDescribed()) return true;
    if (!part.Open(partFile, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING))
        return GetLastError() == ERROR_FILE_NOT_FOUND || Fail(resumeNotWritten, GetLastError());
    const LMInt64 end = part.Seek(0, FILE_END);
    // What was written last may never have reached the disk, although the file has its length.
    const LMInt64 pieces = end > progress.totalBytes ? 0 : end / pieceSize - 1;
    bool isSame = false;
    if (pieces > 0 && !CompareSamples(part, pieces * pieceSize, isSame)) return false;
    if (isSame)
        size = pieces * pieceSize;
    else
        part.Close();
    return true;
}

bool ResumedDownload::Begin(File& part) {
    File description;
    if (!description.Open(descriptionFile, GENERIC_WRITE, CREATE_ALWAYS) ||
        !description.Write(Description()) ||
        !part.Open(partFile, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS))
        return Fail(resumeNotWritten, GetLastError());
    return true;
}

bool ResumedDownload::AppendPieces(File& part) {
    if (part.Seek(progress.bytesReceived, FILE_BEGIN) < 0) return Fail(resumeNotWritten, GetLastError());
    while (progress.bytesReceived < progress.totalBytes) {
        const LMInt64 rest = progress.totalBytes - progress.bytesReceived;
        Bytes piece(static_cast<size_t>(std::min<LMInt64>(rest, pieceSize)));
        if (!ReadPart(progress.bytesReceived, piece)) return false;
        if (!part.Write(piece)) return Fail(resumeNotWritten, GetLastError());
        progress.bytesReceived += static_cast<LMInt64>(piece.size());
    }
    return true;
}

/* Whether it is still the file that it was when the first piece came, as far as that can be known. */
bool ResumedDownload::Check(File& part) {
    LMInt64 length = 0;
    bool isSame = false;
    if (!AskLength(length) || !CompareSamples(part, progress.totalBytes, isSame)) return false;
    if (length == progress.totalBytes && isSame) return true;
    part.Close();
    DeleteFileW(partFile.c_str());
    DeleteFileW(descriptionFile.c_str());
    return Fail(resumeFileChanged, 0);
}

/* Of the first `size` bytes. Samples that cannot be read from the disk are not equal. */
bool ResumedDownload::CompareSamples(File& part, LMInt64 size, bool& areEqual) {
    const LMInt64 offsets[] = {0, size / 2, size - static_cast<LMInt64>(sampleSize)};
    Bytes here(sampleSize);
    Bytes there(sampleSize);
    areEqual = true;
    for (int i = 0; i < 3 && areEqual; ++i) {
        if (!ReadPart(offsets[i], there)) return false;
        areEqual = part.Seek(offsets[i], FILE_BEGIN) >= 0 && part.Read(here) && here == there;
    }
    return true;
}

/* When power fails in between, the part is whole and the next download finds that out. */
bool ResumedDownload::ReplaceFile() {
    if (!DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
        return Fail(resumeNotWritten, GetLastError());
    if (!MoveFileW(partFile.c_str(), file.c_str())) return Fail(resumeNotWritten, GetLastError());
    DeleteFileW(descriptionFile.c_str());
    return true;
}

/* Text for editors, in UTF-16: host, path and length. */
ResumedDownload::Bytes ResumedDownload::Description() const {
    const Text end = TEXT("\r\n");
    Text digits;
    for (LMInt64 rest = progress.totalBytes; rest > 0; rest /= 10)
        digits.insert(digits.begin(), static_cast<WCHAR>('0' + rest % 10));
    const Text text = static_cast<WCHAR>(0xFEFF) + host + end + path + end + digits + TEXT(" bytes") + end;
    Bytes bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        bytes.push_back(static_cast<unsigned char>(text[i] & 0xFF));
        bytes.push_back(static_cast<unsigned char>(text[i] >> 8));
    }
    return bytes;
}

/* Whether FILE.part.txt describes this download, byte by byte. */
bool ResumedDownload::IsDescribed() const {
    const Bytes expected = Description();
    Bytes found(expected.size());
    File description;
    return description.Open(descriptionFile, GENERIC_READ, OPEN_EXISTING) &&
           description.Seek(0, FILE_END) == static_cast<LMInt64>(expected.size()) &&
           description.Seek(0, FILE_BEGIN) == 0 && description.Read(found) && found == expected;
}
