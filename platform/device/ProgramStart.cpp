/* The entry point of a program: the device calls it with the arguments of wWinMain. */
#include "ImageRuntime.h"
#include "Platform.h"

extern "C" int WINAPI ProgramStart(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show) {
    constexpr UINT outOfMemory = 3;
    UINT exitCode = outOfMemory;
    if (BeginImage()) exitCode = static_cast<UINT>(wWinMain(instance, previous, commandLine, show));
    EndImage();
    TerminateProcess(GetCurrentProcess(), exitCode);
    return static_cast<int>(exitCode);
}
