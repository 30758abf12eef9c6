/* The part of the handheld's shell library that is used here. The library exports by ordinal. */
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Ordinal 9. Prepares the shell's own controls for the calling module. The device's function takes no
 * parameters and ignores those that it is given; the desktop stand-in takes all three. */
BOOL WINAPI SHInitExtraControls(HINSTANCE instance, DWORD reason, LPVOID reserved);

/* What SHInitDialog shall do to a dialog. */
typedef struct tagSHINITDIALOGINFO {
    DWORD dwMask; /* SHIDIM_FLAGS: dwFlags counts */
    HWND hDlg;
    DWORD dwFlags; /* SHIDIF_... */
} SHINITDLGINFO, *PSHINITDLGINFO;

#define SHIDIM_FLAGS 0x0001
#define SHIDIF_SIZEDLGFULLSCREEN 0x0004

/* Ordinal 56. Prepares a dialog during WM_INITDIALOG; sizes it to the screen. */
BOOL WINAPI SHInitDialog(PSHINITDLGINFO info);

/* A soft-key menu bar to be made. */
typedef struct tagSHMENUBARINFO {
    DWORD cbSize;    /* of this structure: 36 bytes where pointers have 32 bits */
    HWND hwndParent; /* the dialog that the bar belongs to */
    DWORD dwFlags;   /* SHCMBF_HMENU: nToolBarId names a menu resource */
    UINT nToolBarId;
    HINSTANCE hInstRes; /* the module that has the resources */
    int nBmpId;
    int cBmpImages;
    HWND hwndMB;    /* out: the bar, a tool bar */
    COLORREF clrBk; /* background, with SHCMBF_COLORBK */
} SHMENUBARINFO, *PSHMENUBARINFO;

#define SHCMBF_HMENU 0x0010

/* Messages to a menu bar. */
#define SHCMBM_GETMENU (WM_USER + 402)     /* the result is the bar's menu, which stays the bar's */
#define SHCMBM_OVERRIDEKEY (WM_USER + 403) /* wParam: a virtual key; lParam: mask and flags, SHMBOF_... */

#define SHMBOF_NODEFAULT 0x00000001 /* the key does nothing by itself */
#define SHMBOF_NOTIFY 0x00000002    /* the dialog gets WM_HOTKEY instead */

/* Ordinal 34. Makes the menu bar. FALSE when that failed. */
BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info);

/* Ordinal 97. Hands the Back key, which came as a WM_HOTKEY with these parameters, to the focused control. */
void WINAPI SHSendBackToFocusWindow(UINT message, WPARAM wParam, LPARAM lParam);

#ifdef __cplusplus
}

static_assert(sizeof(void*) != 4 || sizeof(SHINITDLGINFO) == 12, "what the shell reads");
static_assert(sizeof(void*) != 4 || sizeof(SHMENUBARINFO) == 36, "what the shell checks");
#endif
