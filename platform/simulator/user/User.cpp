/* What the user sees and does: message boxes and the cursor. */
#include "Platform.h"

#include "user/User.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "machine/Call.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "screen/Screen.h"
#include "user/DeviceUser.h"

namespace {

using simulator::Call;

const HCURSOR normalCursor = reinterpret_cast<HCURSOR>(uintptr_t{0x00C00010});
const HCURSOR waitCursor = reinterpret_cast<HCURSOR>(uintptr_t{0x00C00020});

struct User {
    std::deque<int> answers;
    std::vector<ShownMessageBox> boxes;
    HCURSOR cursor = normalCursor;
};

User& CurrentUser() {
    static User& user = *new User;
    return user;
}

std::string NameOf(HCURSOR cursor) {
    if (cursor == normalCursor) return "normal cursor";
    if (cursor == waitCursor) return "wait cursor";
    return simulator::PointerText(cursor);
}

/* The answers for which a box with these flags has buttons. */
std::vector<int> ButtonsOf(UINT flags) {
    switch (flags & MB_TYPEMASK) {
        case MB_OK:
            return {IDOK};
        case MB_OKCANCEL:
            return {IDOK, IDCANCEL};
        case MB_ABORTRETRYIGNORE:
            return {IDABORT, IDRETRY, IDIGNORE};
        case MB_YESNOCANCEL:
            return {IDYES, IDNO, IDCANCEL};
        case MB_YESNO:
            return {IDYES, IDNO};
        case MB_RETRYCANCEL:
            return {IDRETRY, IDCANCEL};
        default:
            return {};
    }
}

}  // namespace

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT flags) {
    Call call("MessageBoxW");
    const std::string ownerName = simulator::WindowName(owner);
    call.Arguments({ownerName, simulator::Quoted(text), simulator::Quoted(caption), simulator::Hex8(flags)});
    if (call.MustFail()) return call.Fails(0, "0", call.OrderedError());
    // An owner that the simulator never gave out is a window of the application.
    if (simulator::Handles::Current().IsKnown(owner) &&
        simulator::Screen::Current().Find(owner, call) == nullptr)
        return call.Fails(0, "0", ERROR_INVALID_WINDOW_HANDLE);
    User& user = CurrentUser();
    const std::u16string shownCaption = caption != nullptr ? caption : u"Error";
    user.boxes.push_back({owner, simulator::TextOrEmpty(text), shownCaption, flags, 0, ownerName});
    if (user.answers.empty()) {
        call.Violates("nobody expected this message box");
        return call.Returns(0, "0");
    }
    const int answer = user.answers.front();
    user.answers.pop_front();
    user.boxes.back().answer = answer;
    const std::vector<int> buttons = ButtonsOf(flags);
    if (std::find(buttons.begin(), buttons.end(), answer) == buttons.end()) {
        call.Violates("the box has no button for the answer " + std::to_string(answer));
    }
    return call.Returns(answer, std::to_string(answer));
}

HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name) {
    Call call("LoadCursorW");
    const bool isWait = name == IDC_WAIT;
    const bool isNormal = name == IDC_ARROW;
    call.Arguments({simulator::PointerText(instance), isWait     ? "IDC_WAIT"
                                                      : isNormal ? "IDC_ARROW"
                                                                 : simulator::PointerText(name)});
    if (call.MustFail()) return call.Fails(HCURSOR{}, "null", call.OrderedError());
    if (instance != nullptr || !(isWait || isNormal)) {
        return call.Fails(HCURSOR{}, "null", ERROR_RESOURCE_NAME_NOT_FOUND);
    }
    const HCURSOR cursor = isWait ? waitCursor : normalCursor;
    return call.Returns(cursor, NameOf(cursor));
}

HCURSOR WINAPI SetCursor(HCURSOR cursor) {
    Call call("SetCursor");
    call.Arguments({NameOf(cursor)});
    if (call.MustFail()) return call.Fails(HCURSOR{}, "null", call.OrderedError());
    if (cursor != nullptr && cursor != normalCursor && cursor != waitCursor) {
        call.Violates("this is no cursor");
        return call.Fails(HCURSOR{}, "null", ERROR_INVALID_CURSOR_HANDLE);
    }
    const HCURSOR previous = std::exchange(CurrentUser().cursor, cursor);
    return call.Returns(previous, NameOf(previous));
}

void simulator::ResetUser() {
    CurrentUser() = User{};
}

void simulator::ReportUser() {
    const User& user = CurrentUser();
    if (!user.answers.empty()) {
        Violate(std::to_string(user.answers.size()) +
                " scripted answers for message boxes that were not shown");
    }
    if (user.cursor == waitCursor) Violate("the wait cursor is still on at the end of the test");
}

void DeviceUser::AnswerMessageBox(int answer) {
    CurrentUser().answers.push_back(answer);
}

const std::vector<ShownMessageBox>& DeviceUser::MessageBoxes() const {
    return CurrentUser().boxes;
}

HCURSOR DeviceUser::CurrentCursor() const {
    return CurrentUser().cursor;
}

HCURSOR DeviceUser::NormalCursor() const {
    return normalCursor;
}

HCURSOR DeviceUser::WaitCursor() const {
    return waitCursor;
}
