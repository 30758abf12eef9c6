/* Tests of dialogs on the screen: the program has the tests' resources, and the texts are English at the
 * beginning of each. */
#pragma once

#include "support/DeviceTest.h"

#include "StandInControl.h"
#include "helpers/ScreenUser.h"
#include "ui/FormDialog.h"

class DialogTest : public DeviceTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /* Puts a language file with these records beside the program and gets the library ready as a program does
     * whose user has chosen that language. Records are lines of English and translation with a TAB between
     * them. */
    void UseFrench(std::string_view records);

    /* Gets the library ready in a language whose file lies beside the program. */
    static void UseLanguage(const std::wstring& name);

    /* Shows a dialog to a user, and gives its result. */
    static int Show(Dialog& dialog, ScreenUser::Script script, HWND parent = nullptr);

    /* What the stand-in shell was asked for since the test began. */
    static StandInShellRecord ShellCalls();

private:
    std::wstring languageFile;
};
