/* A library that looks like OrvandeOnline.dll to a program on this computer, made with its own header: what
 * the declarations in another language pass comes back in the results. Causes go where such programs look for
 * them here. */
#include <errno.h>
#include <string.h>

#include "LMOnline.h"

struct MapShopSearch {
    int delivered;
    int32_t edges[4];
};

static struct MapShopSearch search;
static DownloadProgress unseen;

/* Puts ASCII text into a field. */
static void Put(LMChar* field, const char* text) {
    do
        *field++ = (LMChar)*text;
    while (*text++ != 0);
}

static int Is(const LMChar* text, const char* expected) {
    while (*text == (LMChar)*expected && *expected != 0) {
        ++text;
        ++expected;
    }
    return *text == 0 && *expected == 0;
}

MapShopSearch* LMMapShopSearch(const void* items, LMInt32 count) {
    memset(&search, 0, sizeof search);
    if (count > 0) memcpy(search.edges, items, sizeof search.edges);
    errno = count > 0 ? 0 : (int)(LM_ERROR_SERVICE_STATUS + 6);
    return &search;
}

/* Four maps, whose sizes are the edges of the box. The third has texts as long as they can be. */
LMInt32 LMMapShopGetNext(MapShopSearch* handle, MapShopResult* record) {
    int i;
    if (handle != &search || search.delivered == 4) return 0;
    memset(record, 0xAA, sizeof *record);
    record->number = search.edges[search.delivered];
    Put(record->text1, "Hokkaido");
    if (search.delivered == 1) record->text1[7] = 0x14D;
    Put(record->text2, "/maps/a.map");
    Put(record->text3, "");
    for (i = 0; search.delivered == 2 && i < 199; ++i)
        record->text1[i] = 'x';
    for (i = 0; search.delivered == 2 && i < 99; ++i)
        record->text2[i] = 'y';
    if (search.delivered == 2) record->text1[199] = record->text2[99] = 0;
    ++search.delivered;
    return 1;
}

LMInt32 LMMapShopClose(MapShopSearch* handle) {
    return handle == &search ? -search.delivered : 0;
}

/* A file of 5000000000 bytes in five reads; "/none" is refused with 404. */
LMInt32 LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                  LMProgressCallback callback, void* context, DownloadProgress* progress) {
    const LMInt64 size = 5000000000;
    DownloadProgress* const seen = progress != NULL ? progress : &unseen;
    errno = (int)LM_ERROR_BAD_ARGUMENT;
    if (!Is(host, "host.example") || !Is(localFile, "a file") || context != NULL) return 0;
    errno = (int)(LM_ERROR_HTTP_STATUS + 404);
    if (Is(urlPath, "/none")) return 0;
    seen->totalBytes = size;
    for (seen->bytesReceived = 0; seen->bytesReceived < size; seen->bytesReceived += size / 5) {
        if (callback(context) == 0) {
            errno = (int)LM_ERROR_CANCELLED;
            return 0;
        }
    }
    callback(context);
    errno = 0;
    return 1;
}

LMInt32 x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                  LMProgressCallback callback, void* context) {
    return LMDownloadWebFileProgress(host, urlPath, localFile, callback, context, NULL);
}

/* Bytes that count up from the lowest byte of the offset; a file of 2^40 bytes. */
LMInt32 xfa704a3f(const LMChar* host, const LMChar* urlPath, LMInt64 offset, LMInt32 length, void* buffer,
                  LMProgressCallback callback, void* context) {
    LMInt32 i;
    errno = (int)LM_ERROR_BAD_ARGUMENT;
    if (!Is(host, "host.example") || !Is(urlPath, "/a.map") || callback != NULL || context != NULL) return -1;
    for (i = 0; i < length && offset + i < (LMInt64)1 << 40; ++i)
        ((unsigned char*)buffer)[i] = (unsigned char)(offset + i);
    errno = i < length ? (int)LM_ERROR_REPLY_ENDED : 0;
    return i < length ? 0 : length;
}
