/* Dictionaries with little in them, and what they hold. */
#pragma once

#include "text/FormDictionary.h"

#include <gtest/gtest.h>

inline const WideString absent = TEXT("<absent>");

inline WideString Unit(unsigned code) {
    return WideString(1, static_cast<WCHAR>(code));
}

/* The value of `key`, or a text that no test stores. */
inline WideString ValueOf(const FormDictionary& dictionary, const WideString& key) {
    return dictionary.GetString(key, absent);
}

inline FormDictionary Parsed(const WideString& text) {
    FormDictionary dictionary;
    dictionary.ParseFormText(text);
    return dictionary;
}

inline FormDictionary With(const WideString& value) {
    FormDictionary dictionary;
    dictionary.SetString(TEXT("key"), value);
    return dictionary;
}

inline int32_t IntOf(const WideString& value) {
    return With(value).GetInt(TEXT("key"), -77);
}
