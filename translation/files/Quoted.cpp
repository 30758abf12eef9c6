#include "files/Quoted.h"

#include <algorithm>

#include "LMOnlineVersion.h"
#include "Utf16.h"

namespace {

constexpr size_t mostUnits = 60;

}  // namespace

std::string Visible(WideStringView text) {
    WideString shown(text);
    std::ranges::replace_if(
        shown, [](WCHAR unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); }, u'\x25A1');
    return Utf8Of(shown);
}

std::string Quoted(WideStringView text) {
    if (text.size() <= mostUnits) return QuotedWhole(text);
    WideStringView beginning = text.substr(0, mostUnits);
    // No half of a pair is left at the end.
    if (beginning.back() >= 0xD800 && beginning.back() < 0xDC00) beginning.remove_suffix(1);
    std::string quoted = QuotedWhole(beginning);
    return quoted.insert(quoted.size() - 1, "...");
}

std::string QuotedWhole(WideStringView text) {
    WideString shown;
    for (const WCHAR unit : text) {
        if (unit == u'\n')
            shown.append(u"\\n");
        else
            shown += unit;
    }
    return "'" + Visible(shown) + "'";
}

std::string ShellWord(const std::string& path) {
    const auto isPlain = [](char unit) {
        return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '+' && unit <= '9') ||
               unit == '_';
    };
    if (std::ranges::all_of(path, isPlain)) return path;
    std::string quoted;
    for (const char unit : path)
        quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
    return "'" + quoted + "'";
}

std::string NameOfVersion() {
    return "Orvande Online " + std::to_string(LM_ONLINE_VERSION_MAJOR) + "." +
           std::to_string(LM_ONLINE_VERSION_MINOR) + "." + std::to_string(LM_ONLINE_VERSION_PATCH);
}
