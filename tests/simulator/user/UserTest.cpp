#include "SimulatorTest.h"

namespace {

class User : public SimulatorTest {};

}  // namespace

TEST_F(User, AnswersBoxesInTurnAndRemembersThem) {
    device.AnswerMessageBox(IDOK);
    device.AnswerMessageBox(IDNO);
    const HWND owner = reinterpret_cast<HWND>(uintptr_t{0x42});
    EXPECT_EQ(IDOK, MessageBoxW(nullptr, u"One\n", u"Caption", MB_OK | MB_ICONERROR));
    EXPECT_EQ(IDNO, MessageBoxW(owner, u"Two", nullptr, MB_YESNO));
    ASSERT_EQ(2u, device.MessageBoxes().size());
    const ShownMessageBox& first = device.MessageBoxes()[0];
    EXPECT_EQ(nullptr, first.owner);
    EXPECT_EQ(u"One\n", first.text);
    EXPECT_EQ(u"Caption", first.caption);
    EXPECT_EQ(UINT{MB_OK | MB_ICONERROR}, first.flags);
    EXPECT_EQ(IDOK, first.answer);
    EXPECT_EQ(u"Error", device.MessageBoxes()[1].caption);
    EXPECT_EQ((Lines{R"(MessageBoxW(null, "One<U+000A>", "Caption", 0x00000010) = 1)",
                     R"(MessageBoxW(0x42, "Two", null, 0x00000004) = 7)"}),
              device.Calls());
}

TEST_F(User, UnexpectedBoxIsAViolation) {
    EXPECT_EQ(0, MessageBoxW(nullptr, u"Text", u"Caption", MB_OK));
    EXPECT_EQ(Lines{R"(MessageBoxW(null, "Text", "Caption", 0x00000000): nobody expected this message box)"},
              TakeViolations());
    EXPECT_EQ(1u, device.MessageBoxes().size());
}

TEST_F(User, AnswerWithoutAButtonIsAViolation) {
    const struct {
        UINT flags;
        int answer;
        bool fits;
    } cases[] = {
        {MB_OK, IDOK, true},
        {MB_OK, IDCANCEL, false},
        {MB_OKCANCEL, IDCANCEL, true},
        {MB_OKCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2, IDCANCEL, true},
        {MB_OKCANCEL, IDYES, false},
        {MB_ABORTRETRYIGNORE, IDIGNORE, true},
        {MB_YESNOCANCEL, IDCANCEL, true},
        {MB_YESNO, IDCANCEL, false},
        {MB_RETRYCANCEL, IDRETRY, true},
    };
    for (const auto& c : cases) {
        device.AnswerMessageBox(c.answer);
        EXPECT_EQ(c.answer, MessageBoxW(nullptr, u"", u"", c.flags));
        EXPECT_EQ(c.fits ? 0u : 1u, TakeViolations().size()) << c.flags << " " << c.answer;
    }
}

TEST_F(User, AnswerThatIsNotNeededIsAViolation) {
    device.AnswerMessageBox(IDOK);
    device.EndTest();
    EXPECT_EQ(Lines{"1 scripted answers for message boxes that were not shown"}, TakeViolations());
}

TEST_F(User, CursorChangesAndIsGivenBack) {
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
    const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    EXPECT_EQ(device.WaitCursor(), wait);
    EXPECT_EQ(device.NormalCursor(), SetCursor(wait));
    EXPECT_EQ(wait, device.CurrentCursor());
    EXPECT_EQ(wait, SetCursor(nullptr));
    EXPECT_EQ(nullptr, device.CurrentCursor());
    EXPECT_EQ(nullptr, SetCursor(LoadCursorW(nullptr, IDC_ARROW)));
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
}

TEST_F(User, CursorsThatAreNotThereAreNull) {
    EXPECT_EQ(nullptr, LoadCursorW(nullptr, IDC_CROSS));
    EXPECT_EQ(nullptr, LoadCursorW(device.LibraryInstance(), IDC_WAIT));
    SetCursor(reinterpret_cast<HCURSOR>(uintptr_t{7}));
    EXPECT_EQ(Lines{"SetCursor(0x7): this is no cursor"}, TakeViolations());
}

TEST_F(User, WaitCursorLeftOnIsAViolation) {
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    device.EndTest();
    EXPECT_EQ(Lines{"the wait cursor is still on at the end of the test"}, TakeViolations());
}
