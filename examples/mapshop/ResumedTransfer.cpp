#include "ResumedTransfer.h"

#include "Console.h"
#include "FailureText.h"
#include "Interruption.h"
#include "LocalFile.h"
#include "NumberText.h"
#include "ProgressDisplay.h"

namespace {

/* The state that the callback is given. */
struct Transfer {
    const ResumedDownload& download;
    ProgressDisplay display;
    Interruption interruption;
};

int LM_CALL OnRead(void* context) noexcept {
    Transfer& transfer = *static_cast<Transfer*>(context);
    // Before the first piece it is not known where the download begins.
    if (transfer.download.Progress().bytesReceived > 0) transfer.display.Show(transfer.download.Progress());
    return transfer.interruption.Wanted() ? 0 : 1;
}

ExitCode ReportDone(const ResumedDownload& download, const std::wstring& target) {
    const int64_t before = download.TakenOver();
    PrintLine(BytesText(download.Progress().bytesReceived) + L" saved as " + target +
              (before > 0 ? L", " + GroupedDigits(before) + L" of them from before." : L"."));
    return exitDone;
}

ExitCode Report(ResumeResult result, const ResumedDownload& download, const WebArguments& arguments) {
    const std::wstring& target = arguments.operands[1];
    if (result == resumeDone) return ReportDone(download, target);
    if (result == resumeFileChanged) {
        PrintError(target + L" was not downloaded: " + arguments.operands[0] +
                   L" has changed meanwhile; the same command begins anew.");
        return exitNoAnswer;
    }
    if (result == resumeNotWritten) {
        PrintError(FailureSentence(target + L" could not be written", download.Error()));
        return exitNotWritten;
    }
    const std::wstring part = target + L".part";
    const std::wstring lead = IsThere(part) ? L"The download of " + target +
                                                  L" broke off, and the same command goes on with " + part
                                            : target + L" was not downloaded";
    PrintError(FailureSentence(lead, download.Error(), {arguments.host, arguments.operands[0]}));
    return result == resumeCancelled ? exitCancelled : exitNoAnswer;
}

}  // namespace

ExitCode DownloadResumed(const ResumedDownload::Functions& library, const WebArguments& arguments) {
    const std::wstring& target = arguments.operands[1];
    std::wstring problem = WhyNotReplaceable(target);
    if (problem.empty()) problem = WhyNotWritable(target + L".part");
    if (!problem.empty()) {
        PrintError(problem);
        return exitNotWritten;
    }
    ResumedDownload download(library, arguments.host.c_str(), arguments.operands[0].c_str(), target.c_str());
    const ProgressStyle usual = ErrorsAreOnConsole() ? ProgressStyle::bar : ProgressStyle::lines;
    Transfer transfer{download, ProgressDisplay(arguments.progress.value_or(usual)), {}};
    const ResumeResult result = download.Run(OnRead, &transfer);
    transfer.display.Finish(download.Progress());
    return Report(result, download, arguments);
}
