/* The system's own file functions. */
#include "Platform.h"

#include <sys/stat.h>

#include "machine/Call.h"
#include "machine/Text.h"
#include "storage/Storage.h"

using simulator::Call;
using simulator::Storage;

DWORD WINAPI GetFileAttributesW(LPCWSTR path) {
    Call call("GetFileAttributesW");
    call.Arguments({simulator::Quoted(path)});
    const auto fails = [&](DWORD error) {
        return call.Fails(INVALID_FILE_ATTRIBUTES, simulator::Hex8(INVALID_FILE_ATTRIBUTES), error);
    };
    if (call.MustFail()) return fails(call.OrderedError());
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(simulator::TextOrEmpty(path), error);
    if (!place) return fails(error);
    if (!Storage::IsThere(*place)) return fails(Storage::MissingError(*place));
    const DWORD attributes = (Storage::IsFolder(*place) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE) |
                             (Storage::IsReadOnly(*place) ? FILE_ATTRIBUTE_READONLY : 0);
    return call.Returns(attributes, simulator::Hex8(attributes));
}

BOOL WINAPI CreateDirectoryW(LPCWSTR path, LPSECURITY_ATTRIBUTES security) {
    Call call("CreateDirectoryW");
    call.Arguments({simulator::Quoted(path), simulator::PointerText(security)});
    if (call.MustFail()) return call.False(call.OrderedError());
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(simulator::TextOrEmpty(path), error);
    if (!place) return call.False(error);
    if (Storage::IsThere(*place)) return call.False(ERROR_ALREADY_EXISTS);
    return mkdir(place->c_str(), 0777) == 0 ? call.True() : call.False(ERROR_PATH_NOT_FOUND);
}
