/* Opening a program with the real shell. */
#include "frame/OpenWithShell.h"

#include <gtest/gtest.h>

#include <thread>

#include "base/Owned.h"
#include "frame/OpenedProgram.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScreenUser.h"

namespace {

struct EventKind {
    using Handle = HANDLE;
    static constexpr Handle none = nullptr;
    static void Close(Handle event) noexcept { CloseHandle(event); }
};

class Event {
public:
    explicit Event(const WCHAR* name) : handle(CreateEventW(nullptr, TRUE, FALSE, name)) {
        // The program of an earlier test may still have it open.
        ResetEvent(handle.Get());
    }
    void Set() { SetEvent(handle.Get()); }
    [[nodiscard]] bool IsSet() const { return Wait(0); }
    [[nodiscard]] bool Comes() const { return Wait(20000); }

private:
    [[nodiscard]] bool Wait(DWORD time) const {
        return WaitForSingleObject(handle.Get(), time) == WAIT_OBJECT_0;
    }
    Owned<EventKind> handle;
};

class Opening : public testing::Test {
protected:
    static WideString Program() { return ProgramFolder() + L"\\opened-program.exe"; }

    Event started{OPENED_STARTED};
    Event mayEnd{OPENED_MAY_END};
    Event ending{OPENED_ENDING};
};

}  // namespace

TEST_F(Opening, WithoutWaitingEndsWhileTheProgramRuns) {
    EXPECT_TRUE(OpenWithShell(Program(), nullptr, false));
    EXPECT_TRUE(started.Comes());
    EXPECT_FALSE(ending.IsSet());
    mayEnd.Set();
    EXPECT_TRUE(ending.Comes());
}

TEST_F(Opening, WaitsForTheProgramsEnd) {
    bool endedBefore = true;
    std::thread other([&] {
        if (!started.Comes()) return;
        endedBefore = ending.IsSet();
        mayEnd.Set();
    });
    EXPECT_TRUE(OpenWithShell(Program(), nullptr, true));
    EXPECT_TRUE(ending.IsSet());
    other.join();
    EXPECT_FALSE(endedBefore);
}

TEST_F(Opening, MissingFileCannotBeOpened) {
    for (const bool wait : {false, true}) {
        // The shell says so itself.
        const ScreenUser user([](const ScreenUser& acting) { acting.TakeMessage(L"Error"); });
        EXPECT_FALSE(OpenWithShell(ProgramFolder() + L"\\no such file.exe", nullptr, wait));
    }
}
