/* Form text, and what is encoded for it. The input is UTF-16 units. */
#include <cstring>

#include "FuzzInput.h"
#include "KeyValueReading.h"
#include "text/FormDictionary.h"
#include "text/UrlEncoding.h"
#include "text/Whitespace.h"

namespace {

const WideString key = TEXT("key");

bool IsLetterOrDigit(WCHAR unit) {
    return unit < 0x80 && isalnum(unit) != 0;
}

/* Whether encoding leaves the unit as it is. */
bool Passes(WCHAR unit) {
    const WCHAR low = unit & 0xFFU;
    return IsLetterOrDigit(unit) || low == 0 ||
           WideStringView(TEXT("$-_.!*'()")).find(low) != WideStringView::npos;
}

void RequirePairs(const WideString& text) {
    KeyValuePairs pairs;
    ReadFormText(text, pairs);
    FormDictionary dictionary;
    dictionary.ParseFormText(text);
    for (const auto& [name, value] : pairs)
        Require(dictionary.GetString(name, TEXT("absent")) == value,
                "pairs are read as they stand in form text");
}

void RequireEncoding(const WideString& text) {
    const WideString encoded = UrlEncode(text);
    WideString wanted;
    WideString decoded;
    for (const WCHAR unit : text) {
        const WCHAR low = unit & 0xFFU;
        decoded += Passes(unit) ? unit : low;
        if (Passes(unit)) {
            wanted += unit;
        } else if (unit == TEXT(' ')) {
            wanted += TEXT('+');
        } else {
            wanted += TEXT('%');
            wanted += TEXT("0123456789abcdef")[low / 16];
            wanted += TEXT("0123456789abcdef")[low % 16];
        }
    }
    Require(encoded == wanted, "units are encoded one by one");
    Require(UrlDecode(encoded) == decoded, "what is encoded is decoded");
    const WideString any = UrlDecode(text);
    Require(any.size() <= text.size(), "decoding never makes text longer");
    Require(text.find_first_of(TEXT("+%")) != WideString::npos || any == text,
            "plain text is decoded as it is");
}

void RequireTrimming(const WideString& text) {
    const WideStringView inner = WithoutOuterWhitespace(text);
    Require(inner.empty() || text.find(inner) != WideString::npos, "what is left of a text is part of it");
    Require(WithoutOuterWhitespace(inner) == inner, "nothing is left to be trimmed");
}

/* Numbers and bytes, whatever stands in their place. */
void RequireProperties(const WideString& text) {
    FormDictionary dictionary;
    dictionary.SetString(key, text);
    dictionary.GetInt(key, 0);
    const auto room = static_cast<int32_t>(text.size() / 3);
    std::vector<uint8_t> bytes(static_cast<size_t>(room));
    const int32_t taken = dictionary.GetHexBytes(key, bytes.data(), room);
    Require(taken == std::min(room, static_cast<int32_t>(text.size() / 2)),
            "there are as many bytes as pairs");

    dictionary.SetHexBytes(key, bytes.data(), taken);
    std::vector<uint8_t> again(bytes.size());
    Require(dictionary.GetHexBytes(key, again.data(), room) == taken, "bytes come back");
    Require(again == bytes, "bytes come back as they were");

    uint32_t number = 0;
    memcpy(&number, text.data(), std::min(sizeof number, text.size() * sizeof(WCHAR)));
    dictionary.SetHex32(key, number);
    Require(dictionary.GetInt(key, 1) == static_cast<int32_t>(number), "numbers come back");
}

class FormText final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        const WideString text = FuzzInput(bytes).TakeUnits(bytes.size());
        RequirePairs(text);
        RequireEncoding(text);
        RequireTrimming(text);
        RequireProperties(text);
    }
};

const bool isAdded = AddFuzzTarget<FormText>("FormText");

}  // namespace
