/* GLib's GKeyFile, whose keys are the texts. It decodes a value when it is asked for, so that is not
 * measured. */
#include <glib.h>

#include <memory>

#include "catalogue/CatalogueRows.h"
#include "support/Text.h"

namespace {

constexpr const char* sectionName = "French";

struct Freeing {
    void operator()(GKeyFile* table) const { g_key_file_free(table); }
    void operator()(gchar* text) const { g_free(text); }
};
using KeyFile = std::unique_ptr<GKeyFile, Freeing>;
using OwnedText = std::unique_ptr<gchar, Freeing>;

class Loading final : public Work {
public:
    explicit Loading(size_t size) : texts(SomeTranslations(size)) {
        std::string file = std::string("[") + sectionName + "]\n";
        for (const auto& [text, translation] : texts)
            file.append(text).append("=").append(WithEscapes(translation)).append("\n");
        WriteFile(path, file);
    }

    std::string Outcome() override {
        const KeyFile table = Load();
        std::string outcome;
        for (const auto& [text, translation] : texts) {
            const OwnedText value(g_key_file_get_string(table.get(), sectionName, text.c_str(), nullptr));
            outcome.append(value ? value.get() : "").append(1, '\0');
        }
        return outcome;
    }

    void Do() override { const KeyFile table = Load(); }

private:
    KeyFile Load() const {
        KeyFile table(g_key_file_new());
        g_key_file_load_from_file(table.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
        return table;
    }

    std::vector<Translation> texts;
    std::string path = workFolder + "/keyfile.ini";
};

const Enter loading(translationLoad, "GKeyFile", MakeWork<Loading>);
const Enter loading8Bit(translationLoad8Bit, "GKeyFile", MakeWork<Loading>);

}  // namespace
