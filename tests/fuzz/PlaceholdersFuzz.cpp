/* Placeholders of translations, which anybody may have written. The first byte chooses one of the library's
 * kinds of texts, or one that is part of the input; lines ended by zero bytes follow: the translation, and
 * for the last kind the text. */
#include "FuzzInput.h"
#include "text/FormatString.h"
#include "text/Placeholders.h"

namespace {

/* Whoever takes it for an address ends the program. */
constexpr int number = 0x41414141;

/* A text, and how it is filled in; `beyond` lies behind its arguments. */
struct Original {
    const WCHAR* text;
    WideString (*fill)(const WCHAR* format, int beyond);
};

constexpr Original originals[] = {
    {TEXT("No placeholder"), [](const WCHAR* format, int beyond) { return FormatString(format, beyond); }},
    {TEXT("The server returned error code %d"),
     [](const WCHAR* format, int beyond) { return FormatString(format, number, beyond); }},
    {TEXT("%s"), [](const WCHAR* format, int beyond) { return FormatString(format, TEXT("wide"), beyond); }},
    {TEXT("%s: %d"),
     [](const WCHAR* format, int beyond) { return FormatString(format, TEXT("wide"), number, beyond); }},
    {TEXT("%d of %hs"),
     [](const WCHAR* format, int beyond) { return FormatString(format, number, "narrow", beyond); }},
    {TEXT("%I64d %c"),
     [](const WCHAR* format, int beyond) {
         return FormatString(format, int64_t{number} << 32, number, beyond);
     }},
    {TEXT("%5.3x%%%-9ls"),
     [](const WCHAR* format, int beyond) { return FormatString(format, number, TEXT("wide"), beyond); }},
};

WideString Widened(const std::string& bytes) {
    WideString text;
    for (const char byte : bytes)
        text += static_cast<WCHAR>(static_cast<unsigned char>(byte));
    return text;
}

bool TakeOneOf(std::string_view units, const std::string& text, size_t& at) {
    if (at >= text.size() || units.find(text[at]) == std::string_view::npos) return false;
    ++at;
    return true;
}

/* The digits without the zeros before them. */
std::string TakeNumber(const std::string& text, size_t& at) {
    std::string digits;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9')
        digits += text[at++];
    return digits.erase(0, digits.find_first_not_of('0'));
}

bool IsAtMost(const std::string& most, const std::string& digits) {
    return digits.size() < most.size() || (digits.size() == most.size() && digits <= most);
}

/* What a placeholder behind its percent sign reads: its size and type in one word; "bad" for what is never
 * read. */
std::string ArgumentAt(const std::string& text, size_t& at) {
    while (TakeOneOf("-+ #0", text, at)) {
    }
    const std::string width = TakeNumber(text, at);
    const std::string precision = TakeOneOf(".", text, at) ? TakeNumber(text, at) : "";
    const auto hasRoom = [&](const char* most) { return IsAtMost(most, width) && IsAtMost(most, precision); };
    std::string argument;
    for (const char* const size : {"I64", "I32", "h", "l", "w", "L"}) {
        if (text.compare(at, strlen(size), size) != 0) continue;
        argument = size;
        at += argument.size();
        break;
    }
    if (TakeOneOf("diuxXo", text, at)) return hasRoom("20") ? argument + "d" : "bad";
    if (TakeOneOf("eEfgG", text, at)) return hasRoom("20") ? argument + "f" : "bad";
    if (TakeOneOf("p", text, at)) return hasRoom("20") ? argument + "p" : "bad";
    const size_t letter = at;
    return TakeOneOf("sScC", text, at) && hasRoom("999") ? argument + text[letter] : "bad";
}

std::vector<std::string> ArgumentsOf(const std::string& text) {
    std::vector<std::string> arguments;
    for (size_t at = 0; at < text.size();) {
        if (text[at++] != '%' || TakeOneOf("%", text, at)) continue;
        arguments.push_back(ArgumentAt(text, at));
    }
    return arguments;
}

/* As Placeholders.h tells it. */
bool ReadsTheSame(const std::string& original, const std::string& format) {
    if (original == format) return true;
    const std::vector<std::string> given = ArgumentsOf(original);
    const std::vector<std::string> read = ArgumentsOf(format);
    return std::ranges::find(read, "bad") == read.end() && read.size() <= given.size() &&
           std::equal(read.begin(), read.end(), given.begin());
}

class Placeholders final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        const size_t kind = input.TakeByte() % (std::size(originals) + 1);
        const std::string format = input.TakeLine();
        if (kind < std::size(originals))
            RequireSafety(originals[kind], format);
        else
            RequireJudgement(input.TakeLine(), format);
    }

private:
    static void RequireJudgement(const std::string& original, const std::string& format) {
        const bool isRead = ReadsArgumentsOf(Widened(original).c_str(), Widened(format).c_str());
        Require(isRead == ReadsTheSame(original, format),
                "a format is taken when it reads the same arguments");
    }

    static void RequireSafety(const Original& original, const std::string& format) {
        const WideString wide = Widened(format);
        RequireJudgement(std::string(original.text, original.text + WideStringView(original.text).size()),
                         format);
        if (!ReadsArgumentsOf(original.text, wide.c_str())) return;
        // It ends here when it takes for an address what is none.
        const WideString shown = original.fill(wide.c_str(), number);
        Require(shown == original.fill(wide.c_str(), ~number), "nothing behind the arguments is read");
        Require(shown.size() <= 999, "a text that is filled in has at most 999 units");
        if (format.find('%') == std::string::npos)
            Require(shown == wide.substr(0, 999), "a text without placeholders is shown as it is");
    }
};

const bool isAdded = AddFuzzTarget<Placeholders>("Placeholders");

}  // namespace
