/* inih, with a handler that fills a std::map; it only reads. */
#include <ini.h>

#include "dictionary/KeyValueRows.h"

namespace {

int Take(void* user, const char* /*section*/, const char* key, const char* value) {
    (*static_cast<KeyValues*>(user))[key] = value;
    return 1;
}

struct InihLoader {
    static constexpr const char* fileName = "inih.ini";

    static std::string File(const KeyValues& entries) { return SectionFile(entries); }

    static KeyValues Load(const std::string& path) {
        KeyValues table;
        ini_parse(path.c_str(), Take, &table);
        return table;
    }

    static std::string Value(const KeyValues& table, const std::string& key) {
        const auto entry = table.find(key);
        return entry == table.end() ? "" : entry->second;
    }
};

const Enter loading(keyValueLoad, "inih", MakeWork<LoadWork<InihLoader>>);

}  // namespace
