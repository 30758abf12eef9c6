/* Reads a part of a file and prints its bytes in hexadecimal.
 *
 *     range HOST PATH OFFSET LENGTH      LENGTH: 1 to 4096
 *     range online.orvande.example /maps/corsica.map 0 64
 *
 * Exit code: 0 the part has been printed, 1 it could not be had, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file (C++98 or later):
 *     i686-w64-mingw32-g++ -static -municode -I ../../include -o range.exe range.cpp libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /EHsc /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include range.cpp
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <wchar.h>

#include <vector>

#include "LMOnline.h"

namespace {

const LMInt32 mostBytes = 4096;

/* Why a part could not be read: the last error. */
struct PartError {
    explicit PartError(DWORD lastError) : error(lastError) {}

    DWORD error;
};

/* `length` bytes of a file, 1 or more, from `offset` on. Throws PartError. */
std::vector<unsigned char> Part(const wchar_t* host, const wchar_t* path, LMInt64 offset, LMInt32 length) {
    std::vector<unsigned char> bytes(static_cast<size_t>(length));
    if (LMReadWebFileRange(host, path, offset, length, &bytes[0], NULL, NULL) != length)
        throw PartError(GetLastError());
    return bytes;
}

void PrintBytes(const std::vector<unsigned char>& bytes) {
    for (size_t i = 0; i < bytes.size(); ++i)
        printf("%02x%s", bytes[i], i % 16 == 15 || i + 1 == bytes.size() ? "\n" : " ");
}

void PrintFailure(DWORD error) {
    if (error == LM_ERROR_REPLY_ENDED)
        printf("the file ends before the part does\n");
    else if (LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS)
        printf("the server refused: HTTP status %lu\n", static_cast<unsigned long>(LM_ERROR_STATUS(error)));
    else
        printf("failed: error 0x%08lX\n", static_cast<unsigned long>(error));
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    const LMInt64 offset = count == 5 ? static_cast<LMInt64>(wcstod(values[3], NULL)) : 0;
    const LMInt32 length = count == 5 ? static_cast<LMInt32>(wcstod(values[4], NULL)) : 0;
    if (offset < 0 || length < 1 || length > mostBytes) {
        printf("usage: range HOST PATH OFFSET LENGTH (LENGTH: 1 to %ld)\n", static_cast<long>(mostBytes));
        return 2;
    }
    try {
        PrintBytes(Part(values[1], values[2], offset, length));
        return 0;
    } catch (const PartError& failure) {
        PrintFailure(failure.error);
        return 1;
    }
}
