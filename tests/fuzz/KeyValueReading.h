/* Key/value files as docs/key-value-files.md tells them: what targets compare the library's reading with. */
#pragma once

#include <map>
#include <string>
#include <string_view>

using KeyValuePairs = std::map<std::u16string, std::u16string>;

/* Takes the pairs of a file of these bytes. */
void ReadKeyValueFile(std::string_view bytes, KeyValuePairs& pairs);

/* Takes the pairs of form text. */
void ReadFormText(std::u16string_view text, KeyValuePairs& pairs);

/* Whether the page promises that a key comes back from a file. */
bool SurvivesAsKey(std::u16string_view key);

/* What comes back from a file of a value. */
std::u16string SurvivingValue(std::u16string_view value);
