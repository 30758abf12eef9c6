#include "Platform.h"

#include "screen/Messages.h"

#include <map>

#include "machine/Journal.h"
#include "machine/Text.h"
#include "screen/MenuBars.h"
#include "screen/Menus.h"
#include "screen/Screen.h"

namespace simulator {

namespace {

using Names = std::map<UINT, const char*>;

const Names& CommonNames() {
    static const Names names = {
        {WM_NULL, "WM_NULL"},
        {WM_DESTROY, "WM_DESTROY"},
        {WM_MOVE, "WM_MOVE"},
        {WM_SIZE, "WM_SIZE"},
        {WM_ACTIVATE, "WM_ACTIVATE"},
        {WM_SETFOCUS, "WM_SETFOCUS"},
        {WM_KILLFOCUS, "WM_KILLFOCUS"},
        {WM_ENABLE, "WM_ENABLE"},
        {WM_SETTEXT, "WM_SETTEXT"},
        {WM_GETTEXT, "WM_GETTEXT"},
        {WM_GETTEXTLENGTH, "WM_GETTEXTLENGTH"},
        {WM_PAINT, "WM_PAINT"},
        {WM_CLOSE, "WM_CLOSE"},
        {WM_SHOWWINDOW, "WM_SHOWWINDOW"},
        {WM_NEXTDLGCTL, "WM_NEXTDLGCTL"},
        {WM_SETFONT, "WM_SETFONT"},
        {WM_GETFONT, "WM_GETFONT"},
        {WM_NOTIFY, "WM_NOTIFY"},
        {WM_NCDESTROY, "WM_NCDESTROY"},
        {WM_GETDLGCODE, "WM_GETDLGCODE"},
        {WM_KEYDOWN, "WM_KEYDOWN"},
        {WM_KEYUP, "WM_KEYUP"},
        {WM_CHAR, "WM_CHAR"},
        {WM_INITDIALOG, "WM_INITDIALOG"},
        {WM_COMMAND, "WM_COMMAND"},
        {WM_TIMER, "WM_TIMER"},
        {WM_INITMENUPOPUP, "WM_INITMENUPOPUP"},
        {WM_LBUTTONDOWN, "WM_LBUTTONDOWN"},
        {WM_LBUTTONUP, "WM_LBUTTONUP"},
        {WM_LBUTTONDBLCLK, "WM_LBUTTONDBLCLK"},
        {WM_HOTKEY, "WM_HOTKEY"},
        {EM_GETSEL, "EM_GETSEL"},
        {EM_SETSEL, "EM_SETSEL"},
        {EM_REPLACESEL, "EM_REPLACESEL"},
        {EM_LIMITTEXT, "EM_LIMITTEXT"},
        {EM_SETPASSWORDCHAR, "EM_SETPASSWORDCHAR"},
        {EM_GETPASSWORDCHAR, "EM_GETPASSWORDCHAR"},
        {EM_SETREADONLY, "EM_SETREADONLY"},
        {EM_GETLIMITTEXT, "EM_GETLIMITTEXT"},
        {BM_GETCHECK, "BM_GETCHECK"},
        {BM_SETCHECK, "BM_SETCHECK"},
        {BM_GETSTATE, "BM_GETSTATE"},
        {BM_SETSTYLE, "BM_SETSTYLE"},
        {BM_CLICK, "BM_CLICK"},
    };
    return names;
}

const Names& DialogNames() {
    static const Names names = {{DM_GETDEFID, "DM_GETDEFID"}, {DM_SETDEFID, "DM_SETDEFID"}};
    return names;
}

const Names& BarNames() {
    static const Names names = {
        {TB_BUTTONCOUNT, "TB_BUTTONCOUNT"},       {TB_GETBUTTON, "TB_GETBUTTON"},
        {TB_GETBUTTONINFOW, "TB_GETBUTTONINFOW"}, {TB_SETBUTTONINFOW, "TB_SETBUTTONINFOW"},
        {SHCMBM_GETMENU, "SHCMBM_GETMENU"},       {SHCMBM_OVERRIDEKEY, "SHCMBM_OVERRIDEKEY"},
        {TB_ENABLEBUTTON, "TB_ENABLEBUTTON"},     {TB_ISBUTTONENABLED, "TB_ISBUTTONENABLED"},
        {TB_COMMANDTOINDEX, "TB_COMMANDTOINDEX"},
    };
    return names;
}

const char* NameIn(const Names& names, UINT message) {
    const auto found = names.find(message);
    return found != names.end() ? found->second : nullptr;
}

bool IsBar(HWND window) {
    return Screen::Current().Lookup<BarWindow>(window) != nullptr;
}

/* What a caller asks a button for, or gives it. */
std::string ButtonInfoText(const TBBUTTONINFOW& info, bool isGiven) {
    std::string text = "{" + SizeText(info.cbSize, sizeof info) + ", mask " + Hex(info.dwMask);
    if (isGiven && (info.dwMask & TBIF_COMMAND) != 0) text += ", command " + std::to_string(info.idCommand);
    if (isGiven && (info.dwMask & TBIF_STATE) != 0) text += ", state " + Hex(info.fsState);
    if ((info.dwMask & TBIF_TEXT) != 0) {
        text += isGiven ? ", text " + Quoted(info.pszText) + ", length " : std::string(", room ");
        text += std::to_string(info.cchText);
    }
    return text + "}";
}

std::vector<std::string> BarArguments(UINT message, WPARAM wParam, LPARAM lParam) {
    const std::string first = std::to_string(wParam);
    switch (message) {
        case SHCMBM_OVERRIDEKEY:
            return {first, Hex8(static_cast<uint32_t>(lParam))};
        case TB_GETBUTTON:
            return {first};
        case TB_GETBUTTONINFOW:
        case TB_SETBUTTONINFOW: {
            const auto* const info = reinterpret_cast<const TBBUTTONINFOW*>(lParam);
            const bool isGiven = message == TB_SETBUTTONINFOW;
            return {first, info != nullptr ? ButtonInfoText(*info, isGiven) : std::string("null")};
        }
        default:
            return {Hex(wParam), Hex(static_cast<ULONG_PTR>(lParam))};
    }
}

std::string TextResult(LRESULT result, const WCHAR* text) {
    return std::to_string(result) + (text != nullptr && result > 0 ? ", " + Quoted(text) : std::string());
}

std::string ButtonInfoResult(LRESULT result, const TBBUTTONINFOW& info) {
    std::string text = std::to_string(result);
    if (result < 0) return text;
    if ((info.dwMask & TBIF_COMMAND) != 0) text += ", command " + std::to_string(info.idCommand);
    if ((info.dwMask & TBIF_STATE) != 0) text += ", state " + Hex(info.fsState);
    if ((info.dwMask & TBIF_TEXT) != 0 && info.pszText != nullptr) text += ", text " + Quoted(info.pszText);
    return text;
}

}  // namespace

std::string MessageName(HWND window, UINT message) {
    const char* name = NameIn(CommonNames(), message);
    if (name == nullptr) name = NameIn(IsBar(window) ? BarNames() : DialogNames(), message);
    return name != nullptr ? name : Hex(message);
}

std::vector<std::string> MessageArguments(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!Journal::Current().IsWritten()) return {};
    std::vector<std::string> arguments;
    if (IsBar(window)) {
        arguments = BarArguments(message, wParam, lParam);
    } else if (message == WM_GETTEXT) {
        arguments = {std::to_string(wParam)};
    } else if (message == WM_SETTEXT) {
        arguments = {Quoted(reinterpret_cast<const WCHAR*>(lParam))};
    } else if (message == WM_COMMAND) {
        arguments = {Hex(wParam), WindowName(reinterpret_cast<HWND>(lParam))};
    } else if (message == WM_INITDIALOG) {
        arguments = {WindowName(reinterpret_cast<HWND>(wParam)), "parameter"};
    } else if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        arguments = {WindowName(reinterpret_cast<HWND>(wParam))};
    } else if (message == WM_INITMENUPOPUP) {
        arguments = {Handles::Current().NameOf(reinterpret_cast<HMENU>(wParam)),
                     Hex(static_cast<ULONG_PTR>(lParam))};
    } else if (message == WM_NOTIFY) {
        arguments = {Hex(wParam), "header"};
    } else {
        arguments = {Hex(wParam), Hex(static_cast<ULONG_PTR>(lParam))};
    }
    arguments.insert(arguments.begin(), MessageName(window, message));
    return arguments;
}

std::string MessageResult(HWND window, UINT message, LPARAM lParam, LRESULT result) {
    if (!Journal::Current().IsWritten()) return {};
    if (message == WM_GETTEXT) return TextResult(result, reinterpret_cast<const WCHAR*>(lParam));
    if (!IsBar(window)) return std::to_string(result);
    if (message == SHCMBM_GETMENU) return Handles::Current().NameOf(reinterpret_cast<HMENU>(result));
    if (message == TB_GETBUTTONINFOW && lParam != 0)
        return ButtonInfoResult(result, *reinterpret_cast<const TBBUTTONINFOW*>(lParam));
    if (message == TB_GETBUTTON && result != 0)
        return std::to_string(result) + ", command " +
               std::to_string(reinterpret_cast<const TBBUTTON*>(lParam)->idCommand);
    return std::to_string(result);
}

}  // namespace simulator
