#include "ProgressDisplay.h"

#include <algorithm>

#include "Console.h"
#include "NumberText.h"

using std::chrono::milliseconds;

namespace {

constexpr milliseconds betweenBars{100};
constexpr milliseconds betweenLines{5000};
// An average over a shorter time says nothing.
constexpr milliseconds leastForRate{500};

int Percent(const DownloadProgress& progress) {
    if (progress.bytesReceived >= progress.totalBytes) return 100;
    const double part =
        static_cast<double>(progress.bytesReceived) / static_cast<double>(progress.totalBytes);
    return static_cast<int>(part * 100);
}
// GCOVR_EXCL_START: a speed is only shown when a download takes half a second, which the network decides.
/* `value`, not negative, with one digit after the point. */
std::wstring OneDecimal(double value) {
    const auto tenths = static_cast<int64_t>(value * 10 + 0.5);
    return DecimalText(tenths / 10) + L"." + DecimalText(tenths % 10);
}

std::wstring RateText(double bytesPerSecond) {
    constexpr double kilobyte = 1024;
    constexpr double megabyte = kilobyte * kilobyte;
    if (bytesPerSecond < kilobyte) return OneDecimal(bytesPerSecond) + L" bytes/s";
    if (bytesPerSecond < megabyte) return OneDecimal(bytesPerSecond / kilobyte) + L" KB/s";
    return OneDecimal(bytesPerSecond / megabyte) + L" MB/s";
}

std::wstring TwoDigits(int64_t number) {
    return (number < 10 ? L"0" : L"") + DecimalText(number);
}

/* As minutes:seconds, or hours:minutes:seconds. */
std::wstring DurationText(int64_t seconds) {
    const std::wstring end = L":" + TwoDigits(seconds % 60);
    const int64_t minutes = seconds / 60;
    if (minutes < 60) return DecimalText(minutes) + end;
    return DecimalText(minutes / 60) + L":" + TwoDigits(minutes % 60) + end;
}

std::wstring SpeedText(const DownloadProgress& progress, milliseconds elapsed, int64_t before) {
    const int64_t received = progress.bytesReceived - before;
    if (elapsed < leastForRate || received <= 0) return {};
    const double rate = static_cast<double>(received) / std::chrono::duration<double>(elapsed).count();
    const int64_t left = progress.totalBytes - progress.bytesReceived;
    if (left <= 0) return L"  " + RateText(rate);
    constexpr double longest = 100 * 3600;  // seconds; a longer time is not shown
    const double seconds = static_cast<double>(left) / rate + 1;
    if (seconds > longest) return L"  " + RateText(rate);
    return L"  " + RateText(rate) + L"  " + DurationText(static_cast<int64_t>(seconds)) + L" left";
}
// GCOVR_EXCL_STOP
}  // namespace

std::wstring ProgressText(const DownloadProgress& progress, milliseconds elapsed, int64_t before) {
    const std::wstring speed = SpeedText(progress, elapsed, before);
    if (progress.totalBytes < 0) {
        return BytesText(progress.bytesReceived) + L" of an unknown length" + speed;
    }
    return DecimalText(Percent(progress)) + L"%  " + GroupedDigits(progress.bytesReceived) + L" of " +
           BytesText(progress.totalBytes) + speed;
}

std::wstring ProgressBar(const DownloadProgress& progress, const std::wstring& text, size_t width) {
    constexpr size_t most = 30;
    constexpr size_t least = 8;
    constexpr size_t frame = 4;   // brackets, and the gap to the text
    constexpr size_t speed = 26;  // one more than "  1023.9 KB/s  59:59 left" has
    // Leaves room for the longest text to come: a bar whose width changed could not be read.
    const size_t longest = ProgressText({progress.totalBytes, progress.totalBytes}, {}).size() + speed;
    const size_t room = std::min(width - std::min(width, longest + frame), most);
    if (progress.totalBytes < 0 || room < least) return text.substr(0, width);
    const size_t filled = room * static_cast<size_t>(Percent(progress)) / 100;
    const std::wstring bar = std::wstring(filled, L'#') + std::wstring(room - filled, L'-');
    return (L"[" + bar + L"]  " + text).substr(0, width);
}

void ProgressDisplay::Show(const DownloadProgress& progress) {
    const Clock::time_point now = Clock::now();
    if (!hasBegun) {
        hasBegun = true;
        began = now;
        beganWith = progress.bytesReceived;
        nextUpdate = now + (style == ProgressStyle::bar ? milliseconds{0} : betweenLines);
    }
    if (IsDue(progress, now)) Write(progress, now);
}

void ProgressDisplay::Finish(const DownloadProgress& progress) {
    if (!hasBegun) return;
    Write(progress, Clock::now());
    if (style == ProgressStyle::bar) PrintProgress(L"\n");
}

bool ProgressDisplay::IsDue(const DownloadProgress& progress, Clock::time_point now) {
    if (style == ProgressStyle::lines && progress.totalBytes >= 0) {
        const int quarters = Percent(progress) / 25;
        // Finish shows the end.
        if (quarters <= quartersShown || quarters == 4) return false;
        quartersShown = quarters;
        return true;
    }
    if (now < nextUpdate) return false;
    nextUpdate = now + (style == ProgressStyle::bar ? betweenBars : betweenLines);
    return true;
}

void ProgressDisplay::Write(const DownloadProgress& progress, Clock::time_point now) {
    const auto elapsed = std::chrono::duration_cast<milliseconds>(now - began);
    const std::wstring text = ProgressText(progress, elapsed, beganWith);
    if (style == ProgressStyle::lines) {
        PrintProgress(text + L"\n");
        return;
    }
    const std::wstring line = ProgressBar(progress, text, LineWidth(Output::errors));
    // Spaces overwrite the rest of a longer line before.
    const std::wstring rest(widthWritten - std::min(widthWritten, line.size()), L' ');
    PrintProgress(L"\r" + line + rest);
    widthWritten = line.size();
}
