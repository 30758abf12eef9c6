#include "DialogTest.h"

namespace {

class Dialogs : public DialogTest {};

}  // namespace

TEST_F(Dialogs, RunsUntilItIsEndedAndReturnsTheResult) {
    SampleDialog dialog;
    HWND window = nullptr;
    User([&](DialogUser& user) {
        window = user.Window();
        EXPECT_TRUE(IsWindow(window));
        EXPECT_EQ(u"All kinds", user.Caption());
        user.Send(WM_COMMAND, IDOK, 0);
        EXPECT_FALSE(user.IsOpen());
        EXPECT_TRUE(IsWindow(window)) << "it is destroyed after its loop";
    });
    EXPECT_EQ(IDOK, dialog.Run());
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(
        (Lines{"DialogBoxIndirectParamW(library, template 100, null, procedure, parameter) = 1, dialog 1"}),
        device.Calls({"DialogBoxIndirectParamW"}));
}
