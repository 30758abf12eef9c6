/* The modules of resources, with a Res.dll of the tests' own in a folder of its own. */
#include "frame/ResourceModule.h"

#include "frame/LibraryEntry.h"
#include "helpers/DialogTest.h"
#include "helpers/ProgramFolder.h"

namespace {

class ResourceModules : public DialogTest {
protected:
    void TearDown() override {
        SetDllDirectoryW(nullptr);
        if (const HMODULE loaded = GetModuleHandleW(L"Res.dll")) FreeLibrary(loaded);
        ASSERT_EQ(nullptr, GetModuleHandleW(L"Res.dll"));
        DialogTest::TearDown();
    }

    /* Puts the resource library where the system looks for it. */
    static void Install() { ASSERT_TRUE(SetDllDirectoryW((ProgramFolder() + L"\\resources").c_str())); }

    /* Asks for a module while a user confirms what is said. */
    static HINSTANCE AskAndConfirm(uint32_t id) {
        const ScreenUser user([](const ScreenUser& acting) {
            const ScreenUser::Message message = acting.TakeMessage(L"Error");
            EXPECT_EQ(L"Failed to load Res.dll\nPlease re-install the software", message.text);
            EXPECT_EQ(LoadIconW(nullptr, IDI_ERROR), message.icon);
            EXPECT_EQ(nullptr, message.owner);
        });
        return GetResourceModule(id);
    }
};

}  // namespace

TEST_F(ResourceModules, NumbersBelow5000AreTheProgramsUntilTheLibraryIsAttached) {
    EXPECT_EQ(GetModuleHandleW(nullptr), GetResourceModule(4999));
    EXPECT_EQ(GetModuleHandleW(nullptr), ownModule);
    EXPECT_EQ(nullptr, GetModuleHandleW(L"Res.dll"));
}

TEST_F(ResourceModules, NumbersBelow5000AreTheAttachedModules) {
    const HINSTANCE attached = GetModuleHandleW(L"aygshell.dll");
    AttachLibrary(attached, DLL_PROCESS_ATTACH, nullptr);
    EXPECT_EQ(attached, GetResourceModule(4999));
    EXPECT_EQ(attached, GetResourceModule(0));
    EXPECT_EQ(1, ShellCalls().initialized);
}

TEST_F(ResourceModules, NumbersFrom5000OnAreTheResourceLibrarysAndItStays) {
    Install();
    const HINSTANCE module = GetResourceModule(5000);
    ASSERT_NE(nullptr, module);
    EXPECT_EQ(GetModuleHandleW(L"Res.dll"), module);
    EXPECT_EQ(module, GetResourceModule(0xFFFFFFFF));
    EXPECT_EQ(module, resourceModule);
}

TEST_F(ResourceModules, MissingResourceLibraryIsReportedEachTime) {
    EXPECT_EQ(nullptr, AskAndConfirm(5000));
    EXPECT_EQ(nullptr, AskAndConfirm(5001));
    EXPECT_EQ(nullptr, resourceModule);
}

TEST_F(ResourceModules, ResourceLibraryThatHasComeIsFound) {
    EXPECT_EQ(nullptr, AskAndConfirm(5000));
    Install();
    EXPECT_NE(nullptr, GetResourceModule(5000));
}

TEST_F(ResourceModules, OnlyTheLow16BitsOfATemplatesNumberNameIt) {
    Install();
    FormDialog form(0x10000 + FORM_DIALOG);
    EXPECT_EQ(IDOK, Show(form, [](const ScreenUser& user) {
                  PressButton(MenuBarOf(user.WaitForDialog(L"A form")), 0);
              }));
    EXPECT_NE(nullptr, resourceModule);
}

TEST_F(ResourceModules, DialogWithoutTheResourceLibraryIsReportedTwice) {
    FormDialog form(5000);
    EXPECT_EQ(-1, Show(form, [](const ScreenUser& user) {
        user.TakeMessage(L"Error");
        // ERROR_MOD_NOT_FOUND
        EXPECT_EQ(L"Dialog 5000 failed: err=0x7e", user.TakeMessage(L"Internal error").text);
    }));
}
