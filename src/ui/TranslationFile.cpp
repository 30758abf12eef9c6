#include "ui/TranslationFile.h"

#include <optional>

namespace {

constexpr WCHAR byteOrderMark = 0xFEFF;

/* Reads the units of a language file: of 16 bits after a byte order mark, otherwise of 8 bits. */
class UnitReader {
public:
    explicit UnitReader(FILE* opened) : file(opened) {
        if (ReadWide() == byteOrderMark) return;
        wide = false;
        // Not rewind, which the device does not have. Seeking clears the end-of-file indicator as well.
        fseek(file, 0, SEEK_SET);
    }

    /* The next unit; nothing at the end of the file. A last byte that is half a unit is left out. */
    std::optional<WCHAR> Next() { return wide ? ReadWide() : ReadNarrow(); }

private:
    std::optional<WCHAR> ReadNarrow() {
        const int byte = fgetc(file);
        if (byte == EOF) return std::nullopt;
        return static_cast<WCHAR>(byte);
    }

    std::optional<WCHAR> ReadWide() {
        const int low = fgetc(file);
        const int high = fgetc(file);
        if (low == EOF || high == EOF) return std::nullopt;
        return static_cast<WCHAR>(low | high << 8);
    }

    FILE* file;
    bool wide = true;
};

/* Reads the key of the next record. False: the file ended first. An empty key begins no record. */
bool ReadKey(UnitReader& reader, WideString& key) {
    key.clear();
    while (const auto unit = reader.Next()) {
        if (*unit == TEXT('\t')) return true;
        if (*unit == TEXT('\n')) {
            key.clear();
            return true;
        }
        key.push_back(*unit);
    }
    return false;
}

WideString ReadValue(UnitReader& reader) {
    WideString value;
    for (auto unit = reader.Next(); unit && *unit != TEXT('\n'); unit = reader.Next())
        value.push_back(*unit);
    return value;
}

/* Adds what a backslash and `unit` stand for: mostly the two themselves. */
void AppendEscape(WideString& text, WCHAR unit) {
    switch (unit) {
        case TEXT('t'):
            text += TEXT('\t');
            break;
        case TEXT('n'):
            text += TEXT('\n');
            break;
        case TEXT('"'):
        case TEXT('\\'):
            text += unit;
            break;
        default:
            text += TEXT('\\');
            text += unit;
            break;
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
    for (const WCHAR unit : units) {
        fputc(unit & 0xFF, file);
        fputc(unit >> 8, file);
    }
}

}  // namespace

WideString UnescapeTranslationText(WideStringView text) {
    WideString plain;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool last = i + 1 == text.size();
        switch (text[i]) {
            case TEXT('\r'):
                break;
            case TEXT('"'):
                if (!last && text[i + 1] == TEXT('"')) plain += text[++i];
                break;
            case TEXT('\\'):
                if (last)
                    plain += text[i];
                else
                    AppendEscape(plain, text[++i]);
                break;
            default:
                plain += text[i];
                break;
        }
    }
    return plain;
}

void ReadTranslations(FILE* file, TranslationTable& table) {
    UnitReader reader(file);
    WideString key;
    while (ReadKey(reader, key)) {
        if (key.empty()) continue;
        const WideString value = ReadValue(reader);
        if (!value.empty()) table[UnescapeTranslationText(key)] = UnescapeTranslationText(value);
    }
}

void WriteUntranslatedTexts(FILE* file, const std::set<WideString>& texts) {
    WriteUnits(file, WideStringView(&byteOrderMark, 1));
    for (const WideString& text : texts) {
        WriteUnits(file, EscapeTranslationText(text));
        WriteUnits(file, TEXT("\tXXXX\r\n"));
    }
}
