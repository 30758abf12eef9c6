#include "text/FormDictionary.h"

#include "base/OwnedFile.h"
#include "text/FormatString.h"
#include "text/HexDigits.h"
#include "text/LineReader.h"
#include "text/UrlEncoding.h"
#include "text/Whitespace.h"

#include <algorithm>

namespace {

/* The low bytes of the units of `text`, without NUL: the runtime's wide output stops at a unit that it has no
 * byte for, and the reader of the file skips NUL bytes. U+0000 becomes `formOfNul`. */
WideString ByteForm(const WideString& text, const WCHAR* formOfNul) {
    WideString form;
    form.reserve(text.size());
    for (const WCHAR unit : text) {
        const auto lowByte = static_cast<WCHAR>(unit & 0xFF);
        if (unit == 0) {
            form += formOfNul;
        } else if (lowByte != 0) {
            form += lowByte;
        }
    }
    return form;
}

void WriteEntry(FILE* file, const WideString& key, const WideString& value) {
    // UrlEncode leaves U+0000 as it is, but a file can hold it only as an escape.
    fwprintf(file, TEXT("%s=%s\n"), ByteForm(key, TEXT("")).c_str(),
             ByteForm(UrlEncode(value), TEXT("%00")).c_str());
}

}  // namespace

void FormDictionary::ParseFormText(const WideString& text) {
    for (size_t begin = 0;;) {
        const size_t end = text.find('&', begin);
        if (end == WideString::npos) {
            ParsePair(text.substr(begin));
            return;
        }
        ParsePair(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

void FormDictionary::ParsePair(const WideString& pair) {
    const size_t equals = pair.find('=');
    if (equals == WideString::npos) return;
    WideString key = pair.substr(0, equals);
    WideString value = pair.substr(equals + 1);
    TrimWhitespace(key);
    TrimWhitespace(value);
    if (key.empty() || value.empty()) return;
    // Decoding comes last: a space that was encoded is part of the value.
    entries[key] = UrlDecode(value);
}

bool FormDictionary::LoadFromFile(const WideString& path) {
    const FileHandle file(_wfopen(path.c_str(), TEXT("r")));
    if (!file) return false;
    for (WideString line; ReadContentLine(file.Get(), line);)
        ParseFormText(line);
    return true;
}

bool FormDictionary::SaveToFile(const WideString& path) const {
    const FileHandle file(_wfopen(path.c_str(), TEXT("w")));
    if (!file) return false;
    for (const auto& [key, value] : entries) {
        if (!key.empty() && !value.empty()) WriteEntry(file.Get(), key, value);
    }
    // A full disk shows only when the buffered bytes are really written.
    return fflush(file.Get()) == 0 && !ferror(file.Get());
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
    if (!value || capacity < 1) return 0;
    const size_t count = std::min(value->size() / 2, static_cast<size_t>(capacity));
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
    const auto entry = entries.find(key);
    return entry == entries.end() ? nullptr : &entry->second;
}
