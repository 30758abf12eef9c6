/* A DLL in C that imports what the library's does and does what the library's has to do: at its load it opens
 * the session of the downloads, tells the shell, and reads which language the user has chosen; at its unload
 * it looks whether the user has made a folder for the harvest of untranslated texts, and closes the session.
 * It keeps no texts. */
#include <windows.h>

#include <aygshell.h>
#include <shlobj.h>
#include <wininet.h>

static HINTERNET session;

/* What the language setting says does not matter: there is no file for it. */
static void ReadLanguage(void) {
    HKEY key = NULL;
    WCHAR text[261];
    DWORD size = sizeof text;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Orvande", 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    RegQueryValueExW(key, L"Language", NULL, NULL, (BYTE*)text, &size);
    RegCloseKey(key);
}

static BOOL IsHarvestDue(void) {
    static const WCHAR name[] = L"\\ZRTranslation";
    WCHAR folder[MAX_PATH + 20];
    size_t length = 0;
    if (!SHGetSpecialFolderPathW(NULL, folder, CSIDL_PERSONAL, TRUE)) return FALSE;
    /* By hand: the library imports no function for this. */
    while (folder[length] != 0)
        ++length;
    for (size_t i = 0; i < sizeof name / sizeof *name; ++i)
        folder[length + i] = name[i];
    const DWORD attributes = GetFileAttributesW(folder);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) {
        session = InternetOpenW(L"Orvande-SP", INTERNET_OPEN_TYPE_PRECONFIG, NULL, NULL, 0);
        SHInitExtraControls(instance, reason, reserved);
        ReadLanguage();
    } else if (reason == DLL_PROCESS_DETACH) {
        if (IsHarvestDue()) return FALSE;
        InternetCloseHandle(session);
    }
    return TRUE;
}
