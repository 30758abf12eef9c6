/* The companion's file, and how it gets on with the library's in one process. */
#include <gmock/gmock.h>

#include <sstream>

#include "LMAccount.h"
#include "account/AccountServiceTest.h"
#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "helpers/PeImage.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ShippedLibrary.h"
#include "support/ExportList.h"

namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::ElementsAreArray;

/* Loaded for as long as it lives. */
class ShippedCompanion {
    const LoadedModule module{L"OrvandeAccount.dll"};

public:
    const LMAccountSignInFunction signIn = module.Find("LMAccountSignIn");
    const LMAccountShowSignInFunction showSignIn = module.Find("LMAccountShowSignIn");
};

LMAccountRecord Record() {
    LMAccountRecord record{};
    record.size = sizeof record;
    return record;
}

class Companion : public AccountServiceTest {
protected:
    void TearDown() override {
        EXPECT_EQ(nullptr, GetModuleHandleW(L"OrvandeAccount.dll"));
        EXPECT_EQ(nullptr, GetModuleHandleW(L"OrvandeOnline.dll"));
        AccountServiceTest::TearDown();
    }

    static void ExpectSearch(const ShippedLibrary& library) {
        EXPECT_LT(0U, library.Search().results.size());
    }

    void ExpectDialog(const ShippedCompanion& companion) {
        LMAccountRecord record = Record();
        const ScreenUser user([](const ScreenUser& acting) {
            const HWND dialog = acting.WaitForDialog(account_texts::signInCaption);
            TypeCredentials(dialog, L"nobody of that name", L"secret1");
            PressSignIn(dialog);
            ExpectMessage(acting, dialog, account_texts::unknownUser, nullptr);
            ChooseCancel(acting, dialog);
        });
        EXPECT_EQ(0, companion.showSignIn(&record, nullptr));
        EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, GetLastError());
        EXPECT_STREQ(L"nobody of that name", record.userId);
    }
};

}  // namespace

TEST(CompanionFile, ExportsExactlyTheFunctionsOfTheHeaderUndecorated) {
    PeImage image(ProgramFolder() + L"\\OrvandeAccount.dll");
    EXPECT_TRUE(image.IsDll());
    std::istringstream definitions(ContentOf(ProgramFolder() + L"\\AccountExports.def"));
    const std::set<std::string> names = ReadExportList(definitions);
    EXPECT_EQ(5U, names.size());
    EXPECT_THAT(image.ExportedNames(), ElementsAreArray(names));
    EXPECT_EQ(names.size(), image.ExportedFunctionCount());
}

TEST(CompanionFile, ImportsOnlyModulesOfTheSystemAndNoOtherOfItsOwn) {
    PeImage image(ProgramFolder() + L"\\OrvandeAccount.dll");
    for (const auto& [module, names] : image.Imports()) {
        EXPECT_THAT(module, AnyOf("advapi32.dll", "kernel32.dll", "msvcrt.dll", "shell32.dll", "user32.dll",
                                  "wininet.dll", "aygshell.dll", "cellcore.dll"));
    }
    EXPECT_THAT(image.Imports()["aygshell.dll"], testing::UnorderedElementsAre("#9", "#34", "#56", "#97"));
}

TEST_F(Companion, WorksBesideTheLibraryLoadedAfterIt) {
    const ShippedLibrary library;
    const ShippedCompanion companion;
    ExpectSearch(library);
    ExpectDialog(companion);
    ExpectSearch(library);
    ExpectDialog(companion);
}

TEST_F(Companion, WorksBesideTheLibraryLoadedBeforeIt) {
    const ShippedCompanion companion;
    {
        const ShippedLibrary library;
        ExpectDialog(companion);
        ExpectSearch(library);
    }
    ExpectDialog(companion);
}

TEST_F(Companion, LibraryOutlivesIt) {
    const ShippedLibrary library;
    {
        const ShippedCompanion companion;
        ExpectDialog(companion);
    }
    ExpectSearch(library);
}

TEST(CompanionWithoutService, ServiceThatCannotBeReachedIsTold) {
    const ClosedPort closed;
    const WebProxy proxy(closed.Number());
    const ShippedCompanion companion;
    LMAccountRecord record = Record();
    wcscpy(record.userId, L"anna");
    wcscpy(record.password, L"secret1");
    EXPECT_EQ(0, companion.signIn(&record));
    EXPECT_EQ(DWORD{ERROR_INTERNET_CANNOT_CONNECT}, GetLastError());
}

TEST_F(Companion, TranslationFileIsNamedAfterIt) {
    SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                     BytesOf(std::wstring(L"Tests\0", 6)));
    const std::wstring file = ProgramFolder() + L"\\OrvandeAccount.Tests.txt";
    PutFile(file, "Sign in to Your Account\tAnmelden\n");
    const ShippedCompanion companion;
    LMAccountRecord record = Record();
    const ScreenUser user(
        [](const ScreenUser& acting) { ChooseCancel(acting, acting.WaitForDialog(L"Anmelden")); });
    EXPECT_EQ(0, companion.showSignIn(&record, nullptr));
    DeleteFileW(file.c_str());
}
