/* That the harness notices: flows with a mistake planted in each. */
#include <gtest/gtest.h>

#include <functional>

#include "DialogScripts.h"
#include "JournalOrder.h"
#include "Torturer.h"

namespace {

/* Opens a registry key and allocates a block, and behaves as `mistake` says when one of them fails. */
class Planted : public Flow {
public:
    using Mistake = std::function<void(bool hasKey, bool hasBlock)>;
    explicit Planted(Mistake plantedMistake) : mistake(std::move(plantedMistake)) {}

    void SetUp() override { device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key"); }
    void Run() override {
        HKEY key = nullptr;
        isOpen = RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key) == ERROR_SUCCESS;
        void* const block = ::operator new(10, std::nothrow);
        hasBlock = block != nullptr;
        ::operator delete(block);
        if (isOpen) RegCloseKey(key);
        mistake(isOpen, hasBlock);
    }
    std::string Outcome() override {
        return isOpen ? hasBlock ? "both" : "key" : hasBlock ? "block" : "none";
    }

private:
    const Mistake mistake;
    bool isOpen = false;
    bool hasBlock = false;
};

class Harness : public ::testing::Test {
protected:
    static FlowRow Row(const Planted::Mistake& mistake) {
        return {"Planted",
                Library::None,
                Make<Planted>(mistake),
                "both",
                {{"RegOpenKeyExW", {"block"}}, {"memory", {"key"}}}};
    }

    static std::vector<std::string> ComplaintsOf(const FlowRow& row, Mode mode) {
        Torturer torturer(row);
        torturer.Count();
        EXPECT_EQ(std::vector<std::string>{}, torturer.Complaints());
        EXPECT_EQ(2u, torturer.Calls());
        torturer.RunAll(mode);
        return torturer.Complaints();
    }

    static std::string ComplaintOf(const Planted::Mistake& mistake) {
        const std::vector<std::string> complaints = ComplaintsOf(Row(mistake), Mode::Call);
        EXPECT_EQ(1u, complaints.size());
        return complaints.empty() ? "" : complaints[0];
    }
};

void Nothing(bool /*hasKey*/, bool /*hasBlock*/) {}

}  // namespace

TEST_F(Harness, FindsNothingWhereNothingIsWrong) {
    for (const Mode mode : {Mode::Call, Mode::CallsFromThere, Mode::Allocation, Mode::AllocationsFromThere}) {
        EXPECT_EQ(std::vector<std::string>{}, ComplaintsOf(Row(Nothing), mode)) << NameOf(mode);
    }
}

TEST_F(Harness, CountsRunsAndFailures) {
    Torturer torturer(Row(Nothing));
    torturer.Count();
    const Totals alone = torturer.RunAll(Mode::Call);
    EXPECT_EQ(2u, alone.runs);
    EXPECT_EQ(2u, alone.failures);
    const Totals pairs = torturer.RunAll(Mode::Pair);
    EXPECT_EQ(2u, pairs.runs) << "two calls with one allocation";
    EXPECT_EQ(4u, pairs.failures);
}

TEST_F(Harness, NoticesABlockThatIsLeft) {
    static void* left = nullptr;
    EXPECT_EQ("failing: RegOpenKeyExW 1: 1 blocks are left", ComplaintOf([](bool hasKey, bool) {
                  if (!hasKey) left = ::operator new(10);
              }));
    ::operator delete(left);
}

TEST_F(Harness, NoticesAHandleThatIsLeft) {
    const std::vector<std::string> complaints =
        ComplaintsOf(Row([](bool hasKey, bool) {
                         HKEY key = nullptr;
                         if (!hasKey) RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key);
                     }),
                     Mode::Call);
    EXPECT_EQ((std::vector<std::string>{
                  "failing: RegOpenKeyExW 1: key 1 is never closed",
                  "failing: RegOpenKeyExW 1: key 1 is still open at the end of the test",
              }),
              complaints);
}

TEST_F(Harness, NoticesAnOutcomeThatIsNotStated) {
    FlowRow row = Row(Nothing);
    row.statements[0].outcomes = {"another"};
    EXPECT_EQ((std::vector<std::string>{"failing: RegOpenKeyExW 1: the outcome is \"block\""}),
              ComplaintsOf(row, Mode::Call));
    row.statements.erase(row.statements.begin());
    EXPECT_EQ((std::vector<std::string>{"failing: RegOpenKeyExW 1: the outcome is \"block\""}),
              ComplaintsOf(row, Mode::Call))
        << "without a statement nothing may change";
}

TEST_F(Harness, NoticesThatTheFirstFailureDoesNotDecide) {
    FlowRow row = Row(Nothing);
    row.statements[0].outcomes = {"block", "+none"};
    EXPECT_EQ(std::vector<std::string>{}, ComplaintsOf(row, Mode::Pair));
    row.statements[0].outcomes = {"block"};
    EXPECT_EQ((std::vector<std::string>{"failing: RegOpenKeyExW 1 and memory 1: the outcome is \"none\""}),
              ComplaintsOf(row, Mode::Pair));
}

TEST_F(Harness, NoticesABoxThatNobodyNames) {
    const auto show = [](bool hasKey, bool) {
        if (!hasKey) MessageBoxW(nullptr, u"A text", u"A caption", MB_OK);
    };
    EXPECT_EQ("failing: RegOpenKeyExW 1: the outcome is \"block; box A caption: A text\"", ComplaintOf(show));
    FlowRow row = Row(show);
    row.boxes = {"box Another"};
    EXPECT_EQ((std::vector<std::string>{"failing: RegOpenKeyExW 1: there is a box A caption: A text"}),
              ComplaintsOf(row, Mode::Call));
    row.boxes = {"box A caption: *"};
    EXPECT_EQ(std::vector<std::string>{}, ComplaintsOf(row, Mode::Call));
}

TEST_F(Harness, HoldsFailingRunsAgainstTheOutcomeWithoutItsBox) {
    FlowRow row = Row([](bool, bool) { MessageBoxW(nullptr, u"A text", u"A caption", MB_OK); });
    row.success = "both; box A caption: A text";
    row.boxes = {"box A caption: A text"};
    EXPECT_EQ(std::vector<std::string>{}, [&] {
        Torturer torturer(row);
        torturer.Count();
        torturer.RunAll(Mode::Call);
        return torturer.Complaints();
    }());
}

TEST_F(Harness, NoticesAnException) {
    EXPECT_EQ("failing: RegOpenKeyExW 1: an exception leaves the flow", ComplaintOf([](bool hasKey, bool) {
                  if (!hasKey) throw 5;
              }));
}

TEST_F(Harness, NoticesAWaitCursor) {
    EXPECT_EQ("failing: RegOpenKeyExW 1: the wait cursor is left on", ComplaintOf([](bool hasKey, bool) {
                  if (!hasKey) SetCursor(Device::Current().WaitCursor());
              }));
}

TEST_F(Harness, NoticesThatTheFlowFailsAfterwards) {
    static bool isBroken = false;
    isBroken = false;
    FlowRow row = Row([](bool hasKey, bool) {
        if (isBroken) MessageBoxW(nullptr, u"broken", u"", MB_OK);
        isBroken = !hasKey;
    });
    EXPECT_EQ((std::vector<std::string>{
                  "failing: RegOpenKeyExW 1: afterwards the outcome is \"both; box : broken\""}),
              ComplaintsOf(row, Mode::Call));
}

TEST_F(Harness, SparesCalls) {
    FlowRow row = Row(Nothing);
    row.sparedCalls = {"RegOpenKeyExW"};
    Torturer torturer(row);
    torturer.Count();
    EXPECT_EQ(1u, torturer.RunAll(Mode::Call).runs);
    EXPECT_EQ(1u, torturer.RunAll(Mode::CallsFromThere).failures);
}

TEST(JournalOrder, KnowsWhatIsInOrder) {
    EXPECT_EQ(std::vector<std::string>{},
              OutOfOrder({R"(InternetOpenW("session 7 (", 0) = session 1)",
                          R"(InternetConnectW(session 1, "h") = connection 1)",
                          "InternetReadFile(earlier request 1, 256) = TRUE, 256",
                          "InternetCloseHandle(connection 1) = TRUE", "InternetCloseHandle(session 1) = TRUE",
                          "ConnMgrEstablishConnectionSync({}, 30000) = 0x00000000, link 1, status 0x10",
                          "ConnMgrReleaseConnection(link 1, 0) = 0x00000000",
                          "ConnMgrReleaseConnection(link 1, 0) = 0x00000000"}));
}

TEST(JournalOrder, NamesWhatIsNot) {
    EXPECT_EQ((std::vector<std::string>{"used before it was opened: RegCloseKey(key 1) = 0"}),
              OutOfOrder({"RegCloseKey(key 1) = 0"}));
    EXPECT_EQ((std::vector<std::string>{"used after it was closed: CloseHandle(file 1) = TRUE"}),
              OutOfOrder({"CreateFileW(\"f\") = file 1", "CloseHandle(file 1) = TRUE",
                          "CloseHandle(file 1) = TRUE"}));
    EXPECT_EQ((std::vector<std::string>{"request 1 is never closed"}),
              OutOfOrder({"HttpOpenRequestW(earlier connection 1, null) = request 1"}));
    EXPECT_EQ((std::vector<std::string>{
                  "used before it was opened: ConnMgrReleaseConnection(link 1, 0) = 0x80004005"}),
              OutOfOrder({"ConnMgrReleaseConnection(link 1, 0) = 0x80004005"}));
}
