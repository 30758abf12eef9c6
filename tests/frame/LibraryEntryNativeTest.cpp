#include "frame/LibraryEntry.h"

#include <gtest/gtest.h>

#include "Device.h"
#include "base/Contained.h"
#include "frame/ResourceModule.h"
#include "support/DeviceTest.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

namespace {

/* Attaches the library that is linked into the tests, and takes the traces of that back. */
class LibraryEntry : public DeviceTest {
protected:
    void TearDown() override {
        SetMessageBoxCaption({});
        translationCatalogue.SetLanguage(TEXT("English"), {});
        translationCatalogue.WriteUntranslatedFile({}, {});
        ownModule = nullptr;
        DeviceTest::TearDown();
    }

    bool Attach() { return AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr); }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(LibraryEntry, AttachPreparesTheShellThenLooksForTheLanguage) {
    EXPECT_TRUE(Attach());
    const std::vector<std::string> expected = {
        "SHInitExtraControls(library, 1, null) = TRUE",
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Orvande", 0, 0x00020019) = 2)",
    };
    EXPECT_EQ(expected, device.Calls({"SHInitExtraControls", "RegOpenKeyExW"}));
    EXPECT_EQ(device.LibraryInstance(), ownModule);
}

TEST_F(LibraryEntry, CaptionIsTheEnglishTitleWhichTranslatorsFindInTheHarvest) {
    Attach();
    EXPECT_EQ(TEXT("Orvande Online"), messageBoxCaption);
    EXPECT_EQ(1u, translationCatalogue.UntranslatedTexts().count(TEXT("Orvande Online")));
}

TEST_F(LibraryEntry, CaptionStaysEnglishInAnotherLanguageBecauseItIsSetBeforeTheCatalogueIsStarted) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("French")));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt",
                   "Orvande Online\tOrvande en ligne\nOpen\tOuvrir\n");
    EXPECT_TRUE(Attach());
    EXPECT_EQ(TEXT("Orvande Online"), messageBoxCaption);
    EXPECT_EQ(TEXT("Ouvrir"), translationCatalogue.Translate("Open"));
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty()) << "the load has forgotten the title";
}

TEST_F(LibraryEntry, ShellIsGivenTheEntrysOwnArguments) {
    EXPECT_TRUE(AttachLibrary(device.LibraryInstance(), 7, reinterpret_cast<void*>(uintptr_t{0x12345678})));
    EXPECT_EQ((std::vector<std::string>{"SHInitExtraControls(library, 7, 0x12345678) = TRUE"}),
              device.Calls({"SHInitExtraControls"}));
}

TEST_F(LibraryEntry, AttachIsTrueThoughTheShellRefuses) {
    device.FailCall("SHInitExtraControls", 1, ERROR_GEN_FAILURE);
    EXPECT_TRUE(Attach());
    EXPECT_EQ(TEXT("Orvande Online"), messageBoxCaption);
}

TEST_F(LibraryEntry, AttachIsTrueAndKeepsItsModuleWheneverMemoryRunsOut) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("A language with a name that needs memory of its own")));
    for (size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        ownModule = nullptr;
        AllocationWatch watch(n, Failing::FromThereOn);
        const bool attached = Attach();
        watch.Stop();
        EXPECT_TRUE(attached);
        EXPECT_EQ(device.LibraryInstance(), ownModule);
        if (!watch.Failed()) break;
        ASSERT_LT(n, 100u);
    }
}

TEST(Contained, ResultOfTheOperationIsPassedOn) {
    EXPECT_EQ(5, Contained(-1, [] { return 5; }));
    EXPECT_TRUE(RunContained([] {}));
}

TEST(Contained, FailureStandsInForWhatWasThrown) {
    EXPECT_EQ(-1, Contained(-1, []() -> int { throw std::bad_alloc(); }));
    EXPECT_FALSE(RunContained([] { throw 5; }));
}
