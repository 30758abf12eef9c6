/* The screen of the simulated handheld and the user in front of it: what a test scripts and sees of dialogs,
 * menu bars and menus, and the resources that they are made of. Included by Device.h.
 *
 * The screen has 240x320 pixels. The task bar takes the first 26 lines, a menu bar the last 26. */
#pragma once

#include "Platform.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/* The type or the name of a resource: a text, or a number when the text is empty. */
struct ResourceId {
    uint16_t number = 0;
    std::u16string text;

    bool operator==(const ResourceId&) const = default;
};

/* One resource of a module, as the resource compiler made it. */
struct Resource {
    ResourceId type;  // RT_DIALOG is 5, ...
    ResourceId name;
    uint16_t language = 0;
    std::string bytes;
};

/* The resources in the bytes of a compiled resource file (.res, what `windres -O res` writes), in their
 * order. Nothing when the bytes are no such file, or end in the middle of a resource. */
std::optional<std::vector<Resource>> ParseResourceFile(std::string_view bytes);

/* The resources of a file of the computer that runs the test. A file that cannot be read or parsed is a
 * violation. */
std::vector<Resource> ReadResourceFile(const std::string& file);

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

/* A control as it stands on the screen. */
struct ShownControl {
    int id = 0;
    std::u16string className;  // u"static", u"edit" or u"button"
    std::u16string text;       // in a password field one * for each unit
    RECT place{};              // in pixels of the dialog
    bool isVisible = false;
    bool isEnabled = false;
    bool isChecked = false;
    bool isPassword = false;
    bool hasFocus = false;
};

/* An item of a menu. */
struct ShownMenuItem {
    std::u16string text;
    UINT command = 0;  // 0 for pop-ups and separators
    bool isEnabled = true;
    bool isChecked = false;
    bool isSeparator = false;
    std::vector<ShownMenuItem> items;  // of a pop-up
};

/* A button of a menu bar. */
struct ShownButton {
    std::u16string text;
    int command = 0;
    bool isEnabled = false;
    std::vector<ShownMenuItem> menu;  // what it drops down; empty for a plain button
};

/* A dialog as it was once WM_INITDIALOG had been handled, and how it ended. */
struct ShownDialog {
    HWND window = nullptr;
    HWND owner = nullptr;
    std::string ownerName;  // as the journal names it
    std::u16string caption;
    RECT place{};                        // on the screen
    std::vector<ShownControl> controls;  // in z-order, which is that of the template
    std::vector<ShownButton> menuBar;    // empty: it has none
    std::optional<INT_PTR> result;       // what DialogBoxIndirectParamW returned; nothing: it still runs
};

/* The user of one dialog. He sees what is on the screen and does what can be done there; all else (a control
 * that is not there, hidden or disabled, a command that nothing shows, a dialog that is closed or waits for
 * another one) is a violation, and nothing happens then. What he does is delivered before the operation
 * returns, messages that were posted meanwhile included. When it opens a further dialog, the next scripts
 * are that one's, and the operation returns after it was closed. */
class DialogUser {
public:
    explicit DialogUser(HWND dialog) : dialog_(dialog) {}

    // ---- What he sees ---------------------------------------------------------------------------------

    HWND Window() const { return dialog_; }

    /* False once the dialog has been ended or destroyed. */
    bool IsOpen() const;

    std::u16string Caption() const;

    /* All at once; the result is nothing. */
    ShownDialog Look() const;

    /* One control. */
    ShownControl Control(int id) const;
    std::u16string Text(int id) const { return Control(id).text; }
    bool IsChecked(int id) const { return Control(id).isChecked; }

    /* The texts of the visible statics, in z-order. */
    std::vector<std::u16string> Statics() const;

    /* The id of the control that has the focus; nothing: none of this dialog has it. */
    std::optional<int> Focus() const;

    /* The buttons of the menu bar, with what drops down from them; none without a bar. */
    std::vector<ShownButton> MenuBar() const;

    // ---- What he does ---------------------------------------------------------------------------------

    /* Taps into an edit field and types in place of what is there, unit by unit; the field's limit (30000
     * units at first) holds. An empty text deletes what is there. */
    void Type(int id, std::u16string_view text);

    /* Types into the edit field that has the focus, in place of the selection or where the insertion point
     * is: at the end of what a program or the user has put there. Tab, and the first focus of a dialog,
     * select all of a field. */
    void TypeOn(std::u16string_view text);

    /* Taps a check box unless it shows that state. */
    void Check(int id, bool ticked = true);

    /* Taps any control; a button is thereby pressed. */
    void Tap(int id);
    void DoubleTap(int id);

    /* Taps the dialog itself, at this pixel of it. */
    void TapAt(int x, int y);

    /* Presses a plain button of the menu bar. */
    void PressButton(int command);
    void PressButton(std::u16string_view text);

    /* Chooses an item of a pop-up that the menu bar drops down, however deep it lies. */
    void ChooseMenuItem(UINT command);
    void ChooseMenuItem(std::u16string_view text);

    /* The device's Back key: WM_HOTKEY where SHCMBM_OVERRIDEKEY asked for a notification; unless it took the
     * key's own meaning away as well, the dialog gets IDCANCEL. */
    void PressBack();

    /* Enter: the push button that has the focus, otherwise the default one, otherwise IDOK. */
    void PressEnter();

    /* Tab: to the next control that is a tab stop. */
    void PressTab(bool backwards = false);

    // ---- What he does not do, but the system ----------------------------------------------------------

    /* Delivers any message to the dialog or to a control. */
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT SendTo(int id, UINT message, WPARAM wParam, LPARAM lParam);

    /* WM_NOTIFY with a header from that control. */
    LRESULT Notify(int id, UINT code);

    /* WM_TIMER. */
    void Timer(UINT_PTR id);

private:
    HWND dialog_;
};

using DialogScript = std::function<void(DialogUser&)>;
