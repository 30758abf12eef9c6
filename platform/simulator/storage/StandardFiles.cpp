/* The runtime's files. A FILE of the host's runtime stands for one, with the device's storage behind it. What
 * is written is collected as the device's runtime does it: it reaches the storage when the buffer is full,
 * when it is flushed, when the file is closed and before a seek, and only then a failure shows. Reading has
 * no buffer, so that a test can let any byte fail. */
#include "Platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "machine/Call.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "storage/Storage.h"

namespace {

using simulator::Call;
using simulator::CountedFunction;
using simulator::Storage;

struct StandardFile {
    std::string name;  // in the journal
    std::string path;  // as the journal shows it
    bool isEarlier = false;
    bool isText = false;
    int descriptor = -1;   // open for writing
    std::string contents;  // open for reading
    size_t position = 0;
    FILE* stream = nullptr;
    bool isLastWriteLost = false;
    char buffer[4096];  // of what is written
};

struct StandardFiles {
    std::list<StandardFile> open;
    size_t number = 0;
};

StandardFiles& Current() {
    static StandardFiles& files = *new StandardFiles;
    return files;
}

/* What reading in text mode gives: the end is at byte 0x1A, CR LF is LF. */
std::string TextOf(const std::string& bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size() && bytes[i] != 0x1A; ++i) {
        const bool endsLine = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
        if (!endsLine) text += bytes[i];
    }
    return text;
}

ssize_t ReadBytes(void* cookie, char* buffer, size_t size) {
    const simulator::OwnWork ownWork;
    auto& file = *static_cast<StandardFile*>(cookie);
    static CountedFunction reads("fread");
    if (reads.Call()) return -1;
    if (file.descriptor >= 0) return -1;
    const size_t taken = std::min(size, file.contents.size() - file.position);
    std::memcpy(buffer, file.contents.data() + file.position, taken);
    file.position += taken;
    return static_cast<ssize_t>(taken);
}

/* Whether all of them were written: a full device takes only the first of them. */
bool Store(const StandardFile& file, const char* bytes, size_t size) {
    const size_t room = Storage::Current().Claim(size);
    if (room < size) SetLastError(ERROR_DISK_FULL);
    return write(file.descriptor, bytes, room) == static_cast<ssize_t>(size);
}

bool StoreText(const StandardFile& file, const char* bytes, size_t size) {
    std::string text;
    for (const char byte : std::string_view(bytes, size)) {
        if (byte == '\n') text += '\r';
        text += byte;
    }
    return Store(file, text.data(), text.size());
}

/* The runtime takes a result below `size` for an error, and forgets the bytes all the same. */
ssize_t WriteBytes(void* cookie, const char* buffer, size_t size) {
    const simulator::OwnWork ownWork;
    auto& file = *static_cast<StandardFile*>(cookie);
    static CountedFunction writes("fwrite");
    const bool isStored = !writes.Call() && file.descriptor >= 0 &&
                          (file.isText ? StoreText(file, buffer, size) : Store(file, buffer, size));
    file.isLastWriteLost = !isStored;
    return isStored ? static_cast<ssize_t>(size) : 0;
}

int Seek(void* cookie, off64_t* offset, int origin) {
    const simulator::OwnWork ownWork;
    auto& file = *static_cast<StandardFile*>(cookie);
    static CountedFunction seeks("fseek");
    if (seeks.Call()) return -1;
    if (file.descriptor >= 0) {
        const off64_t place = lseek64(file.descriptor, *offset, origin);
        if (place >= 0) *offset = place;
        return place >= 0 ? 0 : -1;
    }
    const size_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? file.position : file.contents.size();
    const off64_t place = static_cast<off64_t>(base) + *offset;
    if (place < 0) return -1;
    file.position = std::min(static_cast<size_t>(place), file.contents.size());
    *offset = place;
    return 0;
}

/* What was still in the buffer has been written before. Whether that was lost, or what a flush has lost
 * before it, cannot be told apart here; closing reports either. */
int Close(void* cookie) {
    Call call("fclose");
    const auto* const file = static_cast<StandardFile*>(cookie);
    call.Arguments({file->name});
    if (file->descriptor >= 0) close(file->descriptor);
    const bool isLost = file->isLastWriteLost;
    Current().open.remove_if([&](const StandardFile& other) { return &other == file; });
    if (call.MustFail()) SetLastError(call.OrderedError());
    return call.MustFail() || isLost ? call.Returns(EOF, "-1") : call.Returns(0, "0");
}

/* The mode as the host's runtime knows it, or null. */
const char* HostMode(std::u16string_view mode) {
    if (mode == u"r" || mode == u"rb") return "r";
    if (mode == u"w" || mode == u"wb") return "w";
    return nullptr;
}

/* Opens the file's contents or its descriptor: the error, or 0. */
DWORD OpenPlace(StandardFile& file, std::u16string_view path, bool forWriting) {
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(path, error);
    if (!place) return error;
    if (Storage::IsFolder(*place)) return ERROR_ACCESS_DENIED;
    if (forWriting) {
        if (Storage::IsThere(*place) && Storage::IsReadOnly(*place)) return ERROR_ACCESS_DENIED;
        file.descriptor = open(place->c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        return file.descriptor >= 0 ? ERROR_SUCCESS : Storage::MissingError(*place);
    }
    auto bytes = Storage::ReadPlace(*place);
    if (!bytes) return Storage::MissingError(*place);
    file.contents = file.isText ? TextOf(*bytes) : *std::move(bytes);
    return ERROR_SUCCESS;
}

FILE* OpenStream(StandardFile& file, const char* mode) {
    file.stream = fopencookie(&file, mode, {ReadBytes, WriteBytes, Seek, Close});
    if (file.stream == nullptr) return nullptr;
    const int buffering = file.descriptor >= 0 ? _IOFBF : _IONBF;
    setvbuf(file.stream, file.buffer, buffering, sizeof file.buffer);
    return file.stream;
}

}  // namespace

FILE* _wfopen(const WCHAR* path, const WCHAR* mode) {
    Call call("_wfopen");
    call.Arguments({simulator::Quoted(path), simulator::Quoted(mode)});
    const auto fails = [&](DWORD error) {
        SetLastError(error);
        return call.Returns(static_cast<FILE*>(nullptr), "null");
    };
    if (call.MustFail()) return fails(call.OrderedError());
    const std::u16string modeText = simulator::TextOrEmpty(mode);
    const char* const hostMode = HostMode(modeText);
    if (hostMode == nullptr) {
        call.Violates("this mode is not simulated");
        return fails(ERROR_INVALID_PARAMETER);
    }
    StandardFiles& files = Current();
    StandardFile& file = files.open.emplace_back();
    file.path = simulator::Quoted(path);
    file.isText = modeText.size() == 1;
    const DWORD error = OpenPlace(file, simulator::TextOrEmpty(path), hostMode[0] == 'w');
    if (error != ERROR_SUCCESS || OpenStream(file, hostMode) == nullptr) {
        files.open.pop_back();
        return fails(error != ERROR_SUCCESS ? error : ERROR_NOT_ENOUGH_MEMORY);
    }
    file.name = "file " + std::to_string(++files.number);
    return call.Returns(file.stream, file.name);
}

void simulator::AcceptOpenFiles() {
    StandardFiles& files = Current();
    files.number = 0;
    for (StandardFile& file : files.open) {
        file.isEarlier = true;
        file.name = "earlier file " + std::to_string(++files.number);
    }
    files.number = 0;
}

void simulator::ReportOpenFiles() {
    std::list<FILE*> leaks;
    for (const StandardFile& file : Current().open) {
        if (file.isEarlier) continue;
        Violate(file.name + " (" + file.path + ") is still open at the end of the test");
        leaks.push_back(file.stream);
    }
    for (FILE* leak : leaks)
        fclose(leak);
}
