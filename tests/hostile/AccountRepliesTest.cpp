/* Replies to a sign-in and to the request for a new account: every value, cut at every byte, in every
 * division. */
#include <optional>

#include "LMAccount.h"
#include "account/CreateAccountScreen.h"
#include "account/SignIn.h"
#include "hostile/Portions.h"
#include "hostile/ReplyModel.h"
#include "hostile/Tally.h"
#include "machine/LimitedHeap.h"

namespace {

constexpr int32_t numbers[] = {INT32_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 12, 13, 14, 15, INT32_MAX - 1, INT32_MAX};

WebReply ReplyOf(const Arrival& arrival, const Portions& portions) {
    WebReply reply = WebReply::WithBody(std::string(arrival.bytes));
    reply.chunks = portions;
    reply.status = arrival.httpStatus;
    if (arrival.atEnd == LM_ERROR_REPLY_ENDED) return reply;
    reply.breaks = WebReply::Break::Reset;
    reply.breakAt = arrival.bytes.size();
    reply.resetError = arrival.atEnd;
    return reply;
}

/* Calls `attempt` with the first bytes of `whole` that may come, in every division and with every end. */
template <class Attempt>
void ForEachArrival(const std::string& whole, const Attempt& attempt) {
    for (size_t size = 0; size <= whole.size(); ++size) {
        for (const DWORD atEnd : {DWORD{LM_ERROR_REPLY_ENDED}, DWORD{10054}}) {
            Arrival arrival{std::string_view(whole).substr(0, size)};
            arrival.atEnd = atEnd;
            for (const Portions& portions : EveryDivision(size))
                attempt(arrival, portions);
            arrival.httpStatus = 403;
            attempt(arrival, Portions{1});
        }
    }
}

class HostileSignIn : public AccountTest {
protected:
    struct Expected {
        DWORD error = 0;
        std::u16string box;
        size_t reads = 0;
    };

    static Expected ExpectedOf(const Arrival& arrival, const Portions& portions) {
        ReplyModel reply(arrival);
        const int32_t status = reply.Int32(-1);
        const int32_t state = status == 0 ? reply.Int32(-1) : -1;
        Expected expected{reply.CauseOf(status), {}, ReadsFor(reply.consumed, portions, 256)};
        expected.reads += reply.shortfalls;
        if (expected.error == 0 && state != 0)
            expected.error = 0x23000000U + (static_cast<uint32_t>(state) & 0xFFFFFFU);
        if (status == 4)
            expected.box =
                u"The User ID is not correct. If you have lost your ID, click the \"I Forgot\" button. Do "
                u"not "
                u"create more than one account.";
        else if (status == 5)
            expected.box =
                u"The Password is not correct. If you have lost your password, click the \"I Forgot\" "
                u"button.";
        else if (status != 0 || state != 0)
            expected.box = u"A problem occured communicating with the server";
        return expected;
    }

    void ExpectClosed(size_t reads) {
        EXPECT_EQ(reads, device.CountCalls("InternetReadFile"));
        EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
        EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
    }

    void Try(const Arrival& arrival, const Portions& portions) {
        tally->Add();
        const Expected expected = ExpectedOf(arrival, portions);
        Answer(ReplyOf(arrival, portions));
        device.ForgetCalls();
        LimitedHeap heap(SIZE_MAX);
        const LMInt32 result = LMAccountSignIn(&record);
        const DWORD error = GetLastError();
        EXPECT_EQ(expected.error == 0 ? 1 : 0, result);
        EXPECT_EQ(expected.error, error);
        EXPECT_LE(heap.Peak(), 200 * size_t{1024});
        EXPECT_EQ(0u, heap.Used());
        ExpectClosed(expected.reads);
        ExpectTold(expected);
    }

    void ExpectTold(const Expected& expected) {
        device.ForgetCalls();
        const size_t earlier = device.MessageBoxes().size();
        if (!expected.box.empty()) ExpectMessage();
        EXPECT_EQ(expected.box.empty(), SignIn(account, nullptr));
        EXPECT_EQ(earlier + (expected.box.empty() ? 0 : 1), device.MessageBoxes().size());
        if (!expected.box.empty()) ExpectBox(expected.box, 0);
        ExpectClosed(expected.reads);
    }

    void SetUp() override {
        AccountTest::SetUp();
        account.userId = TEXT("Anna");
        account.password = TEXT("secret1");
        record.size = sizeof record;
        std::copy(account.userId.begin(), account.userId.end(), record.userId);
        std::copy(account.password.begin(), account.password.end(), record.password);
    }

    std::optional<Tally> tally;
    LMAccountRecord record{};
};

class HostileCreation : public CreateAccountScreen {
protected:
    struct Expected {
        bool isCreated = false;
        bool staysOpen = true;
        std::u16string box;
        size_t reads = 0;
    };

    static Expected ExpectedOf(const Arrival& arrival, const Portions& portions) {
        ReplyModel reply(arrival);
        const int32_t code = reply.Int32(-1);
        Expected expected;
        expected.reads = ReadsFor(reply.consumed, portions, 256) + reply.shortfalls;
        expected.isCreated = reply.isGood && code == 0;
        expected.staysOpen = !expected.isCreated && (code != 13 || !reply.isGood);
        if (!expected.isCreated) expected.box = reply.isGood ? TextOf(code) : u"Internal server error";
        return expected;
    }

    static std::u16string TextOf(int32_t code) {
        switch (code) {
            case 2:
                return u"This user name is already in use.\nIf this is your account and you have forgotten "
                       u"the "
                       u"User ID or Password, click \"Cancel\" and \"I Forgot\" to recover them.";
            case 3:
                return u"The password must be at least 6 letters or numbers";
            case 13:
                return u"An account already exists with the same email address. Please sign in to that "
                       u"account.\nIf you have forgotten the User ID or Password, click \"Forgot\" to "
                       u"recover "
                       u"them.";
            case 14:
                return u"You must provide a valid email address.";
            default:
                break;
        }
        const std::string number = std::to_string(code);
        return u"The server returned error code " + std::u16string(number.begin(), number.end());
    }

    void Try(const Arrival& arrival, const Portions& portions) {
        tally->Add();
        const Expected expected = ExpectedOf(arrival, portions);
        Answer(ReplyOf(arrival, portions));
        device.ForgetCalls();
        const size_t earlier = device.MessageBoxes().size();
        LimitedHeap heap(SIZE_MAX);
        const bool isCreated = Run([&](DialogUser& user) {
            Fill(user);
            if (!expected.box.empty()) ExpectMessage();
            user.PressButton(IDOK);
            EXPECT_EQ(expected.staysOpen, user.IsOpen());
            if (user.IsOpen()) user.PressButton(IDCANCEL);
        });
        EXPECT_EQ(expected.isCreated, isCreated);
        EXPECT_EQ(earlier + (expected.box.empty() ? 0 : 1), device.MessageBoxes().size());
        if (!expected.box.empty()) ExpectBox(expected.box, MB_ICONHAND);
        EXPECT_EQ(expected.isCreated ? "UserID=Anna\r\n" : "no file", SettingsFile());
        DeleteFileW(settingsFile);
        EXPECT_LE(heap.Peak(), 200 * size_t{1024});
        EXPECT_EQ(expected.reads, device.CountCalls("InternetReadFile"));
        EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
        EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
    }

    std::optional<Tally> tally;
};

}  // namespace

TEST_F(HostileSignIn, AnyValuesEndAtEveryByteInEveryDivision) {
    tally.emplace("sign-in reply");
    for (const int32_t status : {0, 4, 7}) {
        for (const int32_t state : numbers) {
            // Behind a refusal no state is read.
            if (status != 0 && state != 0 && state != 4) continue;
            SCOPED_TRACE(std::to_string(status) + " " + std::to_string(state));
            ForEachArrival(
                MapShopReply().Int32(status).Int32(state).bytes,
                [this](const Arrival& arrival, const Portions& portions) { Try(arrival, portions); });
            if (HasFailure()) return;
        }
    }
    for (const int32_t status : numbers) {
        SCOPED_TRACE(status);
        ForEachArrival(MapShopReply().Int32(status).bytes,
                       [this](const Arrival& arrival, const Portions& portions) { Try(arrival, portions); });
    }
}

TEST_F(HostileSignIn, MegabytesBehindTheReplyAreLeftAlone) {
    tally.emplace("sign-in reply that does not end");
    const std::string bytes = MapShopReply().Int32(0).Int32(0).bytes + std::string(size_t{4} << 20, '\0');
    for (const Portions& portions : SmallPortions(8))
        Try({bytes}, portions);
}

TEST_F(HostileCreation, AnyValueEndsAtEveryByteInEveryDivision) {
    tally.emplace("creation reply");
    for (const int32_t code : numbers) {
        SCOPED_TRACE(code);
        ForEachArrival(MapShopReply().Int32(code).bytes,
                       [this](const Arrival& arrival, const Portions& portions) { Try(arrival, portions); });
        if (HasFailure()) return;
    }
}

TEST_F(HostileCreation, MegabytesBehindTheReplyAreLeftAlone) {
    tally.emplace("creation reply that does not end");
    const std::string bytes = MapShopReply().Int32(0).bytes + std::string(size_t{4} << 20, '\0');
    for (const Portions& portions : SmallPortions(4))
        Try({bytes}, portions);
}
