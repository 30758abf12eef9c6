/* A download that goes on where an earlier one broke off. In the C++ of old compilers (C++98), for programs
 * that use the online library through LMOnline.h.
 *
 * The file comes in pieces of 64 KB, each by LMReadWebFileRange, and grows as FILE.part; a piece is on the
 * disk before the next is asked for. FILE.part.txt says what it is a part of. Both stay when the connection,
 * the program or the power is gone, at whatever moment, and the next download of the same host, path and FILE
 * goes on from there; of what had come, it asks at most for two pieces again. An older FILE stays as it is
 * until all of the new one is there.
 *
 * The library tells no date and no version of a file, so this is what is known of whether the file on the
 * server has changed meanwhile. Its length, when a download begins or goes on, and once more before it ends;
 * it comes from a download to FILE.length, which is cancelled at once. And three samples of 4 KB (the
 * beginning, the middle and the end of what is there), which are read again and compared when a download goes
 * on and before it ends. When any of that differs, what had come is thrown away. A file that has changed
 * elsewhere and kept its length is not noticed: a service that changes its files gives each version a path of
 * its own.
 *
 * Files of at most one piece, and those of servers that announce no length or do not send the parts that they
 * are asked for, come whole, which cannot be resumed. (Two parts of the beginning tell; so a file that begins
 * with 4097 equal bytes comes whole, too.) */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "LMOnline.h"

enum ResumeResult {
    resumeDone,        // FILE is there, whole
    resumeCancelled,   // by the callback; what has come is kept
    resumeBrokenOff,   // the server or the connection; what has come is kept
    resumeNotWritten,  // one of the files could not be written or replaced; what has come is kept
    resumeFileChanged  // on the server, while it came in pieces; nothing is kept, it can begin anew
};

class ResumedDownload {
public:
    /* The library's functions, however the program has come to them. */
    struct Functions {
        LMDownloadWebFileProgressFunction download;
        LMReadWebFileRangeFunction readRange;
    };

    ResumedDownload(const Functions& library, const WCHAR* hostName, const WCHAR* urlPath,
                    const WCHAR* localFile);

    /* Downloads what is missing. `callback` may be NULL; it is called with `context` after every read, on
     * this thread, and returns 0 to cancel. Throws std::bad_alloc, and what has come is kept then, too. */
    ResumeResult Run(LMProgressCallback callback, void* context);

    /* How far it is, also for the callback. In pieces, the number of bytes that are on the disk. */
    const DownloadProgress& Progress() const { return progress; }

    /* How many bytes of an earlier download were taken over; 0 until that is known. */
    LMInt64 TakenOver() const { return takenOver; }

    /* The last error of what failed, when the result is resumeCancelled, resumeBrokenOff or
     * resumeNotWritten. */
    DWORD Error() const { return error; }

private:
    typedef std::basic_string<WCHAR> Text;
    typedef std::vector<unsigned char> Bytes;
    class File;

    ResumedDownload(const ResumedDownload&);
    ResumedDownload& operator=(const ResumedDownload&);

    static int LM_CALL OnRead(void* context);
    static int LM_CALL OnFirstRead(void* context);

    /* These are false when the download is over; `result` and `error` then say why. */
    bool RunSteps();
    bool AskLength(LMInt64& length);
    bool AskWhetherRangesWork(bool& work);
    bool ReadPart(LMInt64 offset, Bytes& bytes);
    bool DownloadWhole();
    bool DownloadPieces();
    bool TakeOver(File& part, LMInt64& size);
    bool Begin(File& part);
    bool AppendPieces(File& part);
    bool Check(File& part);
    bool CompareSamples(File& part, LMInt64 size, bool& areEqual);
    bool ReplaceFile();
    bool Fail(ResumeResult why, DWORD cause);
    bool FailRead(DWORD cause) { return Fail(wasCancelled ? resumeCancelled : resumeBrokenOff, cause); }

    Bytes Description() const;
    bool IsDescribed() const;

    const Functions functions;
    const Text host;
    const Text path;
    const Text file;
    const Text partFile;
    const Text descriptionFile;
    LMProgressCallback callback;
    void* callbackContext;
    bool wasCancelled;
    DownloadProgress progress;
    LMInt64 takenOver;
    ResumeResult result;
    DWORD error;
};
