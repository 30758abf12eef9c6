/* What people type as a user ID or an e-mail address, and when two of them are the same. */
#pragma once

#include <string>
#include <string_view>

/* The text without the spaces, tabs and line ends before and after it, which a handheld's keyboard adds. */
std::u16string_view Trimmed(std::u16string_view text);

/* The text with every letter of every script in one case: texts that differ only in that become the same.
 * Accents and whether they are composed still count. Throws std::runtime_error when the system lacks its
 * table of letters, the locale C.UTF-8. */
std::u16string CaseFolded(std::u16string_view text);

/* Whether mail could be sent there: up to 64 characters, one "@", and the name of a host that has a dot in
 * it; 254 units at most. Letters of every script are taken; quoted names and numeric addresses are not. */
bool IsEmailAddress(std::u16string_view text);
