/* Loading the library's file, and unloading it. */
#include "DeviceFile.h"
#include "Flow.h"
#include "TortureScope.h"
#include "support/DeviceTest.h"

namespace {

enum class Files { None, Language, Harvest };

class Load : public Flow {
public:
    explicit Load(Files foundFiles) : found(foundFiles) {}

    void SetUp() override {
        if (found == Files::Harvest) {
            device.MakeFolder(u"\\My Documents\\ZRTranslation");
            harvest.emplace(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt");
            namelessHarvest.emplace(u"\\My Documents\\ZRTranslation\\module.txt");
        }
        if (found != Files::Language) return;
        DeviceTest::SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                                     DeviceTest::BytesOf(TEXT("Dutch")));
        device.PutFile(u"\\Program Files\\App\\OrvandeOnline.Dutch.txt",
                       "Open\tOpenen\nA text of more than its object\tEen langere tekst\n");
    }

    void Prepare() override {
        if (harvest) harvest->Remove();
        if (namelessHarvest) namelessHarvest->Remove();
    }

    void Run() override {
        LoadedLibrary library = device.LoadLibraryFile(file);
        isLoaded = library.IsLoaded();
        library.Unload();
    }

    std::string Outcome() override {
        if (!harvest) return isLoaded ? "loaded" : "refused";
        const std::string whole = "\xFF\xFE" + DeviceTest::BytesOf(TEXT("Orvande Online\tXXXX\r\n"));
        const auto bytes = harvest->Take();
        const auto nameless = namelessHarvest->Take();
        std::string state = !bytes ? "no harvest" : *bytes == whole ? "harvest" : "cut harvest";
        if (nameless) state += *nameless == whole ? ", harvest of a module" : ", cut harvest of a module";
        return (isLoaded ? "loaded, " : "refused, ") + state;
    }

private:
    const Files found;
    const std::string file = ORVANDE_LIBRARY_FILE;
    std::optional<DeviceFile> harvest;
    std::optional<DeviceFile> namelessHarvest;
    bool isLoaded = false;
};

}  // namespace

std::vector<FlowRow> LoadRows() {
    const std::string_view none = "loaded, no harvest";
    std::vector<Statement> statements;
    std::vector<std::string_view> harvestWithoutMemory = {none, "loaded, harvest", "loaded, cut harvest",
                                                          "+loaded, no harvest, cut harvest of a module"};
    if (tortureIsOfImages) {
        statements.push_back({"memory", {"loaded", "refused"}});
        harvestWithoutMemory.push_back("refused, no harvest");
    }
    std::vector<FlowRow> rows;
    rows.push_back({"LoadWithoutFiles", Library::None, Make<Load>(Files::None), "loaded", statements});
    rows.push_back({"LoadWithALanguage", Library::None, Make<Load>(Files::Language), "loaded", statements});
    rows.push_back(
        {"LoadWithAHarvestFolder",
         Library::None,
         Make<Load>(Files::Harvest),
         "loaded, harvest",
         {
             {"SHGetSpecialFolderPathW", {none}},
             {"GetFileAttributesW", {none}},
             {"_wfopen", {none}},
             {"fwrite", {"loaded, cut harvest"}},
             {"GetModuleFileNameW", {"loaded, no harvest, harvest of a module", "loaded, harvest", "..."}},
             {"memory", harvestWithoutMemory},
         }});
    return rows;
}
