/* Stands in for the handheld's shell library where there is none: desktop Windows and Wine. */
#include "aygshell.h"

/* The desktop has no controls of the handheld's shell to prepare. */
BOOL WINAPI SHInitExtraControls(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    (void)instance;
    (void)reason;
    (void)reserved;
    return TRUE;
}
