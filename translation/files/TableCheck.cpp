#include "files/TableCheck.h"

#include <algorithm>
#include <map>

#include "Utf16.h"
#include "files/Quoted.h"
#include "files/Utf8.h"

namespace {

bool IsAscii(WideStringView text) {
    return std::ranges::all_of(text, [](WCHAR unit) { return unit < 0x80; });
}

/* The word with the first character that is not in ASCII. */
WideString FirstWordBeyondAscii(WideStringView text) {
    const auto* const found = std::ranges::find_if(text, [](WCHAR unit) { return unit >= 0x80; });
    const auto at = static_cast<size_t>(found - text.begin());
    const size_t before = text.substr(0, at).find_last_of(u" \t\"");
    const size_t begin = before == WideStringView::npos ? 0 : before + 1;
    return WideString(text.substr(begin, std::min(text.find_first_of(u" \t\"\r", at), text.size()) - begin));
}

/* The UTF-8 of a text, each byte taken for a character. */
WideString ReadByteByByte(WideStringView text) {
    WideString read;
    for (const char byte : Utf8Of(text))
        read += static_cast<uint8_t>(byte);
    return read;
}

void CheckUtf8(std::string_view bytes, const TableText& table, const std::string& mending,
               Complaints& complaints) {
    for (size_t index = 0; index < table.lines.size(); ++index) {
        const WideString& line = table.lines[index];
        if (IsAscii(line) || IsTableComment(line)) continue;
        const WideString word = FirstWordBeyondAscii(line);
        return Complain(complaints, index + 1,
                        "the file is UTF-8, and the library would show " + Quoted(ReadByteByByte(word)) +
                            " for " + Quoted(word) + mending);
    }
    if (bytes.starts_with(utf8Mark))
        Complain(
            complaints, 1,
            "the file begins with the byte order mark of UTF-8, which the library takes for text" + mending);
}

/* What is to be written for a text, as far as a sentence bears it. */
std::string FieldFor(const WideString& text) {
    constexpr size_t mostUnits = 400;
    const WideString field = EscapedText(text);
    return field.size() <= mostUnits ? Visible(field) : R"("...", with "" for each quote in it)";
}

/* Whether a field of several lines may begin with `raw`, as spreadsheets write one. */
bool IsLeftOpen(WideStringView raw) {
    return raw.starts_with(u'"') && !AreQuotesKept(raw) && AreQuotesKept(raw.substr(1));
}

/* More letters beyond ASCII than in it, as no language has that is written in Latin-1. */
bool IsHardlyLatin(const TableText& table) {
    size_t beyond = 0;
    size_t latin = 0;
    for (const WideString& line : table.lines) {
        const size_t tab = line.find(u'\t');
        if (IsTableComment(line) || tab == WideString::npos) continue;
        for (const WCHAR unit : WideStringView(line).substr(tab)) {
            if (unit >= 0x80) ++beyond;
            if ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'z') ++latin;
        }
    }
    return beyond > latin;
}

void CheckLatin1(const TableText& table, const std::string& mending, Complaints& complaints) {
    if (!IsHardlyLatin(table)) return;
    for (size_t index = 0; index < table.lines.size(); ++index) {
        const WideString& line = table.lines[index];
        if (IsAscii(line) || IsTableComment(line)) continue;
        return Complain(complaints, index + 1,
                        "the file has no byte order mark, and the library would show " +
                            Quoted(FirstWordBeyondAscii(line)) + " as in Latin-1: save it as UTF-8, then" +
                            mending.substr(1));
    }
}

class RecordCheck {
public:
    explicit RecordCheck(Complaints& told) : complaints(told) {}

    void Take(WideStringView content) {
        ++line;
        if (IsTableComment(content)) return;
        const std::optional<TableRecord> record = ReadTableRecord(content);
        if (!record) return;
        if (!AreQuotesKept(record->rawText))
            Complain(complaints, line,
                     "the library drops a double quote and does not find the text; write it as " +
                         FieldFor(MeantText(record->rawText)));
        // Behind a field in quotes a TAB makes them look dropped.
        if (record->rawTranslation.find(u'\t') != WideStringView::npos)
            Complain(complaints, line,
                     "a second TAB, which the user would see with all behind it; delete both, or write \\t");
        else if (!AreQuotesKept(record->rawTranslation))
            Complain(complaints, line, AboutQuotes(record->rawTranslation));
        TellOther(*record);
    }

private:
    static std::string AboutQuotes(WideStringView rawTranslation) {
        if (IsLeftOpen(rawTranslation))
            return "no double quote closes the one before the translation; write it in one line, with "
                   "\\n for each line break";
        return "the library drops a double quote of the translation; write it as " +
               FieldFor(MeantText(rawTranslation));
    }

    void TellOther(const TableRecord& record) {
        const WideString text = MeantText(record.rawText);
        const WideString translation = MeantText(record.rawTranslation);
        if (translation.empty()) return;
        const auto [found, isNew] = seen.try_emplace(text, Seen{translation, line});
        if (isNew) return;
        if (found->second.translation != translation)
            Complain(complaints, line,
                     Quoted(text) + " is translated as " + Quoted(found->second.translation) + " in line " +
                         std::to_string(found->second.line) +
                         ", which this line replaces; remove one of them");
        found->second = {translation, line};
    }

    struct Seen {
        WideString translation;
        size_t line;
    };

    Complaints& complaints;
    std::map<WideString, Seen> seen;
    size_t line = 0;
};

}  // namespace

void CheckRecords(const TableText& table, Complaints& complaints) {
    RecordCheck check(complaints);
    for (const WideString& line : table.lines)
        check.Take(line);
}

std::map<size_t, WideString> FindEmptyTranslations(const TableText& table) {
    std::map<size_t, WideString> lines;
    for (size_t index = 0; index < table.lines.size(); ++index) {
        const WideStringView line = table.lines[index];
        if (IsTableComment(line) || line.find(u'\t') == WideStringView::npos) continue;
        // The library ignores the line, when it ends with LF alone, or shows nothing.
        const std::optional<TableRecord> record = ReadTableRecord(line);
        const WideStringView raw = line.substr(0, line.find(u'\t'));
        if (!record || record->translation.empty()) lines.emplace(index + 1, MeantText(raw));
    }
    return lines;
}

void CheckTableEncoding(const TableText& table, Complaints& complaints) {
    if (table.encoding != TableEncoding::Latin1) return;
    for (size_t index = 0; index < table.lines.size(); ++index) {
        const WideString& line = table.lines[index];
        if (IsAscii(line) || IsTableComment(line)) continue;
        return Complain(complaints, index + 1,
                        "the file is not UTF-8, and " + Quoted(FirstWordBeyondAscii(line)) +
                            " a guess: save it as UTF-8");
    }
}

void CheckEncoding(const std::string& path, std::string_view bytes, const TableText& table,
                   Complaints& complaints) {
    const std::string mending = "; mend it with: tools/translation convert " + ShellWord(path) + " NEW.txt";
    switch (table.encoding) {
        case TableEncoding::Utf8:
            return CheckUtf8(bytes, table, mending, complaints);
        case TableEncoding::Utf16WithoutMark:
            return Complain(
                complaints, 1,
                "the file is UTF-16 without a byte order mark, which the library takes for single "
                "bytes" +
                    mending);
        case TableEncoding::Utf16BigEndian:
            return Complain(
                complaints, 1,
                "the bytes of the UTF-16 characters are in the wrong order (big-endian), in which the "
                "library finds no text" +
                    mending);
        case TableEncoding::Latin1:
            return CheckLatin1(table, mending, complaints);
        case TableEncoding::Utf16:
        case TableEncoding::Unknown:
            return;
    }
}
