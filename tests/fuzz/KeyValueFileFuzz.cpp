/* Key/value files: what is read of any bytes, and what a dictionary saves and loads again. The first byte
 * tells how many entries are set beside those of the file. Each has a byte for the length of its key and one
 * for that of its value, in units that follow. The rest is the file. */
#include "FuzzInput.h"
#include "FuzzedDevice.h"
#include "KeyValueReading.h"
#include "text/FormDictionary.h"

namespace {

const WideString absent = TEXT("\xFFFF<absent>");

class KeyValueFile final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        handheld.BeginRun();
        FuzzInput input(bytes);
        KeyValuePairs set;
        const unsigned count = input.TakeByte() % 4U;
        for (unsigned entry = 0; entry < count; ++entry) {
            const size_t keySize = input.TakeByte();
            const size_t valueSize = input.TakeByte();
            const std::u16string key = input.TakeUnits(keySize);
            set[key] = input.TakeUnits(valueSize);
        }
        RequireReading(input.TakeRest(), set);
        RequireSaving(set);
        handheld.EndRun();
    }

private:
    /* Puts the file, and requires that its pairs are read. They are `pairs`, then, beside those that were. */
    void RequireReading(const std::string& contents, KeyValuePairs& pairs) const {
        file.Put(contents);
        FormDictionary read;
        for (const auto& [key, value] : pairs)
            read.SetString(key, value);
        Require(read.LoadFromFile(file.Path()), "every file can be read");
        ReadKeyValueFile(contents, pairs);
        for (const auto& [key, value] : pairs)
            Require(read.GetString(key, absent) == value, "pairs are read as they stand in the file");
    }

    void RequireSaving(const KeyValuePairs& pairs) const {
        FormDictionary saved;
        for (const auto& [key, value] : pairs)
            saved.SetString(key, value);
        Require(saved.SaveToFile(file.Path()), "every dictionary can be saved");
        const std::string contents = file.Take();
        FormDictionary loaded;
        Require(loaded.LoadFromFile(file.Path()), "what is saved can be loaded");
        for (const auto& [key, value] : pairs)
            RequireSurvival(key, SurvivingValue(value), value.empty(), loaded.GetString(key, absent));
        // What is in a file survives all further saving.
        KeyValuePairs kept;
        ReadKeyValueFile(contents, kept);
        Require(loaded.SaveToFile(file.Path()), "what is loaded can be saved");
        KeyValuePairs keptAgain;
        ReadKeyValueFile(file.Take(), keptAgain);
        for (const auto& [key, value] : kept) {
            const std::u16string surviving = SurvivingValue(value);
            if (!SurvivesAsKey(key) || surviving.empty()) continue;
            Require(keptAgain[key] == surviving, "what was read survives saving");
        }
    }

    static void RequireSurvival(const std::u16string& key, const std::u16string& surviving, bool wasEmpty,
                                const std::u16string& found) {
        if (SurvivesAsKey(key) && !surviving.empty())
            Require(found == surviving, "an entry survives with the low bytes of its value");
        // Other entries may be read under a key that had no value, and under no other.
        if (!wasEmpty && found != absent)
            Require(found == surviving, "no entry is damaged by those of other keys");
    }

    FuzzedDevice handheld;
    FuzzedFile file{u"\\Temp\\settings.ini"};
};

const bool isAdded = AddFuzzTarget<KeyValueFile>("KeyValueFile");

}  // namespace
