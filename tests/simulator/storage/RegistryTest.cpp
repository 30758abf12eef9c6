#include "SimulatorTest.h"

using namespace std::string_literals;

namespace {

class Registry : public SimulatorTest {
protected:
    static LSTATUS Open(HKEY root, const WCHAR* path, HKEY& key) {
        key = nullptr;
        return RegOpenKeyExW(root, path, 0, KEY_READ, &key);
    }

    /* Whether the key is there; closes it again. */
    static bool HasKey(HKEY root, const WCHAR* path) {
        HKEY key = nullptr;
        if (Open(root, path, key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }

    struct Queried {
        LSTATUS status;
        DWORD type;
        DWORD size;
        std::string bytes;  // of the whole buffer
    };

    static Queried Query(HKEY key, const WCHAR* name, DWORD room) {
        Queried queried{0, 77, room, std::string(room, '?')};
        queried.status = RegQueryValueExW(key, name, nullptr, &queried.type,
                                          reinterpret_cast<BYTE*>(queried.bytes.data()), &queried.size);
        return queried;
    }

    Queried Stored(DWORD type, const std::string& bytes, DWORD room) {
        device.SetRegistryValue(HKEY_CURRENT_USER, u"Key", u"Value", type, bytes);
        HKEY key = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, Open(HKEY_CURRENT_USER, u"Key", key));
        const Queried queried = Query(key, u"Value", room);
        RegCloseKey(key);
        return queried;
    }
};

}  // namespace

TEST_F(Registry, NewMachineHasNoKeys) {
    EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, u"Software"));
    EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, u"System\\State\\Phone"));
}

TEST_F(Registry, KeysAreFoundWhateverTheirCaseInTheirRootOnly) {
    device.MakeRegistryKey(HKEY_LOCAL_MACHINE, u"Software\\\u00C4pp\\Sub");
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, u"sOFTWARE\\\u00E4PP\\sub"));
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, u"Software\\\u00C4pp\\"));
    EXPECT_TRUE(HasKey(HKEY_LOCAL_MACHINE, u"Software"));
    EXPECT_FALSE(HasKey(HKEY_LOCAL_MACHINE, u"Soft"));
    EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, u"Software"));
}

TEST_F(Registry, KeyOpensBelowAnOpenKey) {
    device.SetRegistryValue(HKEY_CURRENT_USER, u"One\\Two", u"Value", REG_DWORD, "\1\2\3\4");
    HKEY one = nullptr;
    HKEY two = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, Open(HKEY_CURRENT_USER, u"One", one));
    EXPECT_EQ(ERROR_SUCCESS, Open(one, u"Two", two));
    EXPECT_EQ("\1\2\3\4", Query(two, u"vALUE", 4).bytes);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Query(one, u"Value", 4).status);
    RegCloseKey(two);
    RegCloseKey(one);
}

TEST_F(Registry, ValuesComeExactlyAsStored) {
    const struct {
        const char* name;
        DWORD type;
        std::string bytes;
    } cases[] = {
        {"no bytes", REG_SZ, ""},
        {"one byte", REG_SZ, "a"},
        {"odd size", REG_SZ, "a\0b"s},
        {"no terminator", REG_SZ, "a\0b\0"s},
        {"terminator", REG_SZ, "a\0\0\0"s},
        {"two terminators", REG_MULTI_SZ, "a\0\0\0\0\0"s},
        {"a number as binary", REG_BINARY, "\1\2\3\4"},
        {"a type of its own", 4711, "xyz"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Queried queried = Stored(c.type, c.bytes, 16);
        EXPECT_EQ(ERROR_SUCCESS, queried.status);
        EXPECT_EQ(c.type, queried.type);
        EXPECT_EQ(c.bytes.size(), queried.size);
        EXPECT_EQ(c.bytes + std::string(16 - c.bytes.size(), '?'), queried.bytes);
    }
}

TEST_F(Registry, ExactRoomIsEnough) {
    EXPECT_EQ(ERROR_SUCCESS, Stored(REG_BINARY, "abcd", 4).status);
}

TEST_F(Registry, TooLittleRoomGivesTheSizeAndSpoilsTheBuffer) {
    const Queried queried = Stored(REG_SZ, "abcdef", 5);
    EXPECT_EQ(ERROR_MORE_DATA, queried.status);
    EXPECT_EQ(6u, queried.size);
    EXPECT_EQ(DWORD{REG_SZ}, queried.type);
    EXPECT_EQ("\xCC\xCC\xCC\xCC\xCC", queried.bytes);
}

TEST_F(Registry, SizeCanBeAskedWithoutABuffer) {
    device.SetRegistryValue(HKEY_CURRENT_USER, u"", u"", REG_BINARY, "abc");
    DWORD size = 99;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExW(HKEY_CURRENT_USER, nullptr, nullptr, nullptr, nullptr, &size));
    EXPECT_EQ(3u, size);
}

TEST_F(Registry, BadArgumentsAreErrors) {
    BYTE data = 0;
    DWORD number = 1;
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_INVALID_HANDLE, Open(nullptr, u"Key", key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, Query(nullptr, u"Value", 4).status);
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegQueryValueExW(HKEY_CURRENT_USER, u"", nullptr, nullptr, &data, nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegQueryValueExW(HKEY_CURRENT_USER, u"", &number, nullptr, &data, &number));
}

TEST_F(Registry, OpeningForMoreThanReadingIsAViolation) {
    device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key");
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_ALL_ACCESS, &key));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(Registry, OtherRootsAreAViolation) {
    device.MakeRegistryKey(HKEY_CLASSES_ROOT, u"Key");
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(Registry, PredefinedKeysCanBeClosedAgainAndAgain) {
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(HKEY_CURRENT_USER));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(HKEY_CURRENT_USER));
}
