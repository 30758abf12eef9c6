#include <limits>
#include <memory>
#include <new>
#include <span>

#include "Commands.h"
#include "Console.h"
#include "FailureText.h"
#include "HexDump.h"
#include "Interruption.h"
#include "LocalFile.h"
#include "NumberText.h"
#include "OnlineLibrary.h"
#include "WebArguments.h"

namespace {

constexpr wchar_t operands[] = L"PATH OFFSET LENGTH [FILE]";

struct Range {
    int64_t offset = 0;
    int32_t length = 0;
};

/* Reads a range from its two texts. Returns an empty text, or why they describe none. */
std::wstring ReadRange(const std::wstring& offset, const std::wstring& length, Range& range) {
    const std::optional<int64_t> first = ParseCount(offset);
    if (!first) {
        return L"OFFSET is a number from 0 to 9223372036854775807 in decimal digits, not '" + offset + L"'.";
    }
    const std::optional<int64_t> count = ParseCount(length);
    if (!count || *count < 1 || *count > std::numeric_limits<int32_t>::max()) {
        return L"LENGTH is a number from 1 to 2147483647 in decimal digits, not '" + length + L"'.";
    }
    if (*count - 1 > std::numeric_limits<int64_t>::max() - *first) {
        return L"The range ends beyond byte 9223372036854775807.";
    }
    range = {*first, static_cast<int32_t>(*count)};
    return {};
}

int LM_CALL OnRead(void* context) noexcept {
    return static_cast<const Interruption*>(context)->Wanted() ? 0 : 1;
}

/* Reports why the library did not give all the bytes wanted. */
ExitCode ReportFailure(DWORD cause, bool wasInterrupted, const WebArguments& arguments, const Range& range) {
    std::wstring lead = arguments.operands[0] + L" was not read";
    if (cause == LM_ERROR_REPLY_ENDED) {
        lead = arguments.operands[0] + L" has no " + BytesText(range.length) + L" from byte " +
               DecimalText(range.offset) + L" on, or the connection was lost";
    }
    PrintError(FailureSentence(lead, cause, {arguments.host, arguments.operands[0]}));
    return wasInterrupted ? exitCancelled : exitNoAnswer;
}

void PrintDump(int64_t offset, std::span<const uint8_t> bytes) {
    constexpr size_t bytesOfLine = 16;
    const auto first = static_cast<uint64_t>(offset);
    const size_t digits = OffsetDigits(first + bytes.size() - 1);
    for (size_t begin = 0; begin < bytes.size(); begin += bytesOfLine) {
        const size_t count = std::min(bytesOfLine, bytes.size() - begin);
        PrintLine(HexDumpLine(first + begin, digits, bytes.subspan(begin, count)));
    }
}

ExitCode Deliver(const WebArguments& arguments, const Range& range, std::span<const uint8_t> bytes) {
    if (arguments.operands.size() == 3) {
        PrintDump(range.offset, bytes);
        return exitDone;
    }
    const std::wstring& file = arguments.operands[3];
    const std::wstring problem = SaveFile(file, bytes);
    if (!problem.empty()) {
        PrintError(problem);
        return exitNotWritten;
    }
    PrintLine(BytesText(range.length) + L" from byte " + DecimalText(range.offset) + L" on saved as " + file +
              L".");
    return exitDone;
}

ExitCode Read(LMReadWebFileRangeFunction readRange, const WebArguments& arguments, const Range& range) {
    const auto size = static_cast<size_t>(range.length);
    const std::unique_ptr<uint8_t[]> bytes(new (std::nothrow) uint8_t[size]);
    if (bytes == nullptr) {
        PrintError(FailureSentence(BytesText(range.length) + L" cannot be read", ERROR_NOT_ENOUGH_MEMORY));
        return exitNoAnswer;
    }
    Interruption interruption;
    const int32_t result = readRange(arguments.host.c_str(), arguments.operands[0].c_str(), range.offset,
                                     range.length, bytes.get(), OnRead, &interruption);
    const DWORD cause = GetLastError();
    if (result != range.length) return ReportFailure(cause, interruption.Wanted(), arguments, range);
    return Deliver(arguments, range, {bytes.get(), size});
}

ExitCode Run(const std::vector<std::wstring>& arguments) {
    const WebArguments parsed = ParseWebArguments(arguments, 3, 4, operands);
    Range range;
    std::wstring problem = parsed.problem;
    if (problem.empty() && parsed.resumes) problem = L"--resume is an option of download alone.";
    if (problem.empty()) problem = ReadRange(parsed.operands[1], parsed.operands[2], range);
    if (!problem.empty()) {
        PrintError(problem);
        return exitUsage;
    }
    OnlineLibrary library;
    const LMReadWebFileRangeFunction readRange = library.Find("xfa704a3f");
    if (!library.Problem().empty()) {
        PrintError(library.Problem());
        return exitLibraryFailed;
    }
    if (parsed.operands.size() == 4) problem = WhyNotWritable(parsed.operands[3]);
    if (!problem.empty()) {
        PrintError(problem);
        return exitNotWritten;
    }
    return Read(readRange, parsed, range);
}

std::wstring Help() {
    return LR"(
range reads LENGTH bytes of PATH (1 to 2147483647) from byte OFFSET on and prints them in hexadecimal, or
saves them as FILE. A host that does not know ranges sends the file's first bytes, )"
           L"which cannot be told apart.";
}

std::wstring Example() {
    return L"/maps/corsica.map 4096 64";
}

}  // namespace

const Command rangeCommand = {L"range", operands, Help, Example, Run};
