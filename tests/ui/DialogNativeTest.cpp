/* How a dialog is shown and ends, or cannot be shown. */
#include "ui/DialogFixture.h"

TEST_F(DialogOnDevice, WithoutATemplateIdIsCancelledAtOnceAndShowsNothing) {
    FormDialog dialog(0);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(noCalls, device.Calls());
}

TEST_F(DialogOnDevice, WhoseTemplateIsMissingSaysSoWithTheSystemsErrorCode) {
    ExpectMessage();
    FormDialog dialog(999);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    static_assert(ERROR_RESOURCE_NAME_NOT_FOUND == 0x716);
    ExpectBox(0, u"Dialog 999 failed: err=0x716");
    EXPECT_EQ(nullptr, device.MessageBoxes()[0].owner);
}

TEST_F(DialogOnDevice, FailureBoxIsOwnedByTheParent) {
    FormDialog parent;
    device.UseDialog([&](DialogUser& user) {
        ExpectMessage();
        FormDialog missing(999);
        EXPECT_EQ(-1, missing.DoModal(user.Window()));
        EXPECT_EQ(user.Window(), device.MessageBoxes()[0].owner);
        Cancel(user);
    });
    parent.DoModal(nullptr);
}

TEST_F(DialogOnDevice, FailureIsToldInEnglishWhateverTheLanguage) {
    Translate("Dialog %d failed: err=0x%x\tErreur\nInternal error\tErreur interne\n");
    ExpectMessage();
    FormDialog dialog(999);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    ExpectBox(0, u"Dialog 999 failed: err=0x716");
}

TEST_F(DialogOnDevice, FromAMissingResDllFailsWithBothBoxes) {
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog(5000);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_EQ(u"Error", device.MessageBoxes()[0].caption);
    ExpectBox(1, u"Dialog 5000 failed: err=0x7e");
}

TEST_F(DialogOnDevice, OnlyTheLow16BitsOfTheTemplateIdNameTheResource) {
    const HINSTANCE resDll = device.AddModule(u"Res.dll");
    device.SetResources(resDll, ReadResourceFile(ORVANDE_TEST_RESOURCES));
    FormDialog dialog(0x50000 + FORM_DIALOG);
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ((std::vector<std::string>{"FindResourceW(Res.dll, 202, RT_DIALOG) = resource"}),
              device.Calls({"FindResourceW"}));
}

TEST_F(DialogOnDevice, OpenedFromADialogRunsUntilItIsClosedAndThenTheFirstGoesOn) {
    FormDialog outer;
    FormDialog inner;
    int innerResult = 0;
    outer.onCommand = [&](int id, HWND, int) {
        if (id == FORM_BUTTON) innerResult = inner.DoModal(outer.window);
    };
    device.UseDialog([&](DialogUser& user) {
        user.Type(FORM_FIELD, u"outer");
        user.Tap(FORM_BUTTON);
        EXPECT_EQ(u"outer", user.Text(FORM_FIELD));
        user.PressButton(IDOK);
    });
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(inner.window, user.Window());
        EXPECT_FALSE(IsWindowEnabled(outer.window));
        EXPECT_EQ(u"", user.Text(FORM_FIELD));
        Cancel(user);
    });
    EXPECT_EQ(IDOK, outer.DoModal(nullptr));
    EXPECT_EQ(IDCANCEL, innerResult);
}

TEST_F(DialogOnDevice, CanBeShownAgain) {
    FormDialog dialog;
    for (int time = 0; time < 3; ++time) {
        device.UseDialog(Cancel);
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }
}

TEST_F(DialogOnDevice, ObjectThatGoesWhileItsDialogIsOpenTakesTheDialogWithIt) {
    auto inner = std::make_unique<FormDialog>();
    device.UseDialog([&](DialogUser&) { inner.reset(); });
    inner->DoModal(nullptr);
    EXPECT_EQ(nullptr, inner);
    EXPECT_TRUE(device.MessageBoxes().empty());
}
