/* The journal: the calls since the beginning of a test in their order, one line each:
 *
 *   InternetOpenW("Agent", 0, null, null, 0x00000000) = session 1
 *   InternetConnectW(session 1, "host", 80, null, null, 3, 0x00000000, 0) = connection 1
 *   HttpOpenRequestW(connection 1, "POST", "a/b.cgi", null, null, null, 0x00080100, 0) = request 1
 *   HttpSendRequestW(request 1, null, 0, body, 12) = TRUE
 *   HttpSendRequestW(request 2, "Range:bytes=0-9<U+000A>", 16, null, 0) = FALSE, error 12029
 *   HttpQueryInfoW(request 1, 0x20000013) = TRUE, 200
 *   HttpQueryInfoW(request 1, 0x00000005) = TRUE, "1234"
 *   InternetReadFile(request 1, 256) = TRUE, 256 (7 times)
 *   InternetCloseHandle(request 1) = TRUE
 *   RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Name", 0, 0x00020019) = 0, key 1
 *   RegQueryValueExW(key 1, "Value", 522) = 0, type 1, 14 bytes
 *   RegCloseKey(key 1) = 0
 *   _wfopen("\Temp\file", "rb") = file 1
 *   _wfopen("\Temp\none", "rb") = null
 *   fclose(file 1) = 0
 *   CreateFileW("\Temp\file", 0x40000000, 0, null, 2, 0x00000080, null) = file 2
 *   ReadFile(file 2, 4096) = TRUE, 4096
 *   WriteFile(file 2, 4096) = TRUE, 4096
 *   SetFilePointer(file 2, -10, 2) = 90
 *   FlushFileBuffers(file 2) = TRUE
 *   CloseHandle(file 2) = TRUE
 *   DeleteFileW("\Temp\file") = FALSE, error 2
 *   MoveFileW("\Temp\one", "\Temp\other") = TRUE
 *   GetFileAttributesW("\Temp\none") = 0xFFFFFFFF, error 2
 *   SHGetSpecialFolderPathW(null, 5, TRUE) = TRUE, "\My Documents"
 *   GetModuleHandleW(null) = program
 *   GetModuleFileNameW(library, 260) = 36, "\Program Files\App\OrvandeOnline.dll"
 *   SHInitExtraControls(library, 1, null) = TRUE
 *   ConnMgrMapURL("http://host/", null) = 0x00000000
 *   ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000)
 *                                                  = 0x00000000, link 1, status 0x10      (in one line)
 *   ConnMgrReleaseConnection(link 1, 0) = 0x00000000
 *   LoadCursorW(null, IDC_WAIT) = wait cursor
 *   SetCursor(wait cursor) = normal cursor
 *   MessageBoxW(dialog 1, "Text", "Caption", 0x00000001) = 2
 *   LoadLibraryW("Res.dll") = Res.dll
 *   FreeLibrary(Res.dll) = TRUE
 *   FindResourceW(library, 107, RT_DIALOG) = resource
 *   LoadResource(library, resource) = bytes
 *   LoadStringW(library, 2000, 100) = 4, "Done"
 *   CreateDirectoryW("\Temp\folder", null) = TRUE
 *   ShellExecuteExW({size ok, mask 0x40, owner dialog 1, verb "open", file "http://host/", show 5})
 *                                                  = TRUE, process 1                       (in one line)
 *   WaitForSingleObject(process 1, 0xFFFFFFFF) = 0
 *   DialogBoxIndirectParamW(library, template 107, null, procedure, parameter) = 1, dialog 1
 *   EndDialog(dialog 1, 2) = TRUE
 *   GetDlgItem(dialog 1, 1001) = control 1001 of dialog 1
 *   GetWindow(dialog 1, 5) = control 1001 of dialog 1
 *   GetWindowTextW(control 1001 of dialog 1, 5000) = 4, "Text"
 *   SetWindowTextW(control 1001 of dialog 1, "Text") = TRUE
 *   GetWindowLongPtrW(dialog 1, GWLP_WNDPROC) = dialog procedure
 *   SetWindowLongPtrW(dialog 1, GWLP_WNDPROC, procedure) = dialog procedure
 *   SetWindowLongPtrW(dialog 1, GWLP_USERDATA, data) = 0
 *   CallWindowProcW(dialog procedure, dialog 1, WM_COMMAND, 0x1, 0x0) = 0
 *   SendMessageW(control 1017 of dialog 1, BM_GETCHECK, 0x0, 0x0) = 1
 *   SendDlgItemMessageW(dialog 1, 1001, WM_GETTEXTLENGTH, 0x0, 0x0) = 4
 *   SHInitDialog({mask 0x1, dialog 1, flags 0x4}) = TRUE
 *   SHCreateMenuBar({size ok, parent dialog 1, flags 0x10, id 115, library}) = TRUE, bar 1
 *   SendMessageW(bar 1, SHCMBM_OVERRIDEKEY, 27, 0x00030003) = 1
 *   SendMessageW(bar 1, SHCMBM_GETMENU, 0x0, 0x0) = menu 1
 *   SendMessageW(bar 1, TB_BUTTONCOUNT, 0x0, 0x0) = 2
 *   SendMessageW(bar 1, TB_GETBUTTON, 0) = 1, command 1
 *   SendMessageW(bar 1, TB_GETBUTTONINFOW, 1, {size ok, mask 0x22, room 255}) = 0, command 1, text "Done"
 *   SendMessageW(bar 1, TB_SETBUTTONINFOW, 1, {size ok, mask 0x22, command 0, text "Fini", length 4}) = 1
 *   SHSendBackToFocusWindow(WM_HOTKEY, 0x0, 0x1B0000)
 *   GetMenuItemInfoW(menu 1, 0, TRUE, {size ok, mask 0x10, type 0x0, room 100}) = TRUE, type 0x0, "Done"
 *   SetMenuItemInfoW(menu 1, 0, TRUE, {size ok, mask 0x10, type 0x0, text "Fini"}) = TRUE
 *   GetSubMenu(menu 1, 1) = menu 2
 *   TerminateProcess(this process, 1)
 *
 * A call that brings others about (messages to window procedures of the library) has its line after theirs.
 * Messages without a name are hexadecimal numbers; a structure's size that is not the platform's own is "size
 * 44". A window is named by its kind and number, a control by its id and its dialog.
 *
 * Handles are numbered by kind from 1; those from before the test are "earlier session 1" and so on. In
 * texts, units outside of U+0020 to U+007E are written as <U+000A>. A connection's information names the
 * fields that are not zero. Equal lines that follow each other are one line with their number. After 10000
 * lines there is one more, "... and 12 further calls". */
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace simulator {

/* Whether a function of that name is one that the journal and FailCall know. */
bool IsSimulatedFunction(std::string_view function);

/* The calls of one test. Its size stays bounded however many calls there are. */
class Journal {
public:
    static Journal& Current();

    /* Whether calls get lines, as they do at first. Else they are counted, and the texts that lines are made
     * of (machine/Text.h) are empty, and handles have no numbers: most of what a call costs. */
    void SetWritten(bool isWritten) { isWritten_ = isWritten; }
    [[nodiscard]] bool IsWritten() const { return isWritten_; }

    /* Counts a call and writes its line. */
    void Add(const char* function, std::string line);

    /* The number of calls to a function. Valid for ever, back at 0 when the journal is cleared; calls that
     * get no line are counted here. `function` stays valid for ever, too. */
    size_t& Counter(const char* function);

    /* The lines, those of the functions that `isWanted` names only. */
    std::vector<std::string> Lines(const std::function<bool(std::string_view)>& isWanted) const;

    size_t CallsTo(std::string_view function) const;

    void Clear();

private:
    struct Line {
        std::string function;
        std::string text;
        size_t times = 1;
    };

    static constexpr size_t mostLines = 10000;

    std::vector<Line> lines_;
    std::map<std::string, size_t, std::less<>> unlisted_;  // calls for which there was no room
    std::map<std::string, size_t, std::less<>> calls_;
    std::unordered_map<const char*, size_t*> counters_;  // of `calls_`, by where the name stands
    bool isWritten_ = true;
};

}  // namespace simulator
