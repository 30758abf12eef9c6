/* Rows "key-value-load" and "key-value-save": a file of `size` lines key=value is read into a table by key,
 * or written from one, as settings are. Three values of eight hold something that the library's form of file
 * has to encode: spaces, the @ of an address, or the marks of a path. The peers' files hold the values as
 * they are. Making and freeing a table belongs to loading; a table that is saved exists already. */
#pragma once

#include <map>
#include <string>

#include "support/Rows.h"
#include "support/Sizes.h"
#include "support/Text.h"

inline constexpr Row keyValueLoad{"key-value-load", "entry", keyValueSizes, {}};
inline constexpr Row keyValueSave{"key-value-save", "entry", keyValueSizes, {}};

using KeyValues = std::map<std::string, std::string>;

KeyValues SomeKeyValues(size_t count);

/* Lines of key=value, after the line of a section. */
std::string SectionFile(const KeyValues& entries);

/* As the library writes them: values encoded. */
std::string FormFile(const KeyValues& entries);

/* What a file of either kind says. */
KeyValues FromSectionFile(const std::string& file);
KeyValues FromFormFile(const std::string& file);

/* All keys and values, to compare them. */
std::string OutcomeOf(const KeyValues& entries);

inline constexpr const char* sectionName = "settings";

/* `Loader` has File(entries), which makes the bytes of its file; Load(path), whose result is a table; and
 * Value(table, key). */
template <class Loader>
class LoadWork final : public Work {
public:
    explicit LoadWork(size_t count) : entries(SomeKeyValues(count)) {
        WriteFile(path, Loader::File(entries));
    }

    std::string Outcome() override {
        const auto table = Loader::Load(path);
        KeyValues loaded;
        for (const auto& [key, value] : entries)
            loaded[key] = Loader::Value(table, key);
        return OutcomeOf(loaded);
    }

    void Do() override { Loader::Load(path); }

private:
    KeyValues entries;
    std::string path = workFolder + "/" + Loader::fileName;
};

/* `Saver` is made of entries; it has Save(path), and FromFile(bytes), which tells what its file says. */
template <class Saver>
class SaveWork final : public Work {
public:
    explicit SaveWork(size_t count) : saver(SomeKeyValues(count)) {}

    std::string Outcome() override {
        saver.Save(path);
        return OutcomeOf(Saver::FromFile(ReadFile(path)));
    }

    void Do() override { saver.Save(path); }

private:
    Saver saver;
    std::string path = workFolder + "/saved-" + Saver::fileName;
};
