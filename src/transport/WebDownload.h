/* The two ways to fetch a file over a WebConnection. Both ask the connection's `progressCallback` after every
 * read from the network, and leave in its `failure` why they did not do all that they were asked: that may be
 * more than their results tell. */
#pragma once

#include "transport/WebConnection.h"

/* Fetches `urlPath` into `localFile`: true when the reply came to its end. The file is received under the
 * name `localFile` with ".TMP" appended and moved into place at the end (whether that move succeeds makes no
 * difference to the result).
 *
 * False when the file could not be asked for, or was refused (an HTTP status of 300 or more): `localFile`
 * stays as it was. Also when the reply broke off, was cancelled or could not be written: the old `localFile`
 * is deleted as soon as a reply begins that is no refusal, and a download that fails after that leaves
 * neither file.
 *
 * The connection's `progress`, if there is one, starts with 0 bytes and the reply's Content-Length, and
 * counts the bytes written. Throws std::bad_alloc, before any file is touched. */
bool DownloadWebFile(WebConnection& connection, const WCHAR* urlPath, const WideString& localFile);

/* Fetches `length` bytes of `urlPath`, from the byte `offset` on, into `buffer`. Returns
 *   `length`  all bytes came. A server that ignores ranges sends its file's first bytes instead.
 *   0         the reply ended early, a read failed, the caller cancelled (the bytes that came are in
 *             `buffer`), or `length` was 0 or less.
 *   -1        no connection, not sent, or an HTTP status of 300 or more.
 * Throws std::bad_alloc. */
int32_t ReadWebFileRange(WebConnection& connection, const WCHAR* urlPath, int64_t offset, int32_t length,
                         void* buffer);
