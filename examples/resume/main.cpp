/* Downloads a file; run again after it has broken off, it goes on.
 *
 *     resume HOST PATH FILE
 *     resume online.orvande.example /maps/california.map california.map
 *
 * It may be ended at any moment, by Ctrl-C or the power switch; ResumedDownload.h tells what is kept, and
 * what is known of files that change on the server. On a handheld FILE is a whole path, because there is no
 * current folder. Exit code: 0 FILE is there, 1 it is not yet, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file (C++98 or later):
 *     i686-w64-mingw32-g++ -static -municode -D UNICODE -I ../../include -o resume.exe main.cpp
 *        ResumedDownload.cpp libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /EHsc /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include main.cpp
 *        ResumedDownload.cpp /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib
 *        coredll.lib corelibc.lib
 */
#include <stdio.h>

#include "ResumedDownload.h"

namespace {

struct Display {
    explicit Display(const ResumedDownload& shownDownload) : download(shownDownload), tenthsShown(0) {}

    const ResumedDownload& download;
    int tenthsShown;
};

int LM_CALL OnRead(void* context) {
    Display& display = *static_cast<Display*>(context);
    const DownloadProgress& progress = display.download.Progress();
    if (progress.totalBytes <= 0) return 1;
    const int tenths = static_cast<int>(10 * progress.bytesReceived / progress.totalBytes);
    if (tenths > display.tenthsShown) printf("%d%%\n", 10 * tenths);
    display.tenthsShown = tenths;
    return 1;
}

void PrintFailure(ResumeResult result, const ResumedDownload& download) {
    const unsigned long error = download.Error();
    if (result == resumeFileChanged)
        printf("the file has changed on the server meanwhile; run this again\n");
    else if (result == resumeNotWritten)
        printf("a file cannot be written: error 0x%08lX\n", error);
    else if (LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS)
        printf("the server refused: HTTP status %lu\n", LM_ERROR_STATUS(error));
    else
        printf("broken off: error 0x%08lX; run this again to go on\n", error);
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    if (count != 4) {
        printf("usage: resume HOST PATH FILE\n");
        return 2;
    }
    const ResumedDownload::Functions library = {LMDownloadWebFileProgress, LMReadWebFileRange};
    ResumedDownload download(library, values[1], values[2], values[3]);
    Display display(download);
    const ResumeResult result = download.Run(OnRead, &display);
    // No argument of 64 bits: where printf looks for it differs between compilers for the device.
    if (download.TakenOver() > 0)
        printf("%lu bytes had come before\n", static_cast<unsigned long>(download.TakenOver()));
    if (result != resumeDone) {
        PrintFailure(result, download);
        return 1;
    }
    printf("%lu bytes\n", static_cast<unsigned long>(download.Progress().bytesReceived));
    return 0;
}
