#include "helpers/DialogTest.h"

#include "frame/LibraryEntry.h"
#include "frame/ResourceModule.h"
#include "ui/TranslationCatalogue.h"

void DialogTest::SetUp() {
    DeviceTest::SetUp();
    // A program that was killed may have left its language to the user.
    RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language");
    ownModule = nullptr;
    resourceModule = nullptr;
    StandInMenuBars(TRUE);
}

void DialogTest::TearDown() {
    translationCatalogue.SetLanguage(L"English", {});
    translationCatalogue.WriteUntranslatedFile({}, {});
    if (!languageFile.empty()) DeleteFileW(languageFile.c_str());
    StandInMenuBars(TRUE);
    DeviceTest::TearDown();
}

void DialogTest::UseFrench(std::string_view records) {
    WCHAR program[MAX_PATH]{};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring path = program;
    languageFile = path.substr(0, path.rfind(L'.')) + L".French.txt";
    PutFile(languageFile, records);
    UseLanguage(L"French");
}

void DialogTest::UseLanguage(const std::wstring& name) {
    SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                     BytesOf({name.c_str(), name.size() + 1}));
    ASSERT_TRUE(AttachLibrary(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr));
    ASSERT_EQ(name, translationCatalogue.CurrentLanguage());
}

int DialogTest::Show(Dialog& dialog, ScreenUser::Script script, HWND parent) {
    const ScreenUser user(std::move(script));
    return dialog.DoModal(parent);
}

StandInShellRecord DialogTest::ShellCalls() {
    StandInShellRecord record;
    StandInShellCalls(&record);
    return record;
}
