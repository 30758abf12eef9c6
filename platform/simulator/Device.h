/* The simulated handheld, as tests see it.
 *
 * The simulator implements the platform functions that the library calls. What the machine holds and how it
 * answers is scripted through Device, and everything that the library did is read back from it. There is one
 * machine in the process. BeginTest makes it new; EndTest looks for what was left open. It also works outside
 * of a test, for the objects that the library creates before main and destroys after it; it is bare then: no
 * files, no registry, no hosts.
 *
 * The machine is stricter than a real one. A violation (a handle that is closed twice, of the wrong kind or
 * unknown, left open at the end of a test; a parent closed before its children; a message box that nobody
 * expected) goes to the hook of SetViolationHook, and the call in which it happens fails. Without a hook it
 * is printed and the process aborts.
 *
 * Text is UTF-16 in std::u16string, which is the library's own wide string here. Paths are the device's: they
 * begin with a backslash, `/` separates too, and existing names are found whatever their case.
 *
 * Everything runs on one thread. */
#pragma once

#include "Platform.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/AllocationWatch.h"
#include "machine/Failing.h"
#include "modules/ResourceFile.h"
#include "user/DialogUser.h"

/* A request as it reached a host. Texts are exactly those that the library gave. */
struct WebRequest {
    std::u16string agent;    // of InternetOpenW
    DWORD accessType = 0;    // of InternetOpenW
    std::u16string host;     // of InternetConnectW
    INTERNET_PORT port = 0;  // of InternetConnectW
    std::u16string verb;     // of HttpOpenRequestW; "GET" for null
    std::u16string path;     // of HttpOpenRequestW, without a slash put before it; empty for null
    DWORD flags = 0;         // of HttpOpenRequestW
    bool secure = false;     // whether INTERNET_FLAG_SECURE is among them
    std::u16string headers;  // of HttpSendRequestW, as many units as were given; empty for null
    std::string body;        // of HttpSendRequestW
};

/* What a host answers. As it stands: status 200, an empty body, a Content-Length that is right. */
struct WebReply {
    /* Fills `buffer` with at most `most` bytes of the body (at least 1 is asked for); 0 ends it. */
    using Producer = std::function<size_t(char* buffer, size_t most)>;

    enum class Break {
        None,
        Close,  // the reply ends there as if it were complete
        Reset,  // a read that wants more than that fails with resetError and gives what is left before the
                // break; reads after it succeed with 0 bytes
    };

    DWORD status = 200;                                              // 0: the host closed without an answer
    std::vector<std::pair<std::u16string, std::u16string>> headers;  // names and values
    bool sendsContentLength = true;  // adds the body's true length unless `headers` has a Content-Length;
                                     // a produced body has none of its own
    std::string body;
    Producer produce;            // when set, makes the body instead, for bodies too large to hold
    std::vector<size_t> chunks;  // the most bytes that the first, second, ... read gives; the last one holds
                                 // for all further reads; none: as many as are asked for
    Break breaks = Break::None;
    uint64_t breakAt = 0;      // bytes of the body before the break
    DWORD resetError = 10054;  // WSAECONNRESET; ERROR_INTERNET_CONNECTION_ABORTED (12030) is seen too
    DWORD sendError = 0;       // not 0: HttpSendRequestW fails with this error, the rest does not count

    static WebReply WithBody(std::string bytes);
    static WebReply WithStatus(DWORD status);
    static WebReply Refused();   // the send fails with ERROR_INTERNET_CANNOT_CONNECT (12029)
    static WebReply TimedOut();  // the send fails with ERROR_INTERNET_TIMEOUT (12002)
    static WebReply Nothing();   // the send succeeds, the status is 0 and there is no body
};

/* Called once for every request that is sent to the host. */
using WebHandler = std::function<WebReply(const WebRequest&)>;

/* A program that was started through the shell. */
struct StartedProgram {
    std::u16string verb;
    std::u16string file;
    std::u16string parameters;
    HWND owner = nullptr;
    std::string ownerName;  // as the journal names it
    int show = 0;
    ULONG mask = 0;
    bool hasHandle = false;  // whether the caller got a process handle
    bool isWaitedFor = false;
};

/* A message box that was shown. */
struct ShownMessageBox {
    HWND owner = nullptr;
    std::u16string text;
    std::u16string caption;
    UINT flags = 0;
    int answer = 0;
    std::string ownerName;  // as the journal names it: null, dialog 1, ...
};

/* What the Connection Manager answers, to every call alike. */
struct ConnectionAnswers {
    HRESULT mapResult = S_OK;  // of ConnMgrMapURL; a failure leaves the network untouched
    HRESULT establishResult =
        S_OK;  // of ConnMgrEstablishConnectionSync; a failure gives no handle, no status
    DWORD status = CONNMGR_STATUS_CONNECTED;
    HRESULT releaseResult = S_OK;  // of ConnMgrReleaseConnection
};

/* A shared build of the library, loaded into this process as the device's loader would. Unloaded at the
 * latest when this is destroyed. */
class LoadedLibrary {
public:
    LoadedLibrary() = default;
    LoadedLibrary(LoadedLibrary&& other) noexcept : module_(std::exchange(other.module_, nullptr)) {}
    LoadedLibrary& operator=(LoadedLibrary&& other) noexcept {
        if (this == &other) return *this;
        Unload();
        module_ = std::exchange(other.module_, nullptr);
        return *this;
    }
    ~LoadedLibrary() { Unload(); }

    /* False when the library refused to attach, or after Unload. */
    bool IsLoaded() const { return module_ != nullptr; }

    /* The exported function of that name, null when there is none. Function is its type, calling convention
     * included: Find<int32_t WINAPI(void*)>("name"). */
    template <class Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(Symbol(name));
    }

    /* Detaches the library and runs its static destructors. Staying in memory after that is a violation.
     * Nothing happens when it is not loaded. */
    void Unload();

private:
    friend class Device;
    explicit LoadedLibrary(void* module) : module_(module) {}
    void* Symbol(const char* name) const;

    void* module_ = nullptr;
};

class Device {
public:
    static Device& Current();

    // ---- The course of a test -------------------------------------------------------------------------

    /* Makes a new machine: a folder of its own, an empty registry, no hosts, default answers, an empty
     * journal, nothing set to fail. What is open at this point stays open and does not count as a leak later.
     */
    void BeginTest();

    /* Reports as violations: internet handles, registry keys, files, process handles, windows and menus that
     * were opened since BeginTest and are still open, scripted answers for message boxes that were never
     * shown, scripts for dialogs that were never needed, a wait cursor left on. Closes and removes
     * everything; windows get no messages about it. */
    void EndTest();

    /* Who is told of violations; null: print and abort. The earlier hook is the result. */
    using ViolationHook = void (*)(const std::string& what);
    ViolationHook SetViolationHook(ViolationHook hook);

    // ---- The journal ----------------------------------------------------------------------------------

    /* The calls since BeginTest in their order, one line each, all or those to the functions named:
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
     *   WriteFile(file 2, 4096) = TRUE, 4096
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
     * A call that brings others about (messages to window procedures of the library) has its line after
     * theirs. Messages without a name are hexadecimal numbers; a structure's size that is not the platform's
     * own is "size 44". A window is named by its kind and number, a control by its id and its dialog.
     *
     * Handles are numbered by kind from 1; those from before BeginTest are "earlier session 1" and so on. In
     * texts, units outside of U+0020 to U+007E are written as <U+000A>. A connection's information names the
     * fields that are not zero. Equal lines that follow each other are one line with their number. After
     * 10000 lines there is one more, "... and 12 further calls". */
    std::vector<std::string> Calls() const;
    std::vector<std::string> Calls(std::initializer_list<std::string_view> functions) const;

    /* How often the function was called; exact however many there were. Reads and writes of files are
     * counted, not listed: "fread" is each byte that is read and each meeting with the end, "fwrite" each
     * call that writes. */
    size_t CountCalls(std::string_view function) const;

    /* Empties the journal; handles keep their numbers. */
    void ForgetCalls();

    // ---- Failures -------------------------------------------------------------------------------------

    /* Makes the n-th call from now (1: the next) of that function fail with `error`, and with FromThereOn all
     * after it. Further orders for the same function stand beside it. The error is what GetLastError gives
     * then, or the function's own result where that is an error code (registry, Connection Manager). A failed
     * read gives no bytes; what a failed close should close is closed all the same. The functions are those
     * of the journal and fread, fwrite, fseek. The name of another one is a violation. */
    void FailCall(std::string_view function, size_t n, DWORD error, Failing failing = Failing::Once);

    /* How many calls were made to fail since BeginTest. */
    size_t FailedCalls() const;

    /* Forgets what FailCall ordered. */
    void StopFailing();

    // ---- The web --------------------------------------------------------------------------------------

    /* A host that answers on one port; replaces what answered there. A name that was never given is an
     * unknown host (12007), another port of a known host refuses (12029). Names are compared without case. */
    void AddHost(std::u16string_view name, INTERNET_PORT port, WebHandler handler);
    void AddHost(std::u16string_view name, INTERNET_PORT port, WebReply reply);

    /* The requests that reached a host, in order. */
    const std::vector<WebRequest>& Requests() const;

    void SetConnectionAnswers(const ConnectionAnswers& answers);

    // ---- The registry ---------------------------------------------------------------------------------

    /* Stores a value below HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE exactly as given, and makes its key. */
    void SetRegistryValue(HKEY root, std::u16string_view key, std::u16string_view name, DWORD type,
                          std::string_view bytes);

    /* Makes a key without values. */
    void MakeRegistryKey(HKEY root, std::u16string_view key);

    // ---- Files ----------------------------------------------------------------------------------------

    /* A new machine has the folders \Temp, \Storage, \Windows, \My Documents, \Application Data and
     * \Program Files\App. */
    void PutFile(std::u16string_view path, std::string_view bytes);       // makes missing folders, too
    void MakeFolder(std::u16string_view path);                            // makes missing parents, too
    std::optional<std::string> TakeFile(std::u16string_view path) const;  // its bytes; nothing: no such file
    bool Exists(std::u16string_view path) const;                          // a file or a folder

    /* Where the path lies on the computer that runs the test, whether it exists or not. */
    std::string HostPath(std::u16string_view path) const;

    /* Gives an existing file the read-only attribute, or takes it. Such a file is neither written nor
     * deleted. */
    void SetReadOnly(std::u16string_view path, bool isReadOnly);

    /* The bytes that can still be written to files before storage is full: the write that meets the limit is
     * cut short there and fails. Nothing: no limit. */
    void SetFreeStorage(std::optional<uint64_t> bytes);

    /* The path of a special folder; nothing: there is none, and asking for it fails. The personal folder
     * (CSIDL_PERSONAL) is \My Documents, CSIDL_APPDATA is \Application Data, there are no others. */
    void SetSpecialFolder(int csidl, std::optional<std::u16string> path);

    // ---- Modules --------------------------------------------------------------------------------------

    /* The library's instance handle: what a loaded library is given, and what a test gives to a library that
     * is linked in. */
    HINSTANCE LibraryInstance() const;

    /* Where the library's file lies on the device: \Program Files\App\OrvandeOnline.dll at first. */
    void SetLibraryPath(std::u16string_view path);

    /* Loads a shared build from a file of this computer, runs its static initialisers and calls its DllMain
     * with DLL_PROCESS_ATTACH. That there is no such file or no DllMain is a violation. The program must
     * export its symbols (ENABLE_EXPORTS) and must not link the library itself. */
    LoadedLibrary LoadLibraryFile(const std::string& file);

    /* The instance handle of the program that loads the library. */
    HINSTANCE ProgramInstance() const;

    /* Puts a further module on the device, which LoadLibraryW finds by the name of its file, whatever the
     * case and the folder. It has no code. Gone after the test. */
    HINSTANCE AddModule(std::u16string_view fileName);

    /* How often an added module was loaded less how often it was freed. Freeing one that is not loaded is a
     * violation, one that stays loaded is none. */
    size_t ModuleReferences(HINSTANCE module) const;

    // ---- Resources ------------------------------------------------------------------------------------

    /* What a module's resources are until the next BeginTest, in place of all it has. */
    void SetResources(HINSTANCE module, std::vector<Resource> resources);

    /* What the resources of the program or the library are from the next BeginTest on, in every test: for a
     * program of tests to set once. */
    void SetDefaultResources(HINSTANCE module, std::vector<Resource> resources);

    // ---- Programs -------------------------------------------------------------------------------------

    /* The programs that were started through the shell, in order. */
    const std::vector<StartedProgram>& StartedPrograms() const;

    /* Whether the shell gives a process handle to who asks for one. It does at first; documents that a
     * running program opens bring none. A process has ended when it is waited for without a limit. */
    void SetGivesProcessHandles(bool gives);

    /* Called when the library ends this process, before the process ends without running destructors. */
    using TerminationHook = std::function<void(UINT exitCode)>;
    void SetTerminationHook(TerminationHook hook);

    // ---- The user -------------------------------------------------------------------------------------

    /* What the user presses in the next message box that has no answer yet: IDOK, IDCANCEL, ... A box without
     * an answer, and an answer for which the box has no button, are violations. */
    void AnswerMessageBox(int answer);

    const std::vector<ShownMessageBox>& MessageBoxes() const;

    /* What the user does next in a dialog. When the innermost modal dialog has no message left to handle,
     * the first script that has not run yet is run on it, once; if the dialog is then still open, the next
     * one is. A dialog that finds no script is a violation, and is ended with IDCANCEL; so is a script
     * without a dialog at the end of the test. */
    void UseDialog(DialogScript script);

    /* The dialogs that were shown, in the order in which they finished WM_INITDIALOG. */
    const std::vector<ShownDialog>& Dialogs() const;

    /* The cursor now in force; a new machine shows the normal one. */
    HCURSOR CurrentCursor() const;
    HCURSOR NormalCursor() const;
    HCURSOR WaitCursor() const;

private:
    Device() = default;
};
