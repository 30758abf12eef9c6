/* What the library does with texts and files, as often as it is told. Each function says whether the results
 * were right. */
#pragma once

#include <cstdint>

namespace work {

/* Loads a key/value file of so many lines. */
bool LoadDictionary(int32_t lines);

/* Loads it and saves it again. */
bool LoadAndSaveDictionary(int32_t lines);

/* Loads a language file of so many texts. */
bool LoadCatalogue(int32_t texts);

/* Loads one of 2000 texts, and looks so many up: those that it has, those that it has but for their marks,
 * and those that it does not have. */
bool LookUpExact(int32_t times);
bool LookUpExactByPointer(int32_t times);
bool LookUpStripped(int32_t times);
bool LookUpMissing(int32_t times);

/* Encodes or decodes a text of 24 or 4096 units so many times. */
bool EncodeShort(int32_t times);
bool EncodeLong(int32_t times);
bool DecodeShort(int32_t times);
bool DecodeLong(int32_t times);

}  // namespace work
