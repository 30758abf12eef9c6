/* SimpleIni, with narrow text and without spaces around the equals sign; it is compared in saving. */
#define SI_NO_CONVERSION  // without its wide half, which needs other headers
#include <SimpleIni.h>

#include "dictionary/KeyValueRows.h"

namespace {

class SimpleIniSaver {
public:
    static constexpr const char* fileName = "simpleini.ini";

    explicit SimpleIniSaver(const KeyValues& entries) {
        table.SetSpaces(false);
        for (const auto& [key, value] : entries)
            table.SetValue(sectionName, key.c_str(), value.c_str());
    }

    void Save(const std::string& path) { table.SaveFile(path.c_str(), false); }

    static KeyValues FromFile(const std::string& bytes) { return FromSectionFile(bytes); }

private:
    CSimpleIniA table;
};

const Enter saving(keyValueSave, "SimpleIni", MakeWork<SaveWork<SimpleIniSaver>>);

}  // namespace
