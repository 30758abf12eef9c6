/* The account in a process whose heap is full, as a search leaves it until it is closed. */
#include "companion/CompanionTest.h"
#include "machine/LimitedHeap.h"

namespace {

class AccountInFullHeap : public CompanionTest {
protected:
    /* Every function, while the heap has room for `room` bytes more: it does what it is asked, or says that
     * there is no memory, and changes nothing. */
    void TryAll(size_t room) {
        Try(room, [](LMAccountRecord& used) { return LMAccountLoad(&used); });
        Try(room, [](LMAccountRecord& used) { return LMAccountSave(&used); });
        Accept();
        Try(room, [](LMAccountRecord& used) { return LMAccountSignIn(&used); });
    }

    template <class Operation>
    void Try(size_t room, Operation operation) {
        LMAccountRecord used = record;
        LMInt32 result = 0;
        DWORD error = 0;
        {
            LimitedHeap heap(room);
            result = operation(used);
            error = GetLastError();
            EXPECT_EQ(0u, heap.Used());
        }
        EXPECT_EQ(result == 1 ? 0 : DWORD{ERROR_NOT_ENOUGH_MEMORY}, error);
        if (result == 1) return;
        EXPECT_EQ(before, Bytes(used));
        ++failures;
    }

    /* A dialog for which there is no memory at all. */
    template <class Show>
    void ExpectNotShown(Show show) {
        LMAccountRecord used = record;
        LMInt32 result = 1;
        DWORD error = 0;
        {
            const LimitedHeap heap(0);
            result = show(&used, nullptr);
            error = GetLastError();
        }
        EXPECT_EQ(0, result);
        EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, error);
        EXPECT_EQ(before, Bytes(used));
        EXPECT_TRUE(device.Dialogs().empty());
        EXPECT_TRUE(device.MessageBoxes().empty()) << "there is no memory for its text";
    }

    template <class Show>
    void ExpectShown(Show show) {
        LMAccountRecord used = record;
        device.UseDialog([](DialogUser& user) { user.ChooseMenuItem(IDCANCEL); });
        ExpectFailure(cancelled, show(&used, nullptr));
        EXPECT_EQ(before, Bytes(used));
    }

    const LMAccountRecord record = Record(TEXT("Anna Maria Bergmann"), TEXT("secret in 1 place"));
    const std::string before = Bytes(record);
    size_t failures = 0;
};

}  // namespace

TEST_F(AccountInFullHeap, FunctionsWithoutADialogDoTheirWorkOrSayThatThereIsNoMemory) {
    ExpectSuccess(LMAccountSave(&record));
    for (size_t room = 0; room < 2700; room += 20)
        TryAll(room);
    EXPECT_LT(3u, failures);
    failures = 0;
    TryAll(64 * size_t{1024});
    EXPECT_EQ(0u, failures);
}

TEST_F(AccountInFullHeap, DialogsAreShownOnceThereIsMemoryAgain) {
    ExpectNotShown(LMAccountShowSignIn);
    ExpectNotShown(LMAccountShowCreate);
    ExpectShown(LMAccountShowSignIn);
}
