/* How far a download is, on the standard error output. */
#pragma once

#include <chrono>
#include <string>

#include "LMOnline.h"

enum class ProgressStyle {
    bar,   // one line that is written again and again, with a bar
    lines  // a few lines: one for each quarter, or every five seconds if the length is not known
};

/* A transfer's state after `elapsed`: "47%  1,234,567 of 2,626,738 bytes  1.2 MB/s  0:01 left". `before`: how
 * many of the bytes had come before that time.
 *
 * A length that is not known is said to be unknown. The rate is the average. Before half a second has passed,
 * rate and time left are left out. */
std::wstring ProgressText(const DownloadProgress& progress, std::chrono::milliseconds elapsed,
                          int64_t before = 0);

/* `text` with a bar in front of it where there is room for one, in at most `width` characters. */
std::wstring ProgressBar(const DownloadProgress& progress, const std::wstring& text, size_t width);

class ProgressDisplay {
public:
    explicit ProgressDisplay(ProgressStyle wanted) : style(wanted) {}

    /* Shows a state of the transfer, unless it is too soon after the one before. The first call starts the
     * clock; what has come by then does not count for the rate. */
    void Show(const DownloadProgress& progress);

    /* Shows the last state and ends the line. Does nothing if Show has not been called. */
    void Finish(const DownloadProgress& progress);

private:
    using Clock = std::chrono::steady_clock;

    bool IsDue(const DownloadProgress& progress, Clock::time_point now);
    void Write(const DownloadProgress& progress, Clock::time_point now);

    ProgressStyle style;
    bool hasBegun = false;
    Clock::time_point began;
    int64_t beganWith = 0;  // bytes
    Clock::time_point nextUpdate;
    int quartersShown = 0;
    size_t widthWritten = 0;
};
