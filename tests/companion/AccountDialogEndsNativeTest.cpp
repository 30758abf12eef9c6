/* How the dialogs behind the companion's exports end when nobody ends them. */
#include "companion/CompanionTest.h"

namespace {

class AccountDialogEnds : public CompanionTest {
protected:
    LMInt32 SignIn(const DialogScript& script = nullptr) {
        if (script) device.UseDialog(script);
        return LMAccountShowSignIn(&record, nullptr);
    }

    LMAccountRecord record = Record(TEXT("Anna Maria Bergmann"), TEXT("secret in 1 place"));
    const std::string before = Bytes(record);
};

}  // namespace

TEST_F(AccountDialogEnds, DestroyedOneIsGivenUp) {
    ExpectFailure(cancelled, SignIn([](DialogUser& user) { DestroyWindow(user.Window()); }));
    EXPECT_EQ(before, Bytes(record));
}

TEST_F(AccountDialogEnds, OneWhoseOwnerIsDestroyedIsGivenUp) {
    LMAccountRecord other = Record();
    ExpectFailure(cancelled, SignIn([&](DialogUser& owner) {
                      device.UseDialog([&](DialogUser&) { DestroyWindow(owner.Window()); });
                      ExpectFailure(cancelled, LMAccountShowCreate(&other, owner.Window()));
                  }));
    EXPECT_EQ(Bytes(Record()), Bytes(other));
}

TEST_F(AccountDialogEnds, OwnerThatIsNoWindowIsABadArgument) {
    void* const noWindow = reinterpret_cast<void*>(uintptr_t{0x1234});
    ExpectFailure(LM_ERROR_BAD_ARGUMENT, LMAccountShowSignIn(&record, noWindow));
    ExpectFailure(LM_ERROR_BAD_ARGUMENT, LMAccountShowCreate(&record, noWindow));
    EXPECT_TRUE(device.MessageBoxes().empty());
    EXPECT_EQ(before, Bytes(record));
}

TEST_F(AccountDialogEnds, WithoutItsMenuBarItHasTheCodeOfThat) {
    device.FailCall("SHCreateMenuBar", 1, ERROR_ACCESS_DENIED);
    device.AnswerMessageBox(IDOK);
    device.AnswerMessageBox(IDOK);
    ExpectFailure(ERROR_ACCESS_DENIED, SignIn());
    EXPECT_EQ(before, Bytes(record));
}

TEST_F(AccountDialogEnds, MemoryThatRunsOutInItIs8) {
    device.AnswerMessageBox(IDOK);
    ExpectFailure(ERROR_NOT_ENOUGH_MEMORY, SignIn([](DialogUser& user) {
                      SetLastError(staleError);
                      const AllocationWatch watch(1);
                      user.PressButton(IDOK);
                  }));
    EXPECT_EQ(before, Bytes(record));
}
