#include <fstream>
#include <iterator>

#include "DialogTest.h"

namespace {

class Resources : public DialogTest {
protected:
    static std::string SampleFile() {
        std::ifstream stream(SIMULATOR_SAMPLE_RESOURCES, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string Find(LPCWSTR name, LPCWSTR type) const {
        const HMODULE module = device.LibraryInstance();
        const HRSRC resource = FindResourceW(module, name, type);
        if (resource == nullptr) return "none";
        const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
        return {bytes, SizeofResource(module, resource)};
    }

    std::u16string String(UINT id, int size = 100) const {
        WCHAR buffer[100] = u"?";
        const int length = LoadStringW(device.LibraryInstance(), id, buffer, size);
        EXPECT_EQ(static_cast<size_t>(length), std::u16string(buffer).size());
        return buffer;
    }
};

}  // namespace

TEST_F(Resources, CompiledFileIsReadWhole) {
    const auto resources = ParseResourceFile(SampleFile());
    ASSERT_TRUE(resources.has_value());
    EXPECT_EQ(25u, resources->size());
    size_t named = 0;
    for (const Resource& resource : *resources) {
        if (resource.name.text == u"NAMED") {
            ++named;
            EXPECT_EQ((ResourceId{10, {}}), resource.type);
            EXPECT_EQ(1033, resource.language);
            EXPECT_EQ("named", resource.bytes);
        }
        if (resource.type.text == u"CUSTOM") {
            ++named;
            EXPECT_EQ((ResourceId{130, {}}), resource.name);
            EXPECT_EQ("custom", resource.bytes);
        }
    }
    EXPECT_EQ(2u, named);
}

TEST_F(Resources, FileThatEndsWithinAResourceIsRefused) {
    const std::string whole = SampleFile();
    size_t parsed = 0;
    for (size_t size = 0; size < whole.size(); ++size) {
        const auto resources = ParseResourceFile(std::string_view(whole).substr(0, size));
        if (resources && !resources->empty()) ++parsed;
    }
    const size_t wholeOnes = ParseResourceFile(whole)->size();
    EXPECT_LT(parsed, wholeOnes * 4) << "only cuts between two resources, or in the padding there, are none";
    EXPECT_GE(parsed, wholeOnes - 1);
    EXPECT_EQ(std::nullopt, ParseResourceFile(""));
    EXPECT_EQ(std::nullopt, ParseResourceFile(std::string(100, '\0')));
    EXPECT_EQ(std::nullopt, ParseResourceFile(std::string(100, '\xFF')));
}

TEST_F(Resources, FileThatIsNoneIsAViolation) {
    EXPECT_TRUE(ReadResourceFile("/nowhere/file.res").empty());
    EXPECT_TRUE(ReadResourceFile(SIMULATOR_NO_LIBRARY_FILE).empty());
    EXPECT_EQ(2u, TakeViolations().size());
}

TEST_F(Resources, FoundByNumberByTextAndByTextWithANumber) {
    EXPECT_EQ("named", Find(u"NAMED", RT_RCDATA));
    EXPECT_EQ("named", Find(u"named", u"#10"));
    EXPECT_EQ("custom", Find(u"#130", u"Custom"));
    EXPECT_EQ("none", Find(u"other", RT_RCDATA));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, GetLastError());
    EXPECT_EQ("none", Find(MAKEINTRESOURCEW(100), RT_RCDATA)) << "of another type";
    EXPECT_EQ((Lines{R"(FindResourceW(library, "NAMED", RT_RCDATA) = resource)",
                     R"(FindResourceW(library, "named", RT_RCDATA) = resource)",
                     R"(FindResourceW(library, 130, "Custom") = resource)",
                     R"(FindResourceW(library, "other", RT_RCDATA) = null, error 1814)",
                     "FindResourceW(library, 100, RT_RCDATA) = null, error 1814"}),
              device.Calls({"FindResourceW"}));
}

TEST_F(Resources, EnglishIsPreferred) {
    EXPECT_EQ("English", Find(MAKEINTRESOURCEW(131), RT_RCDATA));
}

TEST_F(Resources, EveryModuleHasItsOwn) {
    device.SetResources(device.ProgramInstance(), {{{10, {}}, {5, {}}, 0, "program"}});
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(5), RT_RCDATA);
    EXPECT_NE(nullptr, found);
    EXPECT_EQ(found, FindResourceW(device.ProgramInstance(), MAKEINTRESOURCEW(5), RT_RCDATA));
    EXPECT_EQ(nullptr, FindResourceW(device.LibraryInstance(), MAKEINTRESOURCEW(5), RT_RCDATA));
    EXPECT_EQ(nullptr, LoadResource(device.LibraryInstance(), found));
    EXPECT_EQ(Lines{"LoadResource(library, resource): this is no resource of the module"}, TakeViolations());
}

TEST_F(Resources, NullResourceLoadsNothingAndKeepsTheError) {
    SetLastError(1814);
    EXPECT_EQ(nullptr, LoadResource(device.LibraryInstance(), nullptr));
    EXPECT_EQ(1814u, GetLastError());
    EXPECT_EQ(nullptr, LockResource(nullptr));
    EXPECT_EQ(0u, SizeofResource(device.LibraryInstance(), nullptr));
}

TEST_F(Resources, StringsLieInBlocksOfSixteen) {
    EXPECT_EQ(u"Done", String(2000));
    EXPECT_EQ(u"Menu", String(2002));
    EXPECT_EQ(u"Last of its block", String(2015));
    EXPECT_EQ(u"First of its block", String(2016));
    EXPECT_EQ(u"", String(2003)) << "in a block, but not there";
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, GetLastError());
    EXPECT_EQ(u"", String(4711)) << "no block";
    EXPECT_EQ(u"", String(65536 + 2000));
    EXPECT_EQ(R"(LoadStringW(library, 2000, 100) = 4, "Done")", device.Calls({"LoadStringW"})[0]);
}

TEST_F(Resources, StringIsCutToTheBufferOrGivenByItsAddress) {
    EXPECT_EQ(u"Do", String(2000, 3));
    EXPECT_EQ(u"", String(2000, 1));
    const WCHAR* text = nullptr;
    EXPECT_EQ(4, LoadStringW(device.LibraryInstance(), 2000, reinterpret_cast<WCHAR*>(&text), 0));
    EXPECT_EQ(u"Done", std::u16string(text, 4));
}

TEST_F(Resources, TruncatedStringTableHasTheStringsThatAreWhole) {
    auto resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
    std::string& bytes = BytesOf(resources, 6, 126);
    bytes = bytes.substr(0, 12);
    device.SetResources(device.LibraryInstance(), resources);
    EXPECT_EQ(u"Done", String(2000));
    EXPECT_EQ(u"", String(2001));
}

TEST_F(Resources, DefaultsHoldFromTheNextTestOn) {
    device.SetDefaultResources(device.ProgramInstance(), {{{10, {}}, {5, {}}, 0, "default"}});
    EXPECT_EQ(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(5), RT_RCDATA));
    device.EndTest();
    device.BeginTest();
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(5), RT_RCDATA);
    EXPECT_EQ(7u, SizeofResource(nullptr, found));
    device.SetResources(device.ProgramInstance(), {});
    EXPECT_EQ(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(5), RT_RCDATA));
    device.EndTest();
    device.BeginTest();
    EXPECT_NE(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(5), RT_RCDATA));
    device.SetDefaultResources(device.ProgramInstance(), {});
    EXPECT_EQ(nullptr, FindResourceW(device.LibraryInstance(), MAKEINTRESOURCEW(100), RT_DIALOG))
        << "what a test sets ends with it";
}

TEST_F(Resources, ModuleThatIsNotThereHasNone) {
    EXPECT_EQ(nullptr, FindResourceW(reinterpret_cast<HMODULE>(uintptr_t{5}), u"A", u"B"));
    EXPECT_EQ(Lines{R"(FindResourceW(0x5, "A", "B"): this module is not loaded)"}, TakeViolations());
}
