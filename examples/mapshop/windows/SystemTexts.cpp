#include "SystemTexts.h"

std::wstring_view DownloadHelp() {
    return LR"( Ctrl-C cancels and leaves
neither file; while nothing arrives, it takes effect when something does, and pressed again it ends the
program at once and may leave FILE.TMP.)";
}

std::wstring_view ExampleFile() {
    return L"corsica.map";
}

std::wstring_view MissingPartProblem() {
    return L" cannot be loaded: aygshell.dll or cellcore.dll, which belong beside it, is missing.";
}
