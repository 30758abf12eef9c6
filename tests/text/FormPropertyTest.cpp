/* What holds for every text, tried on random ones: once with a fixed seed, once with a new one. The new seed
 * is printed; setting ORVANDE_TEST_SEED to it repeats the run. */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>

#include "support/DeviceTest.h"
#include "text/FormDictionary.h"
#include "text/UrlEncoding.h"

namespace {

class Random {
public:
    explicit Random(unsigned seed) : generator(seed) {}

    size_t Below(size_t limit) { return generator() % limit; }

    /* Up to `most` units, each below `limit`; every other one is drawn from `frequent`. */
    WideString Text(size_t most, unsigned limit, const WideString& frequent) {
        WideString text(Below(most + 1), 0);
        for (WCHAR& unit : text)
            unit = Below(2) ? frequent[Below(frequent.size())] : static_cast<WCHAR>(Below(limit));
        return text;
    }

private:
    std::mt19937 generator;
};

unsigned NewSeed() {
    const char* const given = std::getenv("ORVANDE_TEST_SEED");
    const unsigned seed =
        given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : std::random_device()();
    std::printf("ORVANDE_TEST_SEED=%u\n", seed);
    return seed;
}

class FormProperty : public DeviceTest {
protected:
    static constexpr unsigned fixedSeed = 4263271;

    static void ForBothSeeds(int times, const std::function<void(Random&)>& holds) {
        for (const unsigned seed : {fixedSeed, NewSeed()}) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            Random random(seed);
            for (int i = 0; i < times && !HasFailure(); ++i)
                holds(random);
        }
    }
};

using Entries = std::map<WideString, WideString>;

const WideString frequentUnits = TEXT("%+&=# \t\r\n0aAfFzZ~$-_.!*'()");

bool IsIn(std::string_view set, WCHAR unit) {
    return unit < 0x80 && set.find(static_cast<char>(unit)) != std::string_view::npos;
}

bool IsLetterOrDigit(WCHAR unit) {
    return IsIn("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", unit);
}

/* The byte that stands for the unit in a file is 0 or a mark that needs no escape. */
bool HasPassingLowByte(WCHAR unit) {
    const auto low = static_cast<WCHAR>(unit & 0xFF);
    return low == 0 || IsIn("$-_.!*'()", low);
}

/* A key that survives a file: visible ASCII and spaces inside, without = and & and with no # at its start. */
WideString PlainKey(Random& random) {
    WideString key;
    const size_t length = 1 + random.Below(8);
    while (key.size() < length) {
        const auto unit = static_cast<WCHAR>(' ' + random.Below(0x7F - ' '));
        const bool isInner = !key.empty() && key.size() + 1 < length;
        const bool isFit = !IsIn("=&", unit) && (isInner || unit != ' ') && (!key.empty() || unit != '#');
        if (isFit) key += unit;
    }
    return key;
}

/* Up to three units of which most do harm in a key, and the others make keys meet. */
WideString HostileText(Random& random) {
    static const WideString hostile =
        TEXT("aab&=# \t\r\n") + WideString{0,      0x1A,   0xFF,   0x041A, 0x0161, 0xFF61, 0xE9,  0xFFE9,
                                           0x0126, 0x013D, 0xFF80, 0xFFFF, 0x0100, 0x2020, 0x0123};
    WideString text(random.Below(4), 0);
    for (WCHAR& unit : text)
        unit = hostile[random.Below(hostile.size())];
    return text;
}

bool ComesBack(const WideString& key) {
    const auto isOfAFile = [](WCHAR unit) {
        const bool isInReach = (unit >= 1 && unit <= 0x7F) || (unit >= 0xFF80 && unit <= 0xFFFE);
        return isInReach && !IsIn("\n\r\x1A=&", unit);
    };
    return !key.empty() && std::ranges::all_of(key, isOfAFile) && key.front() != '#' &&
           !IsIn(" \t", key.front()) && !IsIn(" \t", key.back());
}

WideString RestoredValue(const WideString& value) {
    WideString restored;
    for (const WCHAR unit : value) {
        const auto low = static_cast<WCHAR>(unit & 0xFF);
        if (unit == 0 || low != 0) restored += low;
    }
    return restored;
}

FormDictionary DictionaryOf(const Entries& entries) {
    FormDictionary dictionary;
    for (const auto& [key, value] : entries)
        dictionary.SetString(key, value);
    return dictionary;
}

}  // namespace

TEST_F(FormProperty, DecodingRestoresEveryUnitBelowU0100) {
    ForBothSeeds(5000, [](Random& random) {
        const WideString text = random.Text(40, 0x100, frequentUnits);
        ASSERT_EQ(text, UrlDecode(UrlEncode(text)));
    });
}

TEST_F(FormProperty, DecodingRestoresTheLowByteOfUnitsThatDoNotPass) {
    ForBothSeeds(5000, [](Random& random) {
        const WideString text = random.Text(40, 0x10000, frequentUnits);
        WideString expected;
        for (const WCHAR unit : text)
            expected += HasPassingLowByte(unit) ? unit : static_cast<WCHAR>(unit & 0xFF);
        ASSERT_EQ(expected, UrlDecode(UrlEncode(text)));
    });
}

TEST_F(FormProperty, EncodedTextHoldsNothingThatIsMisread) {
    ForBothSeeds(5000, [](Random& random) {
        const WideString encoded = UrlEncode(random.Text(40, 0x10000, frequentUnits));
        for (size_t i = 0; i < encoded.size(); ++i) {
            if (encoded[i] == '%') {
                ASSERT_LT(i + 2, encoded.size());
                ASSERT_TRUE(IsIn("0123456789abcdef", encoded[i + 1]));
                ASSERT_TRUE(IsIn("0123456789abcdef", encoded[i + 2]));
                i += 2;
                continue;
            }
            ASSERT_TRUE(encoded[i] == '+' || IsLetterOrDigit(encoded[i]) || HasPassingLowByte(encoded[i]));
        }
    });
}

TEST_F(FormProperty, EncodedValueIsOneTrimmedPairOfAFormText) {
    ForBothSeeds(2000, [](Random& random) {
        const WideString value = random.Text(40, 0x100, frequentUnits);
        FormDictionary dictionary;
        dictionary.ParseFormText(TEXT(" a = ") + UrlEncode(value) + TEXT(" & b = 1"));
        ASSERT_EQ(value, dictionary.GetString(TEXT("a")));
        ASSERT_EQ(TEXT("1"), dictionary.GetString(TEXT("b")));
    });
}

TEST_F(FormProperty, DecodingAnyTextNeverMakesItLonger) {
    ForBothSeeds(5000, [](Random& random) {
        const WideString text = random.Text(40, 0x10000, TEXT("%%%+0aG"));
        ASSERT_LE(UrlDecode(text).size(), text.size());
    });
}

TEST_F(FormProperty, SavedDictionaryIsRestored) {
    ForBothSeeds(150, [](Random& random) {
        Entries entries;
        for (size_t i = random.Below(20); i > 0; --i)
            entries[PlainKey(random)] = random.Text(60, 0x100, frequentUnits);
        const WideString path = PathOf(TEXT("random.ini"));
        ASSERT_TRUE(DictionaryOf(entries).SaveToFile(path));
        FormDictionary loaded;
        ASSERT_TRUE(loaded.LoadFromFile(path));
        for (const auto& [key, value] : entries) {
            const WideString expected = value.empty() ? WideString(TEXT("<absent>")) : value;
            ASSERT_EQ(expected, loaded.GetString(key, TEXT("<absent>")));
        }
        // Whatever else had come back would be in a file made of what was loaded.
        const auto bytes = TakeFile(path);
        ASSERT_TRUE(loaded.SaveToFile(path));
        ASSERT_EQ(bytes, TakeFile(path));
    });
}

/* Of hostile keys: what the header of FormDictionary says of a key that comes back. */
TEST_F(FormProperty, EveryEntryWithAGoodKeyIsRestoredAndNoOtherKeyIsTouched) {
    ForBothSeeds(1000, [](Random& random) {
        Entries entries;
        for (size_t i = random.Below(12); i > 0; --i)
            entries[HostileText(random)] = HostileText(random);
        const WideString path = PathOf(TEXT("random.ini"));
        ASSERT_TRUE(DictionaryOf(entries).SaveToFile(path));
        FormDictionary loaded;
        ASSERT_TRUE(loaded.LoadFromFile(path));
        for (const auto& [key, value] : entries) {
            if (value.empty()) continue;  // another entry may have come back under this key
            ASSERT_EQ(ComesBack(key) ? RestoredValue(value) : WideString(), loaded.GetString(key));
        }
    });
}

TEST_F(FormProperty, FileOfAnyBytesIsLoadedAndComesToRest) {
    ForBothSeeds(150, [](Random& random) {
        const WideString path = PathOf(TEXT("random.ini"));
        std::string bytes;
        for (const WCHAR unit : random.Text(400, 0x100, TEXT("==&&\n\n%+# \r0aZ")))
            bytes += static_cast<char>(unit);
        PutFile(path, bytes);
        // The first save may still write a key that begins with #, and the first load then drops it.
        std::optional<std::string> saved[3];
        for (auto& generation : saved) {
            FormDictionary dictionary;
            ASSERT_TRUE(dictionary.LoadFromFile(path));
            ASSERT_TRUE(dictionary.SaveToFile(path));
            generation = TakeFile(path);
        }
        ASSERT_EQ(saved[1], saved[2]);
    });
}
