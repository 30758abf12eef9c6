#pragma once

#include "Platform.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "user/ShownDialog.h"

/* The user of one dialog. He sees what is on the screen and does what can be done there; all else (a control
 * that is not there, hidden or disabled, a command that nothing shows, a dialog that is closed or waits for
 * another one) is a violation, and nothing happens then. What he does is delivered before the operation
 * returns, messages that were posted meanwhile included. When it opens a further dialog, the next scripts are
 * that one's, and the operation returns after it was closed. */
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
