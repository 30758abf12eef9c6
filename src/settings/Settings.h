/* Reads the registry. No failure is reported: whatever goes wrong (no key, no value, too much data), the
 * result is the caller's default. Nothing is ever created or written. The type that a value was stored with
 * does not matter, only its bytes do. The functions that return text throw std::bad_alloc. */
#pragma once

#include "text/WideString.h"

/* The number held in a value of at most 4 bytes; bytes that a shorter one lacks count as 0. */
uint32_t ReadRegistryDword(HKEY root, const WCHAR* key, const WCHAR* name, uint32_t defaultValue);

/* The text of a value up to its first NUL, or to its end when it has none. At most 260 units: a longer one,
 * and one of 261 units without a NUL, gives the default. */
WideString ReadRegistryString(HKEY root, const WCHAR* key, const WCHAR* name, const WideString& defaultValue);

/* The text `name` of the user's settings. `section` has no effect: all settings are values of the product's
 * one key. */
WideString ReadSettingString(const WCHAR* section, const WCHAR* name, const WideString& defaultValue);
