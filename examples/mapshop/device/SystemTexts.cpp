/* The texts for a handheld. It has no current folder and no key that interrupts a program. The system has the
 * libraries that on a desktop lie beside the program. */
#include "SystemTexts.h"

std::wstring_view DownloadHelp() {
    return LR"( FILE is a whole path,
because a handheld has no current folder. The program cannot be interrupted.)";
}

std::wstring_view ExampleFile() {
    return LR"("\My Documents\corsica.map")";
}

std::wstring_view MissingPartProblem() {
    return L" cannot be loaded: this device lacks a library or a function that it needs.";
}
