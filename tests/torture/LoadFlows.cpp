/* Loading a library's file, and unloading it. */
#include "DeviceFile.h"
#include "Flow.h"
#include "TortureScope.h"
#include "support/DeviceTest.h"

namespace {

enum class Files { None, Language, Harvest };

class Load : public Flow {
public:
    Load(LoadedFile loadedFile, Files foundFiles) : loaded(std::move(loadedFile)), found(foundFiles) {}

    void SetUp() override {
        device.SetLibraryPath(u"\\Program Files\\App\\" + loaded.name + u".dll");
        if (found == Files::Harvest) {
            device.MakeFolder(u"\\My Documents\\ZRTranslation");
            harvest.emplace(u"\\My Documents\\ZRTranslation\\" + loaded.name + u".txt");
            namelessHarvest.emplace(u"\\My Documents\\ZRTranslation\\module.txt");
        }
        if (found != Files::Language) return;
        DeviceTest::SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                                     DeviceTest::BytesOf(TEXT("Dutch")));
        device.PutFile(u"\\Program Files\\App\\" + loaded.name + u".Dutch.txt",
                       "Open\tOpenen\nA text of more than its object\tEen langere tekst\n");
    }

    void Prepare() override {
        if (harvest) harvest->Remove();
        if (namelessHarvest) namelessHarvest->Remove();
    }

    void Run() override {
        LoadedLibrary library = device.LoadLibraryFile(loaded.file);
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
    const LoadedFile loaded;
    const Files found;
    std::optional<DeviceFile> harvest;
    std::optional<DeviceFile> namelessHarvest;
    bool isLoaded = false;
};

}  // namespace

std::vector<FlowRow> LoadRows(const LoadedFile& file) {
    const std::string_view none = "loaded, no harvest";
    std::vector<Statement> statements;
    std::vector<std::string_view> harvestWithoutMemory = {none, "loaded, harvest", "loaded, cut harvest",
                                                          "+loaded, no harvest, cut harvest of a module"};
    if (tortureIsOfImages) {
        statements.push_back({"memory", {"loaded", "refused"}});
        harvestWithoutMemory.push_back("refused, no harvest");
    }
    std::vector<FlowRow> rows;
    rows.push_back(
        {file.rowNames + "WithoutFiles", Library::None, Make<Load>(file, Files::None), "loaded", statements});
    rows.push_back({file.rowNames + "WithALanguage", Library::None, Make<Load>(file, Files::Language),
                    "loaded", statements});
    rows.push_back(
        {file.rowNames + "WithAHarvestFolder",
         Library::None,
         Make<Load>(file, Files::Harvest),
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
