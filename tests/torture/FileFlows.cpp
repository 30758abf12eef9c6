/* Translations, key/value files, the registry and folders. */
#include "DeviceFile.h"
#include "Flow.h"

#include "base/Contained.h"
#include "frame/Folders.h"
#include "settings/Settings.h"
#include "text/FormDictionary.h"
#include "ui/TranslationCatalogue.h"

namespace {

std::string Utf16(WideStringView text) {
    std::string bytes = "\xFF\xFE";
    for (const WCHAR unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

class LoadTranslations : public Flow {
public:
    explicit LoadTranslations(bool isWide) {
        const std::string records = "Open\tOpenen\nA text of more than its own\tEen langere tekst dan hij\n";
        bytes = isWide ? Utf16(WideString(records.begin(), records.end())) : records;
    }

    void SetUp() override { DeviceFile(u"\\Storage\\Language.txt").Put(bytes); }
    void Prepare() override { catalogue.emplace(); }
    void Run() override {
        hasMemory = RunContained([this] { isLoaded = catalogue->LoadTranslationFile(path); });
    }
    std::string Outcome() override {
        const int records = Shows(TEXT("Open"), TEXT("Openen")) +
                            Shows(TEXT("A text of more than its own"), TEXT("Een langere tekst dan hij"));
        return std::string(!hasMemory ? "no memory"
                           : isLoaded ? "loaded"
                                      : "not loaded") +
               ", " + std::to_string(records) + " records";
    }
    void CleanUp() override { catalogue.reset(); }

private:
    int Shows(const WideString& text, const WideString& translation) {
        return catalogue->Translate(text) == translation ? 1 : 0;
    }

    const WideString path = TEXT("\\Storage\\Language.txt");
    std::string bytes;
    std::optional<TranslationCatalogue> catalogue;
    bool isLoaded = false;
    bool hasMemory = false;
};

class WriteHarvest : public Flow {
public:
    void SetUp() override {
        device.MakeFolder(u"\\Storage\\ZRTranslation");
        file.emplace(u"\\Storage\\ZRTranslation\\Lib.txt");
    }
    void Prepare() override {
        file->Remove();
        catalogue.emplace();
        catalogue->Translate(TEXT("Open"));
        catalogue->Translate(TEXT("A text of more than its own"));
    }
    void Run() override {
        hasMemory = RunContained([this] { catalogue->WriteUntranslatedFile(library, folder); });
    }
    std::string Outcome() override {
        const std::string whole = Utf16(TEXT("A text of more than its own\tXXXX\r\nOpen\tXXXX\r\n"));
        const std::optional<std::string> bytes = file->Take();
        return std::string(!bytes                      ? "no file"
                           : *bytes == whole           ? "whole file"
                           : whole.starts_with(*bytes) ? "cut file"
                                                       : "damaged file") +
               (catalogue->UntranslatedTexts().empty() ? ", emptied" : ", kept") +
               (hasMemory ? "" : ", thrown");
    }
    void CleanUp() override { catalogue.reset(); }

private:
    const WideString library = TEXT("\\Program Files\\App\\Lib.dll");
    const WideString folder = TEXT("\\Storage");
    std::optional<DeviceFile> file;
    std::optional<TranslationCatalogue> catalogue;
    bool hasMemory = false;
};

class DictionaryFlow : public Flow {
public:
    void SetUp() override { file.emplace(u"\\Storage\\form.ini"); }
    void CleanUp() override { dictionary.reset(); }

protected:
    std::string ResultText() const { return !hasMemory ? "no memory" : result ? "done" : "failed"; }

    const WideString path = TEXT("\\Storage\\form.ini");
    const std::string whole = "first=A value of more than its own\nsecond=2\n";
    std::optional<DeviceFile> file;
    std::optional<FormDictionary> dictionary;
    bool result = false;
    bool hasMemory = false;
};

class LoadDictionary : public DictionaryFlow {
public:
    void Prepare() override {
        file->Put(whole);
        dictionary.emplace();
    }
    void Run() override {
        hasMemory = RunContained([this] { result = dictionary->LoadFromFile(path); });
    }
    std::string Outcome() override {
        const WideString first = dictionary->GetString(TEXT("first"));
        const WideString second = dictionary->GetString(TEXT("second"));
        const WideString expected = TEXT("A value of more than its own");
        const bool isCut =
            WideStringView(expected).starts_with(first) && (second.empty() || second == TEXT("2"));
        const bool isWhole = first == expected && second == TEXT("2");
        return ResultText() + (isWhole         ? ", whole"
                               : !isCut        ? ", damaged"
                               : first.empty() ? ", empty"
                                               : ", cut");
    }
};

class SaveDictionary : public DictionaryFlow {
public:
    void Prepare() override {
        file->Put("old");
        dictionary.emplace();
        dictionary->SetString(TEXT("first"), TEXT("A value"));
        dictionary->SetString(TEXT("second key"), TEXT("2"));
    }
    void Run() override {
        hasMemory = RunContained([this] { result = dictionary->SaveToFile(path); });
    }
    std::string Outcome() override {
        const std::string saved = "first=A+value\r\nsecond key=2\r\n";
        const std::string bytes = file->Take().value_or("no file");
        return ResultText() + (bytes == saved             ? ", whole"
                               : bytes == "old"           ? ", old"
                               : saved.starts_with(bytes) ? ", cut"
                                                          : ", damaged");
    }
};

class ReadSettings : public Flow {
public:
    void SetUp() override {
        const std::string text = Utf16(TEXT("A language with a longer name")).substr(2);
        device.SetRegistryValue(HKEY_CURRENT_USER, u"Software\\Orvande", u"Language", REG_SZ, text);
        device.SetRegistryValue(HKEY_LOCAL_MACHINE, u"SOFTWARE\\App", u"web_vendor", REG_DWORD,
                                {"\7\0\0\0", 4});
    }
    void Run() override {
        hasMemory = RunContained([this] {
            number = ReadRegistryDword(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\App"), TEXT("web_vendor"), 5);
            name = ReadSettingString(TEXT("settings"), TEXT("Language"), fallback);
        });
    }
    std::string Outcome() override {
        const std::string shown = name == fallback ? "default" : std::string(name.begin(), name.end());
        const std::string outcome = std::to_string(number) + ", " + (hasMemory ? shown : "no memory");
        WideString().swap(name);
        return outcome;
    }

private:
    const WideString fallback = TEXT("English");
    uint32_t number = 0;
    WideString name;
    bool hasMemory = false;
};

class MakeFolders : public Flow {
public:
    void SetUp() override {
        outer.emplace(u"\\Application Data\\One");
        inner.emplace(u"\\Application Data\\One\\Two");
    }
    void Prepare() override {
        inner->RemoveFolder();
        outer->RemoveFolder();
    }
    void Run() override {
        hasMemory = RunContained([this] { path = GetSpecialFolderPath(CSIDL_APPDATA, TEXT("One\\Two")); });
    }
    std::string Outcome() override {
        const std::string outcome = !hasMemory                                     ? "no memory"
                                    : path == TEXT("\\Application Data\\One\\Two") ? "path"
                                    : path.empty()                                 ? "no path"
                                                                                   : "another path";
        WideString().swap(path);
        return outcome + (device.Exists(u"\\Application Data\\One\\Two") ? ", made" : "");
    }

private:
    std::optional<DeviceFile> outer;
    std::optional<DeviceFile> inner;
    WideString path;
    bool hasMemory = false;
};

}  // namespace

std::vector<FlowRow> FileRows() {
    std::vector<FlowRow> rows;
    for (const bool isWide : {false, true}) {
        rows.push_back(
            {isWide ? "LoadWideTranslations" : "LoadNarrowTranslations",
             Library::None,
             Make<LoadTranslations>(isWide),
             "loaded, 2 records",
             {
                 {"_wfopen", {"not loaded, 0 records"}},
                 // What has been read before counts, the beginning of a record, too.
                 {"fread",
                  {"not loaded, 0 records", "loaded, 0 records", "loaded, 1 records", "loaded, 2 records"}},
                 {"fseek", {"loaded, 1 records", "not loaded, 0 records", "loaded, 2 records"}},
                 {"memory", {"no memory, 0 records", "no memory, 1 records"}},
             }});
    }
    rows.push_back({"WriteHarvest",
                    Library::None,
                    Make<WriteHarvest>(),
                    "whole file, emptied",
                    {
                        {"GetFileAttributesW", {"no file, emptied"}},
                        {"_wfopen", {"no file, kept"}},
                        {"fwrite", {"cut file, emptied"}},
                        {"memory", {"no file, kept, thrown", "cut file, kept, thrown"}},
                    }});
    rows.push_back({"LoadDictionary",
                    Library::None,
                    Make<LoadDictionary>(),
                    "done, whole",
                    {
                        {"_wfopen", {"failed, empty"}},
                        {"fread", {"done, empty", "done, cut", "done, whole"}},
                        {"memory", {"no memory, empty", "no memory, cut"}},
                    }});
    rows.push_back({"SaveDictionary",
                    Library::None,
                    Make<SaveDictionary>(),
                    "done, whole",
                    {
                        {"_wfopen", {"failed, old"}},
                        {"fwrite", {"failed, cut"}},
                        {"memory", {"no memory, cut"}},
                    }});
    rows.push_back(
        {"ReadSettings",
         Library::None,
         Make<ReadSettings>(),
         "7, A language with a longer name",
         {
             {"RegOpenKeyExW 1", {"5, A language with a longer name", "+5, default", "+5, no memory"}},
             {"RegQueryValueExW 1", {"5, A language with a longer name", "+5, default", "+5, no memory"}},
             {"RegOpenKeyExW 2", {"7, default"}},
             {"RegQueryValueExW 2", {"7, default"}},
             {"memory", {"7, no memory", "+5, no memory"}},
         }});
    rows.push_back({"MakeFolders",
                    Library::None,
                    Make<MakeFolders>(),
                    "path, made",
                    {
                        {"SHGetSpecialFolderPathW", {"no path"}},
                        // The path is the same when the folder cannot be made.
                        {"CreateDirectoryW", {"path"}},
                        {"memory", {"no memory"}},
                    }});
    return rows;
}
