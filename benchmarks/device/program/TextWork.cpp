#include "TextWork.h"

#include "Platform.h"

#include <vector>

#include "text/FormDictionary.h"
#include "text/UrlEncoding.h"
#include "ui/TranslationCatalogue.h"

namespace {

constexpr WCHAR dictionaryFile[] = TEXT("\\Storage\\dictionary.txt");
constexpr WCHAR savedFile[] = TEXT("\\Storage\\saved.txt");
constexpr WCHAR catalogueFile[] = TEXT("\\Storage\\catalogue.txt");
constexpr int32_t texts = 2000;
// As many different texts are looked up in turn.
constexpr int32_t variety = 100;

/* The number in 7 digits, as the runner writes it. */
WideString Digits(int32_t number) {
    WideString text(7, TEXT('0'));
    for (size_t i = 7; i-- > 0; number /= 10)
        text[i] = static_cast<WCHAR>('0' + number % 10);
    return text;
}

bool LoadDictionaryInto(FormDictionary& dictionary, int32_t lines) {
    return dictionary.LoadFromFile(dictionaryFile) && dictionary.GetString(TEXT("Key") + Digits(lines - 1)) ==
                                                          TEXT("The value & number ") + Digits(lines - 1);
}

bool LoadInto(TranslationCatalogue& catalogue, int32_t count) {
    return catalogue.LoadTranslationFile(catalogueFile) &&
           catalogue.Translate(TEXT("Text number ") + Digits(count - 1) + TEXT(" of a menu")) ==
               TEXT("Texte de menu ") + Digits(count - 1);
}

/* Looks texts up by `look`, which tells the length of what it has found; `make` makes them of their
 * numbers. */
template <class Make, class Look>
bool LookUp(int32_t times, size_t lengthOfResults, Make make, Look look) {
    TranslationCatalogue catalogue;
    if (!LoadInto(catalogue, texts)) return false;
    std::vector<WideString> keys;
    keys.reserve(variety);
    for (int32_t i = 0; i < variety; ++i)
        keys.push_back(make(Digits(i * (texts / variety))));
    // Texts that are not found are kept, once each.
    for (const WideString& key : keys)
        look(catalogue, key);
    size_t length = 0;
    for (int32_t i = 0, key = 0; i < times; ++i) {
        length += look(catalogue, keys[static_cast<size_t>(key)]);
        if (++key == variety) key = 0;
    }
    return length == lengthOfResults * static_cast<size_t>(times);
}

size_t ByText(TranslationCatalogue& catalogue, const WideString& key) {
    return catalogue.Translate(key).size();
}

size_t ByPointer(TranslationCatalogue& catalogue, const WideString& key) {
    return catalogue.Translate(key.c_str()).size();
}

WideString Known(const WideString& digits) {
    return TEXT("Text number ") + digits + TEXT(" of a menu");
}

constexpr size_t lengthOfTranslations = 21;

WideString Repeated(const WideString& text, size_t length) {
    WideString repeated;
    while (repeated.size() < length)
        repeated += text;
    repeated.resize(length);
    return repeated;
}

template <class Code>
bool Repeat(int32_t times, const WideString& text, const WideString& expected, Code code) {
    for (int32_t i = 0; i < times; ++i) {
        if (code(text).size() != expected.size()) return false;
    }
    return code(text) == expected;
}

// 24 units; of the encoded form each 24 end with a whole character, too.
constexpr WCHAR plain[] = TEXT("jo.bloggs & co, 50% off!");
constexpr WCHAR encoded[] = TEXT("jo.bloggs+%26+co%2c+50%25+off!");
constexpr size_t shortOnes = 1;
constexpr size_t longOnes = 4096 / 24;

bool Encode(int32_t times, size_t count) {
    return Repeat(times, Repeated(plain, 24 * count), Repeated(encoded, 30 * count),
                  [](const WideString& text) { return UrlEncode(text); });
}

bool Decode(int32_t times, size_t count) {
    return Repeat(times, Repeated(encoded, 30 * count), Repeated(plain, 24 * count),
                  [](const WideString& text) { return UrlDecode(text); });
}

}  // namespace

namespace work {

bool LoadDictionary(int32_t lines) {
    FormDictionary dictionary;
    return LoadDictionaryInto(dictionary, lines);
}

bool LoadAndSaveDictionary(int32_t lines) {
    FormDictionary dictionary;
    return LoadDictionaryInto(dictionary, lines) && dictionary.SaveToFile(savedFile);
}

bool LoadCatalogue(int32_t count) {
    TranslationCatalogue catalogue;
    return LoadInto(catalogue, count);
}

bool LookUpExact(int32_t times) {
    return LookUp(times, lengthOfTranslations, Known, ByText);
}

bool LookUpExactByPointer(int32_t times) {
    return LookUp(times, lengthOfTranslations, Known, ByPointer);
}

bool LookUpStripped(int32_t times) {
    const auto marked = [](const WideString& digits) { return TEXT("&") + Known(digits) + TEXT("..."); };
    return LookUp(times, lengthOfTranslations, marked, ByText);
}

bool LookUpMissing(int32_t times) {
    const auto unknown = [](const WideString& digits) { return Known(digits) + TEXT(" bar"); };
    return LookUp(times, unknown(Digits(0)).size(), unknown, ByText);
}

bool EncodeShort(int32_t times) {
    return Encode(times, shortOnes);
}

bool EncodeLong(int32_t times) {
    return Encode(times, longOnes);
}

bool DecodeShort(int32_t times) {
    return Decode(times, shortOnes);
}

bool DecodeLong(int32_t times) {
    return Decode(times, longOnes);
}

}  // namespace work
