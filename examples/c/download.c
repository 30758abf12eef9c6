/* Downloads a file, shows how far it is, and cancels a download that becomes too large.
 *
 *     download HOST PATH FILE [MOST]     MOST: how many bytes FILE may have; any number without it
 *     download online.orvande.example /maps/corsica.map corsica.map
 *
 * On a handheld FILE is a whole path, because there is no current folder. Exit code: 0 FILE is there, 1 it is
 * not, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file:
 *     i686-w64-mingw32-gcc -municode -I ../../include -o download.exe download.c libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include download.c
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <wchar.h>

#include "LMOnline.h"

/* What the callback is given. The library keeps `progress` up to date. */
typedef struct Transfer {
    DownloadProgress progress;
    LMInt64 most;
    int tenthsShown;
} Transfer;

/* Called after every read, on this thread, before the bytes of the read are written. */
static int LM_CALL OnRead(void* context) {
    Transfer* const transfer = (Transfer*)context;
    const DownloadProgress* const progress = &transfer->progress;
    if (progress->totalBytes > transfer->most || progress->bytesReceived > transfer->most)
        return 0; /* cancel */
    if (progress->totalBytes > 0) {
        const int tenths = (int)(10 * progress->bytesReceived / progress->totalBytes);
        if (tenths > transfer->tenthsShown) printf("%d%%\n", 10 * tenths);
        transfer->tenthsShown = tenths;
    }
    return 1;
}

static int Fail(DWORD error) {
    if (error == LM_ERROR_CANCELLED)
        printf("cancelled: the file is too large\n");
    else if (LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS)
        printf("the server refused: HTTP status %lu\n", (unsigned long)LM_ERROR_STATUS(error));
    else
        printf("failed: error 0x%08lX\n", (unsigned long)error);
    return 1;
}

int wmain(int count, wchar_t** values) {
    Transfer transfer;
    LMInt32 isThere;
    DWORD error;

    if (count != 4 && count != 5) {
        printf("usage: download HOST PATH FILE [MOST]\n");
        return 2;
    }
    transfer.progress.bytesReceived = 0;
    transfer.progress.totalBytes = -1;
    transfer.most = count == 5 ? (LMInt64)wcstod(values[4], NULL) : (LMInt64)1 << 62;
    transfer.tenthsShown = 0;

    isThere =
        LMDownloadWebFileProgress(values[1], values[2], values[3], OnRead, &transfer, &transfer.progress);
    error = GetLastError(); /* at once: any other call may change it */
    /* A reply that ended before its announced length is there, too, and only the last error tells. */
    if (!isThere || error != 0) return Fail(error);
    /* No argument of 64 bits: where printf looks for it differs between compilers for the device. */
    printf("%lu bytes\n", (unsigned long)transfer.progress.bytesReceived);
    return 0;
}
