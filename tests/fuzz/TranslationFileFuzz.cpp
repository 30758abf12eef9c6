/* Language files: what is read of any bytes, what is looked up, and what is harvested and loaded again. The
 * first byte tells how many texts are looked up; each has a byte for its length, in units that follow. The
 * rest is the file. */
#include <map>
#include <set>

#include "FuzzInput.h"
#include "FuzzedDevice.h"
#include "files/Harvest.h"
#include "files/TableFile.h"
#include "ui/TranslationCatalogue.h"

namespace {

using Records = std::map<WideString, WideString>;
using Texts = std::set<WideString>;

WideString Unescaped(WideStringView text) {
    WideString plain;
    while (!text.empty()) {
        const WCHAR unit = text.front();
        const WCHAR next = text.size() > 1 ? text[1] : WCHAR{0};
        size_t used = 1;
        if (unit == '"') {
            if (next == '"') plain += next;
            used = next == '"' ? 2 : 1;
        } else if (unit == '\\' && text.size() > 1) {
            used = 2;
            if (next == 't')
                plain += TEXT('\t');
            else if (next == 'n')
                plain += TEXT('\n');
            else if (next == '"' || next == '\\')
                plain += next;
            else
                plain += text.substr(0, 2);
        } else if (unit != '\r') {
            plain += unit;
        }
        text.remove_prefix(used);
    }
    return plain;
}

WideString UnitsOf(std::string_view bytes) {
    const bool isWide = bytes.starts_with("\xFF\xFE");
    const FuzzBytes raw(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    if (isWide) return FuzzInput(raw.subspan(2, (raw.size() - 2) / 2 * 2)).TakeUnits(raw.size());
    return {raw.begin(), raw.end()};
}

/* As docs/translation-files.md and TranslationFile.h tell it. */
Records ReadRecords(std::string_view bytes) {
    Records records;
    const WideString units = UnitsOf(bytes);
    for (WideStringView rest = units; !rest.empty();) {
        WideStringView line = rest.substr(0, rest.find(TEXT('\n')));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        line.remove_prefix(std::min(line.size(), line.find_first_not_of(TEXT('\t'))));
        const size_t tab = line.find(TEXT('\t'));
        if (tab == WideStringView::npos || tab + 1 == line.size()) continue;
        records[Unescaped(line.substr(0, tab))] = Unescaped(line.substr(tab + 1));
    }
    return records;
}

WideString WithoutMarks(WideString text) {
    std::erase_if(
        text, [](WCHAR unit) { return WideStringView(TEXT("&.:\"")).find(unit) != WideStringView::npos; });
    return text;
}

void RequireTranslation(TranslationCatalogue& catalogue, const Records& records, const WideString& text,
                        Texts& untranslated) {
    auto found = records.find(text);
    if (found == records.end()) found = records.find(WithoutMarks(text));
    const WideString& shown = catalogue.Translate(text);
    if (found != records.end()) return Require(shown == found->second, "a translation is the file's");
    Require(shown == text, "a text without translation is shown as it is");
    untranslated.insert(text);
}

/* What translators get, as the page tells it. */
std::string HarvestOf(const Texts& texts) {
    WideString units(1, 0xFEFF);
    for (const WideString& text : texts) {
        for (const WCHAR unit : text) {
            if (unit == '\t')
                units += TEXT("\\t");
            else if (unit == '\n')
                units += TEXT("\\n");
            else
                units += unit;
        }
        units += TEXT("\tXXXX\r\n");
    }
    return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(WCHAR)};
}

/* Whether the library reads the text of a harvest as it was looked up. */
bool ComesBack(const WideString& text) {
    return !text.empty() && text.find_first_of(TEXT("\r\"\\")) == WideString::npos;
}

/* Whether a harvest holds the text so that it can be told: a backslash could be that of a TAB. */
bool CanBeHarvested(const WideString& text) {
    return !text.empty() && text.find_first_of(WideStringView(TEXT("\r\0\\"), 3)) == WideString::npos;
}

class TranslationFile final : public FuzzTarget {
public:
    TranslationFile() { handheld.device.MakeFolder(u"\\My Documents\\ZRTranslation"); }

    void Run(FuzzBytes bytes) override {
        handheld.BeginRun();
        FuzzInput input(bytes);
        Texts texts;
        const unsigned count = input.TakeByte() % 8U;
        for (unsigned text = 0; text < count; ++text)
            texts.insert(input.TakeUnits(input.TakeByte()));
        const std::string contents = input.TakeRest();
        file.Put(contents);
        RequireLookUp(ReadRecords(contents), texts);
        handheld.EndRun();
    }

private:
    void RequireLookUp(const Records& records, const Texts& texts) const {
        TranslationCatalogue catalogue;
        Require(catalogue.LoadTranslationFile(file.Path()) != records.empty(),
                "a file with a record is loaded");
        Texts untranslated;
        for (const auto& [text, translation] : records)
            Require(catalogue.Translate(text) == translation, "every record is found");
        for (const WideString& text : texts)
            RequireTranslation(catalogue, records, text, untranslated);
        Require(catalogue.UntranslatedTexts() == untranslated, "what was not found is collected");
        catalogue.WriteUntranslatedFile(TEXT("\\Temp\\Lib.dll"), TEXT("\\My Documents"));
        if (!untranslated.empty()) RequireHarvest(untranslated);
    }

    void RequireHarvest(const Texts& texts) const {
        const std::string bytes = harvest.Take();
        Require(bytes == HarvestOf(texts), "what was not found is harvested");
        TranslationCatalogue catalogue;
        catalogue.LoadTranslationFile(harvest.Path());
        for (const WideString& text : texts) {
            if (ComesBack(text))
                Require(catalogue.Translate(text) == TEXT("XXXX"), "a harvest can be loaded");
        }
        catalogue.WriteUntranslatedFile({}, TEXT("\\none"));
        RequireTable(bytes, texts);
        harvest.Remove();
    }

    /* The program for translators knows a harvest, and what its texts are. */
    static void RequireTable(const std::string& bytes, const Texts& texts) {
        if (!std::ranges::all_of(texts, CanBeHarvested)) return;
        const TableText table = DecodeTable(bytes);
        Require(IsRawHarvest(table.lines), "a harvest is known as one");
        Complaints complaints;
        const Catalogue read = ReadTable(table, complaints);
        Require(complaints.empty() && read.entries.size() == texts.size(), "all of a harvest is understood");
        for (const WideString& text : texts)
            Require(read.Find(text) != nullptr, "translators get the texts that were looked up");
    }

    FuzzedDevice handheld;
    FuzzedFile file{u"\\Temp\\Lib.French.txt"};
    FuzzedFile harvest{u"\\My Documents\\ZRTranslation\\Lib.txt"};
};

const bool isAdded = AddFuzzTarget<TranslationFile>("TranslationFile");

}  // namespace
