/* GLib's GKeyFile. It decodes a value when it is asked for, and encodes one when it is set, so neither
 * belongs to what is measured. Saving goes by g_key_file_to_data: g_key_file_save_to_file does the same and
 * then makes a second file and moves it. */
#include <glib.h>

#include <cstdio>
#include <memory>

#include "dictionary/KeyValueRows.h"

namespace {

struct Freeing {
    void operator()(GKeyFile* table) const { g_key_file_free(table); }
    void operator()(gchar* text) const { g_free(text); }
};
using KeyFile = std::unique_ptr<GKeyFile, Freeing>;
using OwnedText = std::unique_ptr<gchar, Freeing>;

struct KeyFileLoader {
    static constexpr const char* fileName = "keyfile.ini";

    static std::string File(const KeyValues& entries) { return SectionFile(entries); }

    static KeyFile Load(const std::string& path) {
        KeyFile table(g_key_file_new());
        g_key_file_load_from_file(table.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
        return table;
    }

    static std::string Value(const KeyFile& table, const std::string& key) {
        const OwnedText value(g_key_file_get_string(table.get(), sectionName, key.c_str(), nullptr));
        return value ? value.get() : "";
    }
};

class KeyFileSaver {
public:
    static constexpr const char* fileName = KeyFileLoader::fileName;

    explicit KeyFileSaver(const KeyValues& entries) : table(g_key_file_new()) {
        for (const auto& [key, value] : entries)
            g_key_file_set_string(table.get(), sectionName, key.c_str(), value.c_str());
    }

    void Save(const std::string& path) {
        gsize size = 0;
        const OwnedText bytes(g_key_file_to_data(table.get(), &size, nullptr));
        FILE* const file = fopen(path.c_str(), "w");
        fwrite(bytes.get(), 1, size, file);
        fclose(file);
    }

    static KeyValues FromFile(const std::string& bytes) { return FromSectionFile(bytes); }

private:
    KeyFile table;
};

const Enter loading(keyValueLoad, "GKeyFile", MakeWork<LoadWork<KeyFileLoader>>);
const Enter saving(keyValueSave, "GKeyFile", MakeWork<SaveWork<KeyFileSaver>>);

}  // namespace
