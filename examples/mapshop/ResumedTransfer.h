/* What download does with --resume. */
#pragma once

#include "ExitCode.h"
#include "ResumedDownload.h"
#include "WebArguments.h"

/* Downloads a file into the second operand, or goes on where that has broken off, and says what came of
 * it. */
ExitCode DownloadResumed(const ResumedDownload::Functions& library, const WebArguments& arguments);
