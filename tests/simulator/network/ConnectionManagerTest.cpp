#include "SimulatorTest.h"

namespace {

class ConnectionManager : public SimulatorTest {
protected:
    static CONNMGR_CONNECTIONINFO Information() {
        CONNMGR_CONNECTIONINFO information{};
        information.cbSize = sizeof information;
        return information;
    }

    struct Established {
        HRESULT result;
        HANDLE link;
        DWORD status;
    };

    static Established Establish(CONNMGR_CONNECTIONINFO information) {
        Established established{S_OK, nullptr, 99};
        established.result =
            ConnMgrEstablishConnectionSync(&information, &established.link, 30000, &established.status);
        return established;
    }
};

}  // namespace

TEST_F(ConnectionManager, ConnectsUnlessToldOtherwise) {
    const Established established = Establish(Information());
    EXPECT_EQ(S_OK, established.result);
    EXPECT_NE(nullptr, established.link);
    EXPECT_EQ(DWORD{CONNMGR_STATUS_CONNECTED}, established.status);
    EXPECT_EQ(S_OK, ConnMgrReleaseConnection(established.link, 1));
}

TEST_F(ConnectionManager, JournalNamesTheFieldsThatAreNotZero) {
    GUID network{};
    DWORD index = 2;
    ConnMgrMapURL(u"http://host/", &network, &index);
    CONNMGR_CONNECTIONINFO information = Information();
    information.guidDestNet = network;
    information.dwParams = CONNMGR_PARAM_GUIDDESTNET;
    information.bExclusive = TRUE;
    information.lParam = 0x1F;
    Establish(information);
    information = Information();
    information.guidDestNet.Data1 = 0xAB;
    Establish(information);
    Establish(Information());
    const Lines expected = {
        R"(ConnMgrMapURL("http://host/", 2) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, bExclusive 0x1, guidDestNet mapped, lParam 0x1F}, "
        "30000)"
        " = 0x00000000, link 1, status 0x10",
        "ConnMgrEstablishConnectionSync({guidDestNet {0x000000AB...}}, 30000) = 0x00000000, link 2, status "
        "0x10",
        "ConnMgrEstablishConnectionSync({}, 30000) = 0x00000000, link 3, status 0x10",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(ConnectionManager, ScriptedStatusComesWithAHandle) {
    device.SetConnectionAnswers({.status = 0x20});
    const Established established = Establish(Information());
    EXPECT_EQ(S_OK, established.result);
    EXPECT_NE(nullptr, established.link);
    EXPECT_EQ(0x20u, established.status);
}

TEST_F(ConnectionManager, ScriptedFailuresLeaveTheResultsAlone) {
    device.SetConnectionAnswers({.mapResult = E_FAIL, .establishResult = E_ACCESSDENIED});
    GUID network{};
    EXPECT_EQ(E_FAIL, ConnMgrMapURL(u"http://host/", &network, nullptr));
    EXPECT_EQ(0u, network.Data1);
    const Established established = Establish(Information());
    EXPECT_EQ(E_ACCESSDENIED, established.result);
    EXPECT_EQ(nullptr, established.link);
    EXPECT_EQ(99u, established.status);
}

TEST_F(ConnectionManager, OrderedFailureIsTheResult) {
    device.FailCall("ConnMgrEstablishConnectionSync", 1, static_cast<DWORD>(E_FAIL));
    EXPECT_EQ(E_FAIL, Establish(Information()).result);
    EXPECT_EQ(S_OK, Establish(Information()).result);
}

TEST_F(ConnectionManager, LinksMayStayUpAndBeReleasedTwiceAndInLaterTests) {
    const HANDLE link = Establish(Information()).link;
    EXPECT_EQ(S_OK, ConnMgrReleaseConnection(link, 0));
    EXPECT_EQ(S_OK, ConnMgrReleaseConnection(link, 0));
    device.EndTest();
    device.BeginTest();
    EXPECT_EQ(S_OK, ConnMgrReleaseConnection(link, 0));
    EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(ConnectionManager, NullAndUnknownHandlesAreErrorsAndTheLatterViolations) {
    EXPECT_EQ(E_INVALIDARG, ConnMgrReleaseConnection(nullptr, 0));
    EXPECT_EQ(Lines{}, TakeViolations());
    EXPECT_EQ(E_INVALIDARG, ConnMgrReleaseConnection(reinterpret_cast<HANDLE>(uintptr_t{5}), 0));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(ConnectionManager, WrongSizeIsAViolation) {
    CONNMGR_CONNECTIONINFO information = Information();
    information.cbSize = 4;
    EXPECT_EQ(E_INVALIDARG, Establish(information).result);
    EXPECT_EQ(Lines{"ConnMgrEstablishConnectionSync({}, 30000): cbSize is 4"}, TakeViolations());
}

TEST_F(ConnectionManager, NullArgumentsAreErrors) {
    GUID network{};
    EXPECT_EQ(E_INVALIDARG, ConnMgrMapURL(nullptr, &network, nullptr));
    EXPECT_EQ(E_INVALIDARG, ConnMgrMapURL(u"http://host/", nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG, ConnMgrEstablishConnectionSync(nullptr, nullptr, 0, nullptr));
}
