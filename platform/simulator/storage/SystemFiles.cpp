/* Files behind the system's own handles. */
#include "Platform.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "machine/Call.h"
#include "machine/SystemObject.h"
#include "machine/Text.h"
#include "storage/Storage.h"

namespace {

using simulator::Call;
using simulator::Handles;
using simulator::Hex8;
using simulator::PointerText;
using simulator::Quoted;
using simulator::Storage;
using simulator::SystemObject;

struct SystemFile;

/* Those that are open: what is open cannot be deleted, moved, or opened by whom it is not shared with. */
std::set<const SystemFile*>& OpenFiles() {
    static auto& files = *new std::set<const SystemFile*>;
    return files;
}

struct SystemFile : SystemObject {
    SystemFile(std::string filePlace, DWORD fileAccess, DWORD fileShare, int fileDescriptor)
        : SystemObject("file"),
          place(std::move(filePlace)),
          access(fileAccess),
          share(fileShare),
          descriptor(fileDescriptor) {
        OpenFiles().insert(this);
    }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;
    ~SystemFile() override {
        OpenFiles().erase(this);
        close(descriptor);
    }

    const std::string place;
    const DWORD access;
    const DWORD share;
    const int descriptor;
};

/* Whether `share` lets others do what `access` names. */
bool Allows(DWORD share, DWORD access) {
    const bool reads = (access & GENERIC_READ) != 0;
    const bool writes = (access & GENERIC_WRITE) != 0;
    return (!reads || (share & FILE_SHARE_READ) != 0) && (!writes || (share & FILE_SHARE_WRITE) != 0);
}

bool IsOpen(const std::string& place) {
    const auto& files = OpenFiles();
    return std::any_of(files.begin(), files.end(), [&](const auto* file) { return file->place == place; });
}

bool IsSharedWith(const std::string& place, DWORD access, DWORD share) {
    const auto& files = OpenFiles();
    return std::all_of(files.begin(), files.end(), [&](const auto* file) {
        return file->place != place || (Allows(file->share, access) && Allows(share, file->access));
    });
}

/* Why the file cannot be opened in that way; 0 when it can. */
DWORD WhyNot(const std::string& place, DWORD access, DWORD share, DWORD disposition) {
    if (Storage::IsFolder(place)) return ERROR_ACCESS_DENIED;
    const bool isThere = Storage::IsThere(place);
    if (disposition == OPEN_EXISTING && !isThere) return Storage::MissingError(place);
    const bool changes = disposition == CREATE_ALWAYS || (access & GENERIC_WRITE) != 0;
    if (isThere && changes && Storage::IsReadOnly(place)) return ERROR_ACCESS_DENIED;
    return IsSharedWith(place, access, share) ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
}

int HostFlags(DWORD access, DWORD disposition) {
    const bool writes = (access & GENERIC_WRITE) != 0;
    const int flags = O_CLOEXEC | (!writes ? O_RDONLY : (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY);
    if (disposition == OPEN_ALWAYS) return flags | O_CREAT;
    return disposition == CREATE_ALWAYS ? flags | O_CREAT | O_TRUNC : flags;
}

/* The place of a file that may be deleted or moved; `error` says why there is none. */
std::optional<std::string> MovablePlace(LPCWSTR path, DWORD& error) {
    auto place = Storage::Current().Place(simulator::TextOrEmpty(path), error);
    if (!place) return std::nullopt;
    if (!Storage::IsThere(*place))
        error = Storage::MissingError(*place);
    else if (IsOpen(*place))
        error = ERROR_SHARING_VIOLATION;
    else
        return place;
    return std::nullopt;
}

}  // namespace

HANDLE WINAPI CreateFileW(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD attributes, HANDLE model) {
    Call call("CreateFileW");
    call.Arguments({Quoted(path), Hex8(access), std::to_string(share), PointerText(security),
                    std::to_string(disposition), Hex8(attributes), PointerText(model)});
    const auto fails = [&](DWORD error) { return call.Fails(INVALID_HANDLE_VALUE, "none", error); };
    if (call.MustFail()) return fails(call.OrderedError());
    if (disposition != CREATE_ALWAYS && disposition != OPEN_EXISTING && disposition != OPEN_ALWAYS) {
        call.Violates("this disposition is not simulated");
        return fails(ERROR_INVALID_PARAMETER);
    }
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(simulator::TextOrEmpty(path), error);
    if (!place) return fails(error);
    error = WhyNot(*place, access, share, disposition);
    if (error != ERROR_SUCCESS) return fails(error);
    const int descriptor = open(place->c_str(), HostFlags(access, disposition), 0666);
    if (descriptor < 0) return fails(Storage::MissingError(*place));
    const HANDLE handle =
        Handles::Current().Open(std::make_unique<SystemFile>(*place, access, share, descriptor));
    return call.Returns(handle, Handles::Current().NameOf(handle));
}

BOOL WINAPI WriteFile(HANDLE handle, LPCVOID data, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) {
    Call call("WriteFile");
    call.Arguments({Handles::Current().NameOf(handle), std::to_string(size)});
    *written = 0;
    const auto* const file = Handles::Current().Find<SystemFile>(handle, call);
    if (file == nullptr || overlapped != nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    if ((file->access & GENERIC_WRITE) == 0) return call.False(ERROR_ACCESS_DENIED);
    const size_t room = Storage::Current().Claim(size);
    const ssize_t stored = write(file->descriptor, data, room);
    *written = stored > 0 ? static_cast<DWORD>(stored) : 0;
    // What the device has room for is written; only when there is none at all does the call fail.
    if (*written == 0 && size > 0) return call.False(ERROR_DISK_FULL);
    return call.True(std::to_string(*written));
}

BOOL WINAPI ReadFile(HANDLE handle, LPVOID data, DWORD size, LPDWORD received, LPOVERLAPPED overlapped) {
    Call call("ReadFile");
    call.Arguments({Handles::Current().NameOf(handle), std::to_string(size)});
    *received = 0;
    const auto* const file = Handles::Current().Find<SystemFile>(handle, call);
    if (file == nullptr || overlapped != nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    if ((file->access & GENERIC_READ) == 0) return call.False(ERROR_ACCESS_DENIED);
    const ssize_t count = read(file->descriptor, data, size);
    *received = count > 0 ? static_cast<DWORD>(count) : 0;
    return call.True(std::to_string(*received));
}

DWORD WINAPI SetFilePointer(HANDLE handle, LONG low, LONG* high, DWORD origin) {
    Call call("SetFilePointer");
    const int64_t distance =
        high != nullptr ? int64_t{*high} * (int64_t{1} << 32) + static_cast<DWORD>(low) : int64_t{low};
    call.Arguments({Handles::Current().NameOf(handle), std::to_string(distance), std::to_string(origin)});
    const auto fails = [&](DWORD error) { return call.Fails(INVALID_SET_FILE_POINTER, "none", error); };
    const auto* const file = Handles::Current().Find<SystemFile>(handle, call);
    if (file == nullptr) return fails(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return fails(call.OrderedError());
    // FILE_BEGIN, FILE_CURRENT and FILE_END are what the host calls SEEK_SET and so on.
    const int64_t place = lseek64(file->descriptor, distance, static_cast<int>(origin));
    if (place < 0) return fails(ERROR_NEGATIVE_SEEK);
    if (high != nullptr) *high = static_cast<LONG>(place >> 32);
    SetLastError(NO_ERROR);
    return call.Returns(static_cast<DWORD>(place), std::to_string(place));
}

BOOL WINAPI FlushFileBuffers(HANDLE handle) {
    Call call("FlushFileBuffers");
    call.Arguments({Handles::Current().NameOf(handle)});
    const auto* const file = Handles::Current().Find<SystemFile>(handle, call);
    if (file == nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    return (file->access & GENERIC_WRITE) != 0 ? call.True() : call.False(ERROR_ACCESS_DENIED);
}

BOOL WINAPI DeleteFileW(LPCWSTR path) {
    Call call("DeleteFileW");
    call.Arguments({Quoted(path)});
    if (call.MustFail()) return call.False(call.OrderedError());
    DWORD error = ERROR_SUCCESS;
    const auto place = MovablePlace(path, error);
    if (!place) return call.False(error);
    if (Storage::IsFolder(*place) || Storage::IsReadOnly(*place)) return call.False(ERROR_ACCESS_DENIED);
    return unlink(place->c_str()) == 0 ? call.True() : call.False(ERROR_ACCESS_DENIED);
}

BOOL WINAPI MoveFileW(LPCWSTR from, LPCWSTR to) {
    Call call("MoveFileW");
    call.Arguments({Quoted(from), Quoted(to)});
    if (call.MustFail()) return call.False(call.OrderedError());
    DWORD error = ERROR_SUCCESS;
    const auto source = MovablePlace(from, error);
    if (!source) return call.False(error);
    const auto target = Storage::Current().Place(simulator::TextOrEmpty(to), error);
    if (!target) return call.False(error);
    if (Storage::IsThere(*target)) return call.False(ERROR_ALREADY_EXISTS);
    return rename(source->c_str(), target->c_str()) == 0 ? call.True()
                                                         : call.False(Storage::MissingError(*target));
}
