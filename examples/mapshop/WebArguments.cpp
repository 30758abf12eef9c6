#include "WebArguments.h"

#include "NumberText.h"

namespace {

constexpr wchar_t defaultHost[] = MAPSHOP_DEFAULT_HOST;

/* Takes an option and its value. Returns an empty text, or why they are wrong. */
std::wstring TakeOption(WebArguments& parsed, const std::wstring& name, const std::wstring* value) {
    if (name != L"--host" && name != L"--progress") {
        return L"There is no option '" + name + L"'; see mapshop --help.";
    }
    if (value == nullptr) return name + L" has no value; see mapshop --help.";
    if (name == L"--host") {
        parsed.host = *value;
        return {};
    }
    if (*value == L"bar") {
        parsed.progress = ProgressStyle::bar;
    } else if (*value == L"lines") {
        parsed.progress = ProgressStyle::lines;
    } else {
        return L"--progress is bar or lines, not '" + *value + L"'.";
    }
    return {};
}

/* Takes the arguments apart. Returns an empty text, or why that cannot be done. */
std::wstring TakeArguments(WebArguments& parsed, const std::vector<std::wstring>& arguments) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        if (!arguments[i].starts_with(L"--")) {
            parsed.operands.push_back(arguments[i]);
            continue;
        }
        if (arguments[i] == L"--resume") {
            parsed.resumes = true;
            continue;
        }
        const std::wstring* const value = i + 1 < arguments.size() ? &arguments[i + 1] : nullptr;
        std::wstring problem = TakeOption(parsed, arguments[i], value);
        if (!problem.empty()) return problem;
        ++i;
    }
    return {};
}

/* Returns an empty text, or why the host or the path is none. */
std::wstring AddressProblem(const WebArguments& parsed) {
    if (parsed.host.empty() || parsed.host.find_first_of(L":/\\ ") != std::wstring::npos) {
        return L"'" + parsed.host + L"' is not the name of a host such as " + defaultHost + L".";
    }
    const std::wstring& path = parsed.operands[0];
    if (!path.starts_with(L'/')) {
        return L"'" + path + L"' is not a path such as /maps/corsica.map: it begins with no slash.";
    }
    return {};
}

}  // namespace

WebArguments ParseWebArguments(const std::vector<std::wstring>& arguments, size_t least, size_t most,
                               const std::wstring& form) {
    WebArguments parsed;
    parsed.host = defaultHost;
    parsed.problem = TakeArguments(parsed, arguments);
    if (!parsed.problem.empty()) return parsed;
    const size_t count = parsed.operands.size();
    if (count < least || count > most) {
        parsed.problem = L"Wanted is " + form + L"; " + DecimalText(count) +
                         (count == 1 ? L" argument was given." : L" arguments were given.");
        return parsed;
    }
    parsed.problem = AddressProblem(parsed);
    return parsed;
}
