/* Downloads a file, shows how far it is, and cancels a download that becomes too large.
 *
 *     download HOST PATH FILE [MOST]     MOST: how many bytes FILE may have; any number without it
 *     download online.orvande.example /maps/corsica.map corsica.map
 *
 * On a handheld FILE is a whole path, because there is no current folder. Exit code: 0 FILE is there, 1 it is
 * not, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file (C++98 or later):
 *     i686-w64-mingw32-g++ -static -municode -I ../../include -o download.exe download.cpp
 *        libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /EHsc /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include download.cpp
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <wchar.h>

#include "LMOnline.h"

namespace {

/* A download whose class decides after every read whether it goes on. */
class Download {
public:
    Download() : error(0) {
        progress.bytesReceived = 0;
        progress.totalBytes = -1;
    }
    virtual ~Download() {}

    /* Whether all of the file is there. */
    bool Run(const wchar_t* host, const wchar_t* path, const wchar_t* file) {
        const LMInt32 isThere = LMDownloadWebFileProgress(host, path, file, OnRead, this, &progress);
        error = GetLastError();
        // A reply that ended before its announced length is there, too, and only the last error tells.
        return isThere != 0 && error == 0;
    }

    const DownloadProgress& Progress() const { return progress; }
    DWORD Error() const { return error; }

protected:
    virtual bool GoesOn() = 0;

private:
    Download(const Download&);
    Download& operator=(const Download&);

    /* Nothing can unwind through the library, so an exception ends here and cancels. */
    static int LM_CALL OnRead(void* context) {
        try {
            return static_cast<Download*>(context)->GoesOn() ? 1 : 0;
        } catch (...) {
            return 0;
        }
    }

    DownloadProgress progress;
    DWORD error;
};

class LimitedDownload : public Download {
public:
    explicit LimitedDownload(LMInt64 mostBytes) : most(mostBytes), tenthsShown(0) {}

protected:
    virtual bool GoesOn() {
        const DownloadProgress& progress = Progress();
        if (progress.totalBytes > most || progress.bytesReceived > most) return false;
        if (progress.totalBytes <= 0) return true;
        const int tenths = static_cast<int>(10 * progress.bytesReceived / progress.totalBytes);
        if (tenths > tenthsShown) printf("%d%%\n", 10 * tenths);
        tenthsShown = tenths;
        return true;
    }

private:
    const LMInt64 most;
    int tenthsShown;
};

void PrintFailure(DWORD error) {
    if (error == LM_ERROR_CANCELLED)
        printf("cancelled: the file is too large\n");
    else if (LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS)
        printf("the server refused: HTTP status %lu\n", static_cast<unsigned long>(LM_ERROR_STATUS(error)));
    else
        printf("failed: error 0x%08lX\n", static_cast<unsigned long>(error));
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    if (count != 4 && count != 5) {
        printf("usage: download HOST PATH FILE [MOST]\n");
        return 2;
    }
    LimitedDownload download(count == 5 ? static_cast<LMInt64>(wcstod(values[4], NULL))
                                        : static_cast<LMInt64>(1) << 62);
    if (!download.Run(values[1], values[2], values[3])) {
        PrintFailure(download.Error());
        return 1;
    }
    // No argument of 64 bits: where printf looks for it differs between compilers for the device.
    printf("%lu bytes\n", static_cast<unsigned long>(download.Progress().bytesReceived));
    return 0;
}
