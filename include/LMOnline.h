/* Orvande Online: the online services of the mapping application, as OrvandeOnline.dll exports them.
 *
 * Conventions
 *   - Every function is a plain C function with the platform's C calling convention (LM_CALL), exported under
 *     its undecorated name.
 *   - All functions are called from the application's user-interface thread. They run to their end before
 *     they return, and block while the network is waited for; the library has no threads of its own.
 *   - Text is NUL-terminated UTF-16. Sizes are bytes unless "code units" are named.
 *   - A failure shows only in the result, as stated at each function. Nothing is thrown, no message is shown.
 *   - Buffers of the caller are not kept after a function has returned. What the library hands out is given
 *     back through the function named for it.
 *
 * One search:
 *
 *     MapShopSearch* search = LMMapShopSearch(items, count);
 *     MapShopResult map;
 *     while (LMMapShopGetNext(search, &map)) Show(&map);
 *     mapsInShop = LMMapShopClose(search);
 */
#ifndef LM_ONLINE_H
#define LM_ONLINE_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#ifdef _WIN32
#define LM_CALL __cdecl
#else
#define LM_CALL
#endif

/* One UTF-16 code unit: wchar_t where that has 16 bits. */
#if WCHAR_MAX <= 0xFFFF
typedef wchar_t LMChar;
#elif defined(__cplusplus) && __cplusplus >= 201103L
typedef char16_t LMChar;
#else
typedef uint16_t LMChar;
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The map shop ---- */

/* One map of the shop: 2604 bytes, packed, little-endian. What the fields mean is the service's business; a
 * text that does not fit in its field has been cut. Each ends with a NUL; what follows has no meaning. */
typedef struct MapShopResult {
    int32_t number;     /* offset 0 */
    LMChar text1[200];  /* offset 4: at most 199 code units */
    LMChar text2[100];  /* offset 404: at most 99 code units */
    LMChar text3[1000]; /* offset 604: at most 999 code units */
} MapShopResult;

/* A search that has been made. Its layout is private to the library, which owns it from LMMapShopSearch until
 * LMMapShopClose. */
typedef struct MapShopSearch MapShopSearch;

/* Searches the map shop: brings up the device's data connection (which may take 30 s), sends the query under
 * a wait cursor, and reads the whole answer.
 *   items   `count` query items of 16 bytes each, one after the other; the service defines what is in them
 *           and they are passed on as they are. May be NULL when `count` is 0.
 *   count   number of items; 0 asks for everything that the shop has.
 * Returns a search, to be closed with LMMapShopClose; NULL only when there is no memory for one, and then
 * nothing is sent.
 *
 * A failure leaves a search without results: a negative `count`, NULL items with a positive one, or more than
 * 268435455 items (nothing is sent then); no connection, no answer, or a status of the service other than
 * success. When the answer breaks off or memory runs out, the search has the results that had come whole. */
MapShopSearch* LM_CALL LMMapShopSearch(const void* items, int32_t count);

/* Copies the next result into `record` (2604 bytes), in the order of the service's answer. Each is delivered
 * once. Returns
 *   1   copied.
 *   0   there are no more; `record` stays as it was. Also for a NULL search or record; none is taken then. */
int32_t LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record);

/* Frees a search, whether or not all its results were read; it is invalid afterwards. Returns the number with
 * which the service's answer ended; 0 when there was none, and for a NULL search. */
int32_t LM_CALL LMMapShopClose(MapShopSearch* search);

/* ---- Downloads ---- */

/* How far a download is; 16 bytes, without padding. */
typedef struct DownloadProgress {
    int64_t bytesReceived; /* offset 0: bytes written to the local file so far */
    int64_t totalBytes;    /* offset 8: what the server said; -1 when it did not say, or not in a number */
} DownloadProgress;

/* Called after every read from the network, on the calling thread, with the `context` that was given along
 * with it. Returns 0 to cancel, anything else to go on. No C++ exception, structured exception or longjmp may
 * leave it: nothing can unwind through the library. */
typedef int(LM_CALL* LMProgressCallback)(void* context);

/* Downloads `urlPath` of `host` by HTTP, port 80, into `localFile`. Brings up the device's data connection
 * first, which stays up afterwards. Redirections are not followed.
 *   host, urlPath, localFile  NUL-terminated, not NULL; the path begins with a slash.
 *   callback                  may be NULL. Called before the bytes of its read are written, and once more
 *                             after the last, empty read.
 *   context                   passed to the callback; may be NULL.
 *   progress                  may be NULL. Filled when the transfer begins and after each read;
 *                             `bytesReceived` starts with 0.
 * While it runs, the file grows under the name `localFile` with ".TMP" appended. Returns
 *   1   the reply came to its end, whatever length had been announced, and the file was moved into place.
 *       That is also the result when the move fails: an older `localFile` that is read-only or open elsewhere
 *       stays as it was then, and the ".TMP" file is left.
 *   0   no connection, not sent, or an HTTP status of 300 or more: an older `localFile` stays as it was.
 *       Broken off, cancelled, or not written for lack of space: the ".TMP" file and an older `localFile` are
 *       gone. Also for a NULL host, path or file, which touches nothing. */
int32_t LM_CALL LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                          LMProgressCallback callback, void* context,
                                          DownloadProgress* progress);

/* LMDownloadWebFileProgress without a progress record. */
int32_t LM_CALL x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                          LMProgressCallback callback, void* context);

/* Reads `length` bytes of `urlPath` of `host`, from `offset` on, into `buffer`; connects as a download does.
 *   host, urlPath  NUL-terminated, not NULL.
 *   offset         of the first byte, from 0.
 *   length         in bytes; 0 or less reads nothing, though the request is sent.
 *   buffer         `length` bytes, not NULL.
 *   callback       may be NULL; called after every read that gave bytes.
 *   context        passed to the callback; may be NULL.
 * Returns
 *   `length`  all bytes are in `buffer`. A server that ignores ranges sends its file's first bytes instead.
 *   0         the reply ended early, a read failed, or the callback cancelled: bytes that came before are in
 *             `buffer`, their number is not told. Also for a `length` of 0 or less.
 *   -1        no connection, not sent, or an HTTP status of 300 or more; a NULL host, path or buffer, and
 *             then nothing is sent. */
int32_t LM_CALL xfa704a3f(const LMChar* host, const LMChar* urlPath, int64_t offset, int32_t length,
                          void* buffer, LMProgressCallback callback, void* context);

#ifdef __cplusplus
}
#endif

/* The layout is part of the interface: a compiler that lays the records out differently stops here. */
typedef char LMAssertRecordSize[sizeof(MapShopResult) == 2604 ? 1 : -1];
typedef char LMAssertNumberOffset[offsetof(MapShopResult, number) == 0 ? 1 : -1];
typedef char LMAssertText1Offset[offsetof(MapShopResult, text1) == 4 ? 1 : -1];
typedef char LMAssertText2Offset[offsetof(MapShopResult, text2) == 404 ? 1 : -1];
typedef char LMAssertText3Offset[offsetof(MapShopResult, text3) == 604 ? 1 : -1];
typedef char LMAssertProgressSize[sizeof(DownloadProgress) == 16 ? 1 : -1];
typedef char LMAssertReceivedOffset[offsetof(DownloadProgress, bytesReceived) == 0 ? 1 : -1];
typedef char LMAssertTotalOffset[offsetof(DownloadProgress, totalBytes) == 8 ? 1 : -1];

#endif
