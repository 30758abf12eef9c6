/* A table of wide keys and values, and its text form on disk: lines of key=value. */
#pragma once

#include "text/TextKey.h"
#include "text/WideString.h"

#include <map>

/* One value per key. Keys are compared by code unit: `UserID` and `userid` are two keys. Copies are deep.
 * Used by one thread at a time.
 *
 * Bad text is never an error: the operations that read a value take what they can of it. All throw
 * std::bad_alloc. */
class FormDictionary {
public:
    /* Takes the pairs of `text`, of the form key=value&key=value. Keys and values are trimmed
     * (TrimWhitespace), then values are decoded (UrlDecode); keys never are. A pair replaces an earlier value
     * of its key. A pair without =, with an empty key or with an empty value changes nothing, an earlier
     * value of the key included. */
    void ParseFormText(WideStringView text);

    /* Takes the pairs of every line with content (LineReader) of the text file at `path`. Keys that the file
     * does not hold keep their values. False when the file cannot be opened, with nothing changed. */
    bool LoadFromFile(const WideString& path);

    /* Writes the text file at `path` anew: a line for every entry with a non-empty key and value, in the
     * order of the keys, the value encoded (UrlEncode), the key as it is. Units become bytes by their low 8
     * bits; those whose low byte is 0 are left out, but a value's U+0000 is written as %00. Left out is also
     * an entry whose key would damage others: one with a unit whose low byte is 1A, which ends a text file,
     * and one whose line, as form text, holds a pair of another key that has a value here, as the lines of
     * `b&a` and of `a` with a space before it hold one of `a`. False when the file cannot be opened or
     * written; then it may be cut short or gone, and the old contents are lost.
     *
     * Loading the file restores every entry with a value whose key consists of units U+0001 to U+007F and
     * U+FF80 to U+FFFE, with no LF, CR, U+001A, = and &, no space or tab at its ends and no # at its start.
     * Its value comes back with the low byte of each unit; one above U+00FF whose low byte is 0 is lost, and
     * with the last of a value its entry. What other entries have left in the file is read under keys that
     * have no value here. */
    bool SaveToFile(const WideString& path) const;

    /* The value of `key`, or `fallback` when there is no such entry. An empty value is a value. */
    WideString GetString(const WideString& key, const WideString& fallback = WideString()) const;

    /* The number that the value begins with, as the runtime's %i reads it: white space, a sign, then
     * hexadecimal after 0x, octal after 0, else decimal; larger numbers wrap around. `fallback` when there is
     * no such entry or no number. */
    int32_t GetInt(const WideString& key, int32_t fallback) const;

    /* Fills `bytes` with the pairs of hexadecimal digits of the value, at most `capacity` of them, and
     * returns how many bytes were stored. Any other unit counts as the digit 0; an odd last one is ignored. 0
     * when there is no such entry or `capacity` is below 1. */
    int32_t GetHexBytes(const WideString& key, uint8_t* bytes, int32_t capacity) const;

    /* Whether there is a value of at least one unit. */
    bool HasValue(const WideString& key) const;

    /* Each of these stores a value under `key` and replaces an earlier one. */
    void SetString(const WideString& key, const WideString& value);

    /* The form is that of `0x1f`: lower-case digits without leading zeros. GetInt reads it. */
    void SetHex32(const WideString& key, uint32_t number);

    /* The form is two lower-case digits a byte. GetHexBytes reads it. A `count` below 1 stores an empty
     * value; `bytes` may then be null. */
    void SetHexBytes(const WideString& key, const uint8_t* bytes, int32_t count);

private:
    void ParsePair(WideStringView pair);

    /* The value of `key`, or null. */
    const WideString* Find(const WideString& key) const;

    std::map<TextKey, WideString, TextKeyOrder> entries;
};
