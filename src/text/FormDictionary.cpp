#include "text/FormDictionary.h"

#include "base/OwnedFile.h"
#include "base/Trace.h"
#include "text/FormatString.h"
#include "text/HexDigits.h"
#include "text/LineReader.h"
#include "text/UrlEncoding.h"
#include "text/Whitespace.h"

#include <algorithm>

namespace {

/* Units on their way into a file, each as its low byte. */
class ByteWriter {
public:
    explicit ByteWriter(FILE* opened) : file(opened) {}
    ByteWriter(const ByteWriter&) = delete;
    ByteWriter& operator=(const ByteWriter&) = delete;
    ~ByteWriter() = default;

    void Put(WCHAR unit) {
        if (count == sizeof bytes) Flush();
        bytes[count++] = static_cast<uint8_t>(unit & 0xFF);
    }

    /* As Put; leaves out a unit whose byte would be NUL, which the reader of the file skips. */
    void PutUnlessNul(WCHAR unit) {
        if ((unit & 0xFF) != 0) Put(unit);
    }

    /* Whether everything reached the file. A full disk shows only when the bytes are really written. */
    bool Finish() {
        Flush();
        return fflush(file) == 0 && !ferror(file);
    }

private:
    void Flush() {
        fwrite(bytes, 1, count, file);
        count = 0;
    }

    FILE* file;
    size_t count = 0;
    uint8_t bytes[256];
};

/* The byte at which reading a text file ends. */
constexpr WCHAR endOfText = 0x1A;

/* What LineReader makes of `unit` in a key once it is in a file; 0: it skips the byte. The end of a line
 * parts pairs as & does. */
WCHAR UnitReadFor(WCHAR unit) {
    const auto byte = static_cast<int8_t>(unit);
    if (byte == '\r') return 0;
    if (byte == '\n' || byte == -1) return TEXT('&');
    return static_cast<WCHAR>(byte);
}

/* Whether reading gives the unit back wherever it is in a key, or takes the whole line for a comment. */
bool IsPlain(WCHAR unit) {
    return unit > TEXT(' ') && unit < 0x7F && unit != TEXT('&') && unit != TEXT('=');
}

/* Whether a line with that key neither ends a file nor holds a pair of another key with a value. */
bool IsHarmless(const WideString& key, const FormDictionary& dictionary) {
    if (std::ranges::all_of(key, [](WCHAR unit) { return IsPlain(unit); })) return true;
    WideString name;  // the key of the pair at hand
    bool isNamed = false;
    for (size_t at = 0; at <= key.size(); ++at) {
        const WCHAR unit = at < key.size() ? UnitReadFor(key[at]) : TEXT('=');
        if (unit == endOfText) return false;
        if (unit == TEXT('&')) {
            name.clear();
            isNamed = false;
        } else if (unit == TEXT('=') && !isNamed) {
            isNamed = true;
            if (TrimWhitespace(name) != key && dictionary.HasValue(name)) return false;
        } else if (unit != 0) {
            name += unit;
        }
    }
    return true;
}

void PutEntry(ByteWriter& writer, WideStringView key, WideStringView value) {
    for (const WCHAR unit : key)
        writer.PutUnlessNul(unit);
    writer.Put(TEXT('='));
    PutUrlEncoded(value, [&](WCHAR unit) {
        // Encoding leaves U+0000 as it is, but a file can hold it only as an escape.
        if (unit == 0) {
            for (const WCHAR escaped : WideStringView(TEXT("%00")))
                writer.Put(escaped);
        } else {
            writer.PutUnlessNul(unit);
        }
    });
    writer.Put(TEXT('\n'));
}

}  // namespace

void FormDictionary::ParseFormText(WideStringView text) {
    for (;;) {
        const size_t end = text.find(TEXT('&'));
        ParsePair(text.substr(0, end));
        if (end == WideStringView::npos) return;
        text.remove_prefix(end + 1);
    }
}

void FormDictionary::ParsePair(WideStringView pair) {
    const size_t equals = pair.find(TEXT('='));
    if (equals == WideStringView::npos) return;
    const WideStringView key = WithoutOuterWhitespace(pair.substr(0, equals));
    const WideStringView value = WithoutOuterWhitespace(pair.substr(equals + 1));
    if (key.empty() || value.empty()) return;
    // Decoding comes last: a space that was encoded is part of the value. A file that was saved is in order,
    // so that each key belongs at the end.
    entries.insert_or_assign(entries.end(), WideString(key), UrlDecode(value));
}

bool FormDictionary::LoadFromFile(const WideString& path) {
    const FileHandle file(_wfopen(path.c_str(), TEXT("r")));
    if constexpr (isTraced) TraceCall(TEXT("read file"), path.c_str(), file ? 1 : 0, bool{file});
    if (!file) return false;
    LineReader reader(file.Get());
    for (WideString line; reader.ReadContentLine(line);)
        ParseFormText(line);
    return true;
}

bool FormDictionary::SaveToFile(const WideString& path) const {
    const FileHandle file(_wfopen(path.c_str(), TEXT("w")));
    if constexpr (isTraced) TraceCall(TEXT("write file"), path.c_str(), file ? 1 : 0, bool{file});
    if (!file) return false;
    ByteWriter writer(file.Get());
    for (const auto& [key, value] : entries) {
        const bool isWritten = !key.Text().empty() && !value.empty() && IsHarmless(key.Text(), *this);
        if (isWritten) PutEntry(writer, key.Text(), value);
    }
    return writer.Finish();
}

WideString FormDictionary::GetString(const WideString& key, const WideString& fallback) const {
    const WideString* value = Find(key);
    return value ? *value : fallback;
}

int32_t FormDictionary::GetInt(const WideString& key, int32_t fallback) const {
    const WideString* value = Find(key);
    int number = 0;
    if (!value || swscanf(value->c_str(), TEXT("%i"), &number) != 1) return fallback;
    return number;
}

int32_t FormDictionary::GetHexBytes(const WideString& key, uint8_t* bytes, int32_t capacity) const {
    const WideString* value = Find(key);
    if (!value) return 0;
    const size_t count = std::min(value->size() / 2, static_cast<size_t>(std::max(capacity, int32_t{0})));
    for (size_t i = 0; i < count; ++i) {
        const int high = std::max(HexDigitValue((*value)[2 * i]), 0);
        const int low = std::max(HexDigitValue((*value)[2 * i + 1]), 0);
        bytes[i] = static_cast<uint8_t>(16 * high + low);
    }
    return static_cast<int32_t>(count);
}

bool FormDictionary::HasValue(const WideString& key) const {
    const WideString* value = Find(key);
    return value && !value->empty();
}

void FormDictionary::SetString(const WideString& key, const WideString& value) {
    entries[key] = value;
}

void FormDictionary::SetHex32(const WideString& key, uint32_t number) {
    entries[key] = FormatString(TEXT("0x%x"), static_cast<unsigned>(number));
}

void FormDictionary::SetHexBytes(const WideString& key, const uint8_t* bytes, int32_t count) {
    WideString& value = entries[key];
    value.clear();
    for (int32_t i = 0; i < count; ++i)
        AppendHexByte(value, bytes[i]);
}

const WideString* FormDictionary::Find(const WideString& key) const {
    const auto entry = entries.find(TextKeyView(key));
    return entry == entries.end() ? nullptr : &entry->second;
}
