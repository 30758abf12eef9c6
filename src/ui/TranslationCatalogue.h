/* The lookup through which every text goes before it is shown. Texts are English in the code; a text file
 * beside the library holds their translations. Texts that were not found are collected, and written out when
 * the catalogue is destroyed, if the user has made a folder for them. Every operation throws std::bad_alloc;
 * the records of a language file that were read before stay loaded. */
#pragma once

#include "ui/TranslationFile.h"

class TranslationCatalogue {
public:
    TranslationCatalogue() = default;
    TranslationCatalogue(const TranslationCatalogue&) = delete;
    TranslationCatalogue& operator=(const TranslationCatalogue&) = delete;

    /* Writes the untranslated texts. */
    ~TranslationCatalogue();

    /* Keeps `module`, the library's own, and selects the language that the user's setting "Language" names.
     * Whether one was selected; without that setting none is. */
    bool InitTranslation(HMODULE module);

    /* Loads the file of the language `name` and makes this the current language: true. When it is the current
     * one already, or there is no file for it, or no record in the file: false, and the current language
     * stays (but opening a file has emptied the table). "English" needs no file: without one everything is
     * shown untranslated. */
    bool SetLanguage(const WideString& name);

    /* As above, for the library file at `modulePath` (empty when it is not known). */
    bool SetLanguage(const WideString& name, const WideString& modulePath);

    /* Replaces the table by the records of the file at `path`, and forgets the untranslated texts. Whether
     * the file held any record. One that cannot be opened changes nothing. */
    bool LoadTranslationFile(const WideString& path);

    /* The text to show for `text`: its translation, or that of `text` without its ampersands, full stops,
     * colons and double quotes, or `text` itself, which then counts as untranslated. The result belongs to
     * the catalogue and stays valid until the language changes, a language file is opened, or the library is
     * unloaded. */
    const WideString& Translate(const WideString& text);

    /* As above; null is an empty text. Narrow text should be ASCII: a byte is widened with its sign. */
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
    /* The translation of `text` as it is, or of what `text` is without its ornaments, if it has any; Find
     * tries one after the other. Null: there is none. `text` can be viewed as a key. */
    [[nodiscard]] const WideString* FindExactly(WideStringView text) const;
    [[nodiscard]] const WideString* FindWithoutOrnaments(WideStringView text) const;
    [[nodiscard]] const WideString* Find(WideStringView text) const;

    const WideString& TranslateCopy(WideStringView text);
    [[nodiscard]] WideString ModulePath() const;
    [[nodiscard]] bool IsHarvestDue(const WideString& folder) const;
    [[nodiscard]] bool WriteHarvest(const WideString& folder, const WideString& modulePath) const;
    void Clear();

    WideString currentLanguage;
    TranslationTable table;
    std::set<WideString> untranslated;
    HMODULE module = nullptr;
};

/* The catalogue of all the library's texts; it lasts from the library's load to its unload. */
extern TranslationCatalogue translationCatalogue;
