#include <windows.h>

#include "Commands.h"
#include "Console.h"
#include "FailureText.h"
#include "Interruption.h"
#include "LocalFile.h"
#include "NumberText.h"
#include "OnlineLibrary.h"
#include "ResumedTransfer.h"
#include "SystemTexts.h"
#include "WebArguments.h"

namespace {

constexpr wchar_t operands[] = L"PATH FILE";
constexpr int64_t notBegun = -1;

/* The state that the library's callback is given. */
struct Transfer {
    explicit Transfer(ProgressStyle style) : display(style) {}

    DownloadProgress progress{notBegun, -1};
    ProgressDisplay display;
    Interruption interruption;
};

int LM_CALL OnRead(void* context) noexcept {
    Transfer& transfer = *static_cast<Transfer*>(context);
    transfer.display.Show(transfer.progress);
    return transfer.interruption.Wanted() ? 0 : 1;
}

struct Files {
    std::wstring target;
    std::wstring temporary;  // where the library keeps the download until it is complete
    bool hadOlder;           // a file was at `target` before
};

std::wstring TargetProblem(const Files& files) {
    std::wstring problem = WhyNotReplaceable(files.target);
    return problem.empty() ? WhyNotWritable(files.temporary) : problem;
}

/* Reports a failed download, and whether an older file was lost with it. */
ExitCode Fail(const Files& files, const std::wstring& what, ExitCode code) {
    const bool lostOlder = files.hadOlder && !IsThere(files.target);
    PrintError(what + (lostOlder ? L" The older " + files.target + L" is gone." : L""));
    return code;
}

ExitCode ReportFailure(const Transfer& transfer, DWORD cause, const Asked& asked, const Files& files) {
    const int64_t received = transfer.progress.bytesReceived;
    const std::wstring lead = received == notBegun
                                  ? files.target + L" was not downloaded"
                                  : L"The download of " + files.target + L" broke off after " +
                                        BytesText(received) + L", and nothing was kept";
    return Fail(files, FailureSentence(lead, cause, asked),
                transfer.interruption.Wanted() ? exitCancelled : exitNoAnswer);
}

/* The library calls every reply that ends complete; the cause tells of what is not as it should be. */
ExitCode ReportReceived(const DownloadProgress& progress, DWORD cause, const Files& files) {
    if (cause == LM_ERROR_REPLY_ENDED) {
        DeleteFileW(files.target.c_str());
        const std::wstring lead = L"The download of " + files.target + L" ended after " +
                                  BytesText(progress.bytesReceived) + L" of " +
                                  GroupedDigits(progress.totalBytes) + L", and nothing was kept";
        return Fail(files, FailureSentence(lead, cause), exitNoAnswer);
    }
    if (cause != ERROR_SUCCESS) {
        PrintError(FailureSentence(L"The download is in " + files.temporary + L", because " + files.target +
                                       L" could not be replaced",
                                   cause));
        return exitNotWritten;
    }
    PrintLine(BytesText(progress.bytesReceived) + L" saved as " + files.target + L".");
    return exitDone;
}

ExitCode Download(LMDownloadWebFileProgressFunction download, const WebArguments& arguments,
                  const Files& files) {
    const ProgressStyle usual = ErrorsAreOnConsole() ? ProgressStyle::bar : ProgressStyle::lines;
    Transfer transfer(arguments.progress.value_or(usual));
    const int32_t result = download(arguments.host.c_str(), arguments.operands[0].c_str(),
                                    files.target.c_str(), OnRead, &transfer, &transfer.progress);
    const DWORD cause = GetLastError();
    transfer.display.Finish(transfer.progress);
    if (result != 0) return ReportReceived(transfer.progress, cause, files);
    return ReportFailure(transfer, cause, {arguments.host, arguments.operands[0]}, files);
}

ExitCode Run(const std::vector<std::wstring>& arguments) {
    const WebArguments parsed = ParseWebArguments(arguments, 2, 2, operands);
    if (!parsed.problem.empty()) {
        PrintError(parsed.problem);
        return exitUsage;
    }
    OnlineLibrary library;
    const LMDownloadWebFileProgressFunction download = library.Find("LMDownloadWebFileProgress");
    const LMReadWebFileRangeFunction readRange = library.Find("xfa704a3f");
    if (!library.Problem().empty()) {
        PrintError(library.Problem());
        return exitLibraryFailed;
    }
    if (parsed.resumes) return DownloadResumed({download, readRange}, parsed);
    const std::wstring& target = parsed.operands[1];
    const Files files{target, target + L".TMP", IsThere(target)};
    const std::wstring problem = TargetProblem(files);
    if (!problem.empty()) {
        PrintError(problem);
        return exitNotWritten;
    }
    return Download(download, parsed, files);
}

std::wstring Help() {
    return LR"(
download fetches PATH, as the search lists it, into FILE, and shows how far it is. It grows as FILE.TMP. An
older FILE is deleted when the host begins to send the new one.)" +
           std::wstring(DownloadHelp()) +
           LR"(
With --resume it comes in pieces and grows as FILE.part, which stays when the download breaks off or is
cancelled; the same command then goes on with it. An older FILE stays until all of the new one is there. A
host that knows no parts, or does not say how long the file is, sends it whole.)";
}

std::wstring Example() {
    return L"/maps/corsica.map " + std::wstring(ExampleFile());
}

}  // namespace

const Command downloadCommand = {L"download", operands, Help, Example, Run};
