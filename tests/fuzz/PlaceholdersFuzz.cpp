/* Placeholders of translations, which anybody may have written. The first byte chooses one of the library's
 * kinds of texts, or one that is part of the input; lines ended by zero bytes follow: the translation, and
 * for the last kind the text. */
#include "FuzzInput.h"
#include "text/FormatString.h"
#include "text/Placeholders.h"

namespace {

/* Whoever takes it for an address ends the program. */
constexpr int number = 0x41414141;

/* A text, and how it is filled in. */
struct Original {
    const WCHAR* text;
    WideString (*fill)(const WCHAR* format);
};

constexpr Original originals[] = {
    {TEXT("No placeholder"), [](const WCHAR* format) { return FormatString(format); }},
    {TEXT("The server returned error code %d"),
     [](const WCHAR* format) { return FormatString(format, number); }},
    {TEXT("%s"), [](const WCHAR* format) { return FormatString(format, TEXT("wide")); }},
    {TEXT("%s: %d"), [](const WCHAR* format) { return FormatString(format, TEXT("wide"), number); }},
    {TEXT("%d of %hs"), [](const WCHAR* format) { return FormatString(format, number, "narrow"); }},
    {TEXT("%I64d %c"),
     [](const WCHAR* format) { return FormatString(format, int64_t{number} << 32, number); }},
    {TEXT("%5.3x%%%-9ls"), [](const WCHAR* format) { return FormatString(format, number, TEXT("wide")); }},
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

bool TakeNumber(const std::string& text, size_t& at) {
    int digits = 0;
    while (TakeOneOf("0123456789", text, at))
        ++digits;
    return digits <= 3;
}

/* What a placeholder behind its percent sign reads: its size and type in one word; "bad" for what is never
 * read. */
std::string ArgumentAt(const std::string& text, size_t& at) {
    while (TakeOneOf("-+ #0", text, at)) {
    }
    if (!TakeNumber(text, at)) return "bad";
    if (TakeOneOf(".", text, at) && !TakeNumber(text, at)) return "bad";
    std::string argument;
    for (const char* const size : {"I64", "I32", "h", "l", "w", "L"}) {
        if (text.compare(at, strlen(size), size) != 0) continue;
        argument = size;
        at += argument.size();
        break;
    }
    if (TakeOneOf("diuxXo", text, at)) return argument + "d";
    if (TakeOneOf("eEfgG", text, at)) return argument + "f";
    const size_t letter = at;
    return TakeOneOf("sScCp", text, at) ? argument + text[letter] : "bad";
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
        // It ends here when it reads what is no argument.
        const WideString shown = original.fill(wide.c_str());
        Require(shown.size() <= 999, "a text that is filled in has at most 999 units");
        if (format.find('%') == std::string::npos)
            Require(shown == wide.substr(0, 999), "a text without placeholders is shown as it is");
    }
};

const bool isAdded = AddFuzzTarget<Placeholders>("Placeholders");

}  // namespace
