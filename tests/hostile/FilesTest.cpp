/* The files that the library reads in portions of its own, ending at every byte and failing at every read. */
#include <map>
#include <optional>

#include "fuzz/KeyValueReading.h"
#include "hostile/Tally.h"
#include "machine/LimitedHeap.h"
#include "support/NetworkTest.h"
#include "text/FormDictionary.h"
#include "ui/TranslationCatalogue.h"

namespace {

const WideString absent = TEXT("\xFFFF<absent>");

class HostileFile : public NetworkTest {
protected:
    const WideString path = PathOf(TEXT("file.txt"));
    std::optional<Tally> tally;
};

class HostileSettings : public HostileFile {
protected:
    /* A file that begins with `bytes`; no further byte of it can be read. */
    void Expect(std::string_view bytes) {
        tally->Add();
        KeyValuePairs expected;
        ReadKeyValueFile(bytes, expected);
        LimitedHeap heap(SIZE_MAX);
        {
            FormDictionary read;
            EXPECT_TRUE(read.LoadFromFile(path));
            EXPECT_LE(heap.Peak(), 20 * bytes.size() + 4096);
            for (const auto& [key, value] : all)
                EXPECT_EQ(expected.contains(key) ? expected[key] : absent, read.GetString(key, absent));
        }
        device.ForgetCalls();
    }

    void SetUp() override {
        HostileFile::SetUp();
        for (int n = 0; n < 30; ++n) {
            const std::string number = std::to_string(n);
            whole += "Key" + number + (n % 3 == 0 ? " = a%20b+" : "=%41%4") + number +
                     (n % 2 == 0 ? "\r\n" : "\n");
        }
        whole += "# note\n\n\t \nA=1&B=2&C=%zz\xFFLast=\xE9";
        ReadKeyValueFile(whole, all);
    }

    std::string whole;
    KeyValuePairs all;
};

class HostileLanguage : public HostileFile {
protected:
    /* The lines of a language file, by the bytes that come: those with a text, a TAB and a translation. */
    static std::map<WideString, WideString> RecordsOf(std::string_view bytes, bool isWide) {
        WideString units;
        const size_t size = isWide ? 2 : 1;
        for (size_t at = isWide ? 2 : 0; at + size <= bytes.size(); at += size) {
            const unsigned high = isWide ? static_cast<uint8_t>(bytes[at + 1]) : 0U;
            units += static_cast<WCHAR>(static_cast<uint8_t>(bytes[at]) | high << 8U);
        }
        std::map<WideString, WideString> records;
        for (size_t begin = 0; begin < units.size();) {
            const size_t end = std::min(units.find(u'\n', begin), units.size());
            const WideString line = units.substr(begin, end - begin);
            const size_t tab = line.find(u'\t');
            if (tab != WideString::npos && tab + 1 < line.size())
                records[line.substr(0, tab)] = line.substr(tab + 1);
            begin = end + 1;
        }
        return records;
    }

    void Expect(std::string_view bytes, bool isWide) {
        tally->Add();
        const auto records = RecordsOf(bytes, isWide);
        LimitedHeap heap(SIZE_MAX);
        {
            TranslationCatalogue catalogue;
            EXPECT_EQ(!records.empty(), catalogue.LoadTranslationFile(path));
            EXPECT_LE(heap.Peak(), 20 * bytes.size() + 4096);
            for (const auto& [text, translation] : RecordsOf(wholeOf[isWide ? 1 : 0], isWide)) {
                const auto found = records.find(text);
                EXPECT_EQ(found != records.end() ? found->second : text, catalogue.Translate(text));
            }
        }
        device.ForgetCalls();
    }

    void SetUp() override {
        HostileFile::SetUp();
        WideString units;
        for (int n = 0; n < 25; ++n) {
            const std::string number = std::to_string(n);
            units += TEXT("Text ") + WideString(number.begin(), number.end()) + TEXT("\tTexte \xE9t\xE9\n");
        }
        units += TEXT("no record\nlast\tdernier");
        for (const WCHAR unit : units)
            wholeOf[0] += static_cast<char>(unit);
        wholeOf[1] = BytesOf(WideString(1, 0xFEFF) + units);
    }

    std::string wholeOf[2];  // of units of 8 bits, and of 16
};

}  // namespace

TEST_F(HostileSettings, EndAtEveryByte) {
    tally.emplace("settings file that ends");
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        PutFile(path, std::string_view(whole).substr(0, size));
        Expect(std::string_view(whole).substr(0, size));
    }
}

TEST_F(HostileSettings, CannotBeReadFromAnyByteOn) {
    tally.emplace("settings file that cannot be read on");
    PutFile(path, whole);
    // As the runtime reads text.
    std::string text = whole;
    std::erase(text, '\r');
    for (size_t size = 0; size < text.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        device.FailCall("fread", size + 1, ERROR_READ_FAULT, Failing::FromThereOn);
        Expect(std::string_view(text).substr(0, size));
        device.StopFailing();
    }
}

TEST_F(HostileLanguage, EndsAtEveryByte) {
    tally.emplace("language file that ends");
    for (const bool isWide : {false, true}) {
        const std::string_view whole = wholeOf[isWide ? 1 : 0];
        for (size_t size = isWide ? 2 : 0; size <= whole.size() && !HasFailure(); ++size) {
            SCOPED_TRACE(size);
            PutFile(path, whole.substr(0, size));
            Expect(whole.substr(0, size), isWide);
        }
    }
}

TEST_F(HostileLanguage, CannotBeReadFromAnyByteOn) {
    tally.emplace("language file that cannot be read on");
    const std::string_view whole = wholeOf[1];
    PutFile(path, whole);
    for (size_t size = 2; size < whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        device.FailCall("fread", size + 1, ERROR_READ_FAULT, Failing::FromThereOn);
        Expect(whole.substr(0, size), true);
        device.StopFailing();
    }
}
