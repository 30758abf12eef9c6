/* FormDictionary. It decodes when it loads and encodes when it saves. */
#include "dictionary/KeyValueRows.h"
#include "text/FormDictionary.h"

namespace {

struct Library {
    static constexpr const char* fileName = "library.txt";

    static std::string File(const KeyValues& entries) { return FormFile(entries); }

    static FormDictionary Load(const std::string& path) {
        FormDictionary table;
        table.LoadFromFile(ToUtf16(path));
        return table;
    }

    static std::string Value(const FormDictionary& table, const std::string& key) {
        return ToUtf8(table.GetString(ToUtf16(key)));
    }
};

class LibrarySaver {
public:
    static constexpr const char* fileName = Library::fileName;

    explicit LibrarySaver(const KeyValues& entries) {
        for (const auto& [key, value] : entries)
            table.SetString(ToUtf16(key), ToUtf16(value));
    }

    void Save(const std::string& path) {
        if (widePath.empty()) widePath = ToUtf16(path);
        table.SaveToFile(widePath);
    }

    static KeyValues FromFile(const std::string& bytes) { return FromFormFile(bytes); }

private:
    FormDictionary table;
    WideString widePath;
};

const Enter loading(keyValueLoad, ownName, MakeWork<LoadWork<Library>>);
const Enter saving(keyValueSave, ownName, MakeWork<SaveWork<LibrarySaver>>);

}  // namespace
