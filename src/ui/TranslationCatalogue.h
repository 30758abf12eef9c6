/* The lookup through which every text goes before it is shown. Texts are English in the code; a text file
 * beside the library holds their translations. Texts that were not found are collected, and written out when
 * the catalogue is destroyed, if the user has made a folder for them. Every operation throws std::bad_alloc;
 * a language file is then loaded up to there. */
#pragma once

#include "ui/TranslationFile.h"

class TranslationCatalogue {
public:
    TranslationCatalogue() = default;
    TranslationCatalogue(const TranslationCatalogue&) = delete;
    TranslationCatalogue& operator=(const TranslationCatalogue&) = delete;

    /* Writes the untranslated texts. */
    ~TranslationCatalogue();

    /* Keeps `module`, the library's own, and selects the language of the user's setting "Language". Whether
     * one was selected: without that setting none is. */
    bool InitTranslation(HMODULE module);

    /* Loads the file of the language `name` and makes it the current one: true. The language that is current
     * already, or one without a file or without a record in it: false, and the name stays (a file that opened
     * has emptied the table all the same). "English" needs no file: without one everything is shown
     * untranslated. */
    bool SetLanguage(const WideString& name);

    /* As above, for the library file at `modulePath` (empty when it is not known). */
    bool SetLanguage(const WideString& name, const WideString& modulePath);

    /* Replaces the table by the records of the file at `path`, and forgets the untranslated texts. Whether
     * the table holds anything afterwards. A file that cannot be opened changes nothing. */
    bool LoadTranslationFile(const WideString& path);

    /* The text to show for `text`: its translation, or that of `text` without its ampersands, full stops,
     * colons and double quotes, or `text` itself, which then counts as untranslated. The result is the
     * catalogue's own and stays valid until the language changes, a language file is opened, or the library
     * is unloaded. */
    const WideString& Translate(const WideString& text);

    /* As above. Null is an empty text; of narrow text only 7-bit characters are meaningful (a byte is widened
     * with its sign). */
    const WideString& Translate(const char* text);
    const WideString& Translate(const WCHAR* text);

    /* Writes the untranslated texts to the folder "ZRTranslation" in the user's documents, into a file that
     * is named after the library's, and empties the catalogue. Without such a folder, or without a text,
     * nothing is written; when the file cannot be opened the catalogue stays as it is. */
    void WriteUntranslatedFile();

    /* As above, for the library file at `modulePath` (empty when it is not known) and the user's documents in
     * `personalFolder`. */
    void WriteUntranslatedFile(const WideString& modulePath, const WideString& personalFolder);

    /* Name of the language whose file is loaded; empty at first. */
    [[nodiscard]] const WideString& CurrentLanguage() const { return currentLanguage; }

    /* The texts that could not be translated since the last load. */
    [[nodiscard]] const std::set<WideString>& UntranslatedTexts() const { return untranslated; }

private:
    [[nodiscard]] WideString ModulePath() const;
    void Clear();

    WideString currentLanguage;
    TranslationTable table;
    std::set<WideString> untranslated;
    HMODULE module = nullptr;
};

/* The catalogue of all texts, from load to unload. */
extern TranslationCatalogue translationCatalogue;
