/* How far a download is, on the standard error output. */
#pragma once

#include <chrono>
#include <string>

#include "LMOnline.h"

enum class ProgressStyle {
    bar,   // one line that is written again and again, with a bar
    lines  // a few lines: one a quarter; where the length is not known, one every five seconds
};

/* "47%  1,234,567 of 2,626,738 bytes  1.2 MB/s  0:01 left" after `elapsed`. A length that is not known is said to be
 * unknown; the rate is the average, and left out, as the time left, before half a second has passed. */
std::wstring ProgressText(const DownloadProgress& progress, std::chrono::milliseconds elapsed);

/* `text` with a bar in front of it where there is room for one, in at most `width` characters. */
std::wstring ProgressBar(const DownloadProgress& progress, const std::wstring& text, size_t width);

class ProgressDisplay {
public:
    explicit ProgressDisplay(ProgressStyle wanted) : style(wanted) {}

    /* Shows a state of the transfer unless it is too soon after the one before. The time counts from the
     * first. */
    void Show(const DownloadProgress& progress);

    /* Shows the last state and ends the line. Nothing when no state has been shown before. */
    void Finish(const DownloadProgress& progress);

private:
    using Clock = std::chrono::steady_clock;

    bool IsDue(const DownloadProgress& progress, Clock::time_point now);
    void Write(const DownloadProgress& progress, Clock::time_point now);

    ProgressStyle style;
    bool hasBegun = false;
    Clock::time_point began;
    Clock::time_point nextUpdate;
    int quartersShown = 0;
    size_t widthWritten = 0;
};
