/* Orvande Online: the online services of the mapping application, as OrvandeOnline.dll exports them.
 *
 * Conventions
 *   - Every function is a plain C function with the platform's C calling convention (LM_CALL), exported under
 *     its undecorated name.
 *   - LMMapShopSearch and the downloads are called from the application's user-interface thread, one at a
 *     time, and none from a callback: internet session, data connection and wait cursor are one for the
 *     process, on the device the state of exceptions is, too, and nothing is locked. LMMapShopGetNext and
 *     LMMapShopClose touch only their search: they may be called from any thread, whatever else is under way,
 *     as long as one search is used by one thread at a time.
 *   - Functions run to their end before they return, and block while the network is waited for; the library
 *     has no threads of its own.
 *   - Text is NUL-terminated UTF-16. Sizes are bytes unless "code units" are named.
 *   - A failure shows in the result, as stated at each function, and its cause in the thread's last error.
 *     Nothing is thrown, no message is shown.
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
#ifndef _MSC_VER
#include <stdint.h>
#include <wchar.h>
#endif

/* The platform's C calling convention. */
#ifdef _WIN32
#define LM_CALL __cdecl
#else
#define LM_CALL
#endif

/* Signed integers of 32 and 64 bits. The compilers that have no <stdint.h> have words of their own. */
#ifdef _MSC_VER
typedef __int32 LMInt32;
typedef __int64 LMInt64;
#else
typedef int32_t LMInt32;
typedef int64_t LMInt64;
#endif

/* One UTF-16 code unit: wchar_t where that has 16 bits, as a type of its own or as another name of one. */
#if defined(_MSC_VER) || WCHAR_MAX <= 0xFFFF
typedef wchar_t LMChar;
#elif defined(__cplusplus) && __cplusplus >= 201103L
typedef char16_t LMChar;
#else
typedef uint16_t LMChar;
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Why a call failed ---- */

/* Every function leaves in the thread's last error (GetLastError) why it did not do all that it was asked,
 * and 0 when it did. That may be more than its result tells: a search whose answer broke off has the results
 * that had come, and a download counts as complete however long the reply was. What other threads do, and the
 * handles that are closed on the way, leave it as it is; read it before you call anything else.
 *
 * It is a code of the system (below 12000) or of WinINet (12000 to 12999) as it came from the first call that
 * failed: 12007 for a name that is not known, 12029 for a host that cannot be reached, 112 for a full disk, 8
 * when memory ran out, 13 for an answer of the service that cannot be read. For what no such code tells, it
 * is one of these, all with bit 29: */

/* An argument is not what the function takes. */
#define LM_ERROR_BAD_ARGUMENT 0x20000001U
/* The callback returned 0. */
#define LM_ERROR_CANCELLED 0x20000002U
/* The reply ended before all of it had come: a search's in the middle of its results, a part's before its
 * `length`, a download's with a progress record before the length that the server had announced. */
#define LM_ERROR_REPLY_ENDED 0x20000003U
/* The web server refused: an HTTP status of 300 or more, which stands in the low 24 bits (404: 0x21000194). A
 * search has this when the reply is none of the service, but such a refusal. */
#define LM_ERROR_HTTP_STATUS 0x21000000U
/* The service answered with a status other than 0, and the low 24 bits of that stand in the low 24 bits here.
 * What it means is the service's business. */
#define LM_ERROR_SERVICE_STATUS 0x22000000U

/* Take one of the last two apart: `LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS`, and then the status. */
#define LM_ERROR_KIND(error) ((error)&0xFF000000U)
#define LM_ERROR_STATUS(error) ((error)&0x00FFFFFFU)

/* ---- The map shop ---- */

/* One map of the shop: 2604 bytes, packed, little-endian. What the fields mean is the service's business; a
 * text that does not fit in its field has been cut. Each ends with a NUL; what follows has no meaning. */
typedef struct MapShopResult {
    LMInt32 number;     /* offset 0 */
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
 * success. When the answer breaks off or memory runs out, the search has the results that had come whole. The
 * last error tells all of this: 0 only when the whole answer has been read. */
MapShopSearch* LM_CALL LMMapShopSearch(const void* items, LMInt32 count);

/* Copies the next result into `record` (2604 bytes), in the order of the service's answer. Each is delivered
 * once. Returns
 *   1   copied.
 *   0   there are no more (last error 259, the system's ERROR_NO_MORE_ITEMS); `record` stays as it was. Also
 *       for a NULL search or record (LM_ERROR_BAD_ARGUMENT); none is taken then. */
LMInt32 LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record);

/* Frees a search, whether or not all its results were read; it is invalid afterwards. Returns the number with
 * which the service's answer ended; 0 when there was none, and for a NULL search. The last error is 0 but for
 * a NULL search: why there was no number, LMMapShopSearch has told. */
LMInt32 LM_CALL LMMapShopClose(MapShopSearch* search);

/* ---- Downloads ---- */

/* How far a download is; 16 bytes, without padding. */
typedef struct DownloadProgress {
    LMInt64 bytesReceived; /* offset 0: bytes written to the local file so far */
    LMInt64 totalBytes;    /* offset 8: the number in front of the server's Content-Length; -1 when there is
                            * none, or it has more than 14 characters */
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
 *       stays as it was then, and the ".TMP" file is left. Only the last error tells: the move's own code, or
 *       LM_ERROR_REPLY_ENDED when the reply was shorter than announced (looked at only with a progress
 *       record), and otherwise 0.
 *   0   no connection, not sent, or an HTTP status of 300 or more: an older `localFile` stays as it was.
 *       Broken off, cancelled, or not written for lack of space: the ".TMP" file and an older `localFile` are
 *       gone. Also for a NULL host, path or file, which touches nothing. */
LMInt32 LM_CALL LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                          LMProgressCallback callback, void* context,
                                          DownloadProgress* progress);

/* LMDownloadWebFileProgress without a progress record, and the name to call it by. */
LMInt32 LM_CALL x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                          LMProgressCallback callback, void* context);
#define LMDownloadWebFile x77fc64c7

/* Reads `length` bytes of `urlPath` of `host`, from `offset` on, into `buffer`; connects as a download does.
 * The name to call it by is LMReadWebFileRange.
 *   host, urlPath  NUL-terminated, not NULL.
 *   offset         of the first byte, from 0.
 *   length         in bytes; 0 or less reads nothing, though the request is sent.
 *   buffer         `length` bytes, not NULL.
 *   callback       may be NULL; called after every read that gave bytes.
 *   context        passed to the callback; may be NULL.
 * Returns
 *   `length`  all bytes are in `buffer`. A server that ignores ranges sends its file's first bytes instead.
 *   0         the reply ended early, a read failed, or the callback cancelled: bytes that came before are in
 *             `buffer`, their number is not told. Also for a `length` below 0 (LM_ERROR_BAD_ARGUMENT).
 *   -1        no connection, not sent, or an HTTP status of 300 or more; a NULL host, path or buffer, and
 *             then nothing is sent. */
LMInt32 LM_CALL xfa704a3f(const LMChar* host, const LMChar* urlPath, LMInt64 offset, LMInt32 length,
                          void* buffer, LMProgressCallback callback, void* context);
#define LMReadWebFileRange xfa704a3f

/* ---- For GetProcAddress ---- */

/* The types of pointers to the functions, for applications that load the library while they run. The names to
 * ask for are those of the functions; the last two are exported as "x77fc64c7" and "xfa704a3f". */
typedef MapShopSearch*(LM_CALL* LMMapShopSearchFunction)(const void* items, LMInt32 count);
typedef LMInt32(LM_CALL* LMMapShopGetNextFunction)(MapShopSearch* search, MapShopResult* record);
typedef LMInt32(LM_CALL* LMMapShopCloseFunction)(MapShopSearch* search);
typedef LMInt32(LM_CALL* LMDownloadWebFileProgressFunction)(const LMChar* host, const LMChar* urlPath,
                                                            const LMChar* localFile,
                                                            LMProgressCallback callback, void* context,
                                                            DownloadProgress* progress);
typedef LMInt32(LM_CALL* LMDownloadWebFileFunction)(const LMChar* host, const LMChar* urlPath,
                                                    const LMChar* localFile, LMProgressCallback callback,
                                                    void* context);
typedef LMInt32(LM_CALL* LMReadWebFileRangeFunction)(const LMChar* host, const LMChar* urlPath,
                                                     LMInt64 offset, LMInt32 length, void* buffer,
                                                     LMProgressCallback callback, void* context);

#ifdef __cplusplus
}
#endif

/* The layout is part of the interface: a compiler that lays the records out differently stops here. Their
 * sizes are the sums of their fields', which leaves no room for padding. */
typedef char LMAssertRecordSize[sizeof(MapShopResult) == 2604 ? 1 : -1];
typedef char LMAssertProgressSize[sizeof(DownloadProgress) == 16 ? 1 : -1];

#endif
