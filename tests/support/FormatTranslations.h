/* Translations of the text that the library fills in, careless and hostile ones among them, and what the user
 * reads. A ring's test shows each of them with its finished library. */
#pragma once

#include <cstdint>

/* The text, and the code that the service answers. Whoever takes it for an address ends the program. */
inline constexpr char formatText[] = "The server returned error code %d";
inline constexpr int32_t formatCode = 0x41414141;

struct FormatTranslation {
    const char* translation;
    const char* shown;
};

inline constexpr char formatInEnglish[] = "The server returned error code 1094795585";

inline constexpr FormatTranslation formatTranslations[] = {
    // Another type than the code's.
    {"%s", formatInEnglish},
    {"%S", formatInEnglish},
    {"%hs", formatInEnglish},
    {"%ls", formatInEnglish},
    {"%ws", formatInEnglish},
    {"Erreur %I64d", formatInEnglish},
    {"Erreur %lld", formatInEnglish},
    {"%f", formatInEnglish},
    // Written through.
    {"%n", formatInEnglish},
    {"Erreur %d%hn", formatInEnglish},
    // More arguments than there are.
    {"%*.*d", formatInEnglish},
    {"%d %d %d %d", formatInEnglish},
    {"Erreur %d dans %s", formatInEnglish},
    // More room than there is.
    {"%.1000000d", formatInEnglish},
    {"%2147483647d", formatInEnglish},
    // More than a runtime has room for, though the text has.
    {"Erreur %.900d", formatInEnglish},
    {"Erreur %#0900x", formatInEnglish},
    // None that the runtime knows.
    {"%1$s", formatInEnglish},
    {"%1$d", formatInEnglish},
    {"Erreur %d, 100 %", formatInEnglish},
    {"%", formatInEnglish},
    // Harmless.
    {"Erreur %d !", "Erreur 1094795585 !"},
    {"Erreur 0x%x", "Erreur 0x41414141"},
    {"Erreur %010X, 100 %%", "Erreur 0041414141, 100 %"},
    {"Erreur %-12d!", "Erreur 1094795585  !"},
    {"Erreur %+.12d", "Erreur +001094795585"},
    {"%%n", "%n"},
    {"Erreur du serveur", "Erreur du serveur"},
};
