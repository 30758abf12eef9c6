#include "ui/TranslationFile.h"

#include <algorithm>

namespace {

constexpr WCHAR byteOrderMark = 0xFEFF;

/* Reads the lines of a language file: units of 16 bits after a byte order mark, otherwise of 8 bits. */
class TranslationLines {
public:
    explicit TranslationLines(FILE* opened) : file(opened) {
        WCHAR first = 0;
        wide = fread(&first, sizeof first, 1, file) == 1 && first == byteOrderMark;
        // Not rewind, which the device does not have. Seeking clears the end-of-file indicator as well.
        if (!wide) fseek(file, 0, SEEK_SET);
    }

    /* Reads the next line without its LF into `line`. False: the file has ended. */
    bool Read(WideString& line) {
        line.clear();
        while (!unread.empty() || ReadUnits()) {
            const size_t end = unread.find(TEXT('\n'));
            line.append(unread.substr(0, end));
            if (end != WideStringView::npos) {
                unread.remove_prefix(end + 1);
                return true;
            }
            unread = {};
        }
        return !line.empty();
    }

private:
    /* A last byte that is half a unit is left out. */
    bool ReadUnits() {
        const size_t count = wide ? fread(units, sizeof units[0], mostUnits, file) : ReadNarrowUnits();
        unread = WideStringView(units, count);
        return count > 0;
    }

    size_t ReadNarrowUnits() {
        uint8_t bytes[mostUnits];
        const size_t count = fread(bytes, 1, sizeof bytes, file);
        std::copy(bytes, bytes + count, units);
        return count;
    }

    static constexpr size_t mostUnits = 256;

    FILE* file;
    bool wide;
    WCHAR units[mostUnits];
    WideStringView unread; /* what of `units` belongs to the lines to come */
};

/* What a backslash and `unit` stand for; 0: for themselves. */
WCHAR MeaningOfEscape(WCHAR unit) {
    switch (unit) {
        case TEXT('t'):
            return TEXT('\t');
        case TEXT('n'):
            return TEXT('\n');
        case TEXT('"'):
        case TEXT('\\'):
            return unit;
        default:
            return 0;
    }
}

WideString EscapeTranslationText(WideStringView text) {
    WideString escaped;
    for (const WCHAR unit : text) {
        if (unit == TEXT('\t'))
            escaped += TEXT("\\t");
        else if (unit == TEXT('\n'))
            escaped += TEXT("\\n");
        else
            escaped += unit;
    }
    return escaped;
}

void WriteUnits(FILE* file, WideStringView units) {
    fwrite(units.data(), sizeof units[0], units.size(), file);
}

void AddRecord(WideStringView line, TranslationTable& table) {
    // A TAB without a key begins no record.
    while (!line.empty() && line.front() == TEXT('\t'))
        line.remove_prefix(1);
    const size_t tab = line.find(TEXT('\t'));
    if (tab == WideStringView::npos || tab + 1 == line.size()) return;
    table[UnescapeTranslationText(line.substr(0, tab))] = UnescapeTranslationText(line.substr(tab + 1));
}

/* Whether `unit` may stand for something else. */
bool IsMark(WCHAR unit) {
    return unit == TEXT('\r') || unit == TEXT('"') || unit == TEXT('\\');
}

}  // namespace

WideString UnescapeTranslationText(WideStringView text) {
    // Most texts stand for themselves, and none is shorter than what it stands for.
    WideString plain(text);
    size_t length = 0;
    while (length < text.size() && !IsMark(text[length]))
        ++length;
    for (size_t at = length; at < text.size(); ++at) {
        const WCHAR unit = text[at];
        if (unit == TEXT('\r')) continue;
        const bool last = at + 1 == text.size();
        if (unit == TEXT('"')) {
            if (!last && text[at + 1] == TEXT('"')) plain[length++] = text[++at];
        } else if (unit == TEXT('\\') && !last) {
            const WCHAR next = text[++at];
            const WCHAR meaning = MeaningOfEscape(next);
            if (meaning == 0) plain[length++] = unit;
            plain[length++] = meaning == 0 ? next : meaning;
        } else {
            plain[length++] = unit;
        }
    }
    plain.erase(length);
    return plain;
}

void ReadTranslations(FILE* file, TranslationTable& table) {
    TranslationLines lines(file);
    for (WideString line; lines.Read(line);)
        AddRecord(line, table);
}

void WriteUntranslatedTexts(FILE* file, const std::set<WideString>& texts) {
    WriteUnits(file, WideStringView(&byteOrderMark, 1));
    for (const WideString& text : texts) {
        WriteUnits(file, EscapeTranslationText(text));
        WriteUnits(file, TEXT("\tXXXX\r\n"));
    }
}
