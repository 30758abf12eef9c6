/* Uses every name of the header, as C and as C++ of any age. Never run. */
#include "LMOnline.h"

struct Library {
    LMMapShopSearchFunction search;
    LMMapShopGetNextFunction next;
    LMMapShopCloseFunction close;
    LMDownloadWebFileProgressFunction downloadWithProgress;
    LMDownloadWebFileFunction download;
    LMReadWebFileRangeFunction read;
};

struct Outcome {
    LMInt32 number;
    LMInt64 bytes;
    LMChar units[3];
    unsigned long status;
};

extern const struct Library linked;
const struct Library linked = {LMMapShopSearch,           LMMapShopGetNext,  LMMapShopClose,
                               LMDownloadWebFileProgress, LMDownloadWebFile, LMReadWebFileRange};

static int LM_CALL GoOn(void* context) {
    const DownloadProgress* const progress = (const DownloadProgress*)context;
    return progress->bytesReceived != progress->totalBytes;
}

extern void Search(const LMInt32* box, struct Outcome* outcome);
void Search(const LMInt32* box, struct Outcome* outcome) {
    MapShopResult map;
    MapShopSearch* const search = LMMapShopSearch(box, 1);
    while (LMMapShopGetNext(search, &map) != 0) {
        outcome->bytes += map.number;
        outcome->units[0] = map.text1[199];
        outcome->units[1] = map.text2[99];
        outcome->units[2] = map.text3[999];
    }
    outcome->number = LMMapShopClose(search);
}

extern LMInt32 Transfer(const LMChar* host, const LMChar* path, const LMChar* file, char* bytes);
LMInt32 Transfer(const LMChar* host, const LMChar* path, const LMChar* file, char* bytes) {
    DownloadProgress progress = {0, -1};
    LMProgressCallback const callback = GoOn;
    LMInt32 done = LMDownloadWebFileProgress(host, path, file, callback, &progress, &progress);
    done += LMDownloadWebFile(host, path, file, callback, &progress);
    done += x77fc64c7(host, path, file, NULL, NULL);
    done += LMReadWebFileRange(host, path, progress.totalBytes - 16, 16, bytes, callback, &progress);
    return done + xfa704a3f(host, path, 0, 16, bytes, NULL, NULL);
}

extern int Explain(unsigned long error, struct Outcome* outcome);
int Explain(unsigned long error, struct Outcome* outcome) {
    switch (error) {
        case LM_ERROR_BAD_ARGUMENT:
            return 1;
        case LM_ERROR_CANCELLED:
            return 2;
        case LM_ERROR_REPLY_ENDED:
            return 3;
        default:
            outcome->status = LM_ERROR_STATUS(error);
            return LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS      ? 4
                   : LM_ERROR_KIND(error) == LM_ERROR_SERVICE_STATUS ? 5
                                                                     : 6;
    }
}
