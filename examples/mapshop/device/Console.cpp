/* The outputs on a handheld: there may be a console program behind them, a file, or nobody. */
#include "Console.h"

#include <cstdio>

#include "Utf8.h"

// The device's runtime gives its standard streams by their numbers; the names for them in the compiler's
// headers belong to the compiler's own runtime.
extern "C" FILE* _getstdfilex(int number);

namespace {

constexpr int errorOutput = 2;

void PrintToErrors(const std::string& bytes) {
    FILE* const errors = _getstdfilex(errorOutput);
    if (errors != nullptr) std::fputs(bytes.c_str(), errors);
}

}  // namespace

Utf8Console::Utf8Console() : codePage(0) {}

Utf8Console::~Utf8Console() = default;

void PrintLine(std::wstring_view text) {
    std::puts(Utf8Of(text).c_str());
}

void PrintError(std::wstring_view text) {
    PrintToErrors("mapshop: " + Utf8Of(text) + "\n");
}

void PrintProgress(std::wstring_view text) {
    PrintToErrors(Utf8Of(text));
}

bool ErrorsAreOnConsole() {
    return false;
}

size_t LineWidth(Output /*output*/) {
    return 100;
}
