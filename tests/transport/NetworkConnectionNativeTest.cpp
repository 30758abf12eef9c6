#include "transport/NetworkConnection.h"

#include <gtest/gtest.h>

#include "support/NetworkTest.h"
#include "transport/OnlineConfiguration.h"

namespace {

class NetworkConnection : public NetworkTest {
protected:
    void Answer(const ConnectionAnswers& answers) { device.SetConnectionAnswers(answers); }
};

}  // namespace

TEST_F(NetworkConnection, IsAskedForByTheNetworkOfTheHomePageFor30Seconds) {
    EXPECT_TRUE(EstablishNetworkConnection());
    EXPECT_NE(nullptr, managedConnection);
    const std::vector<std::string> expected = {
        R"(ConnMgrMapURL("http://www.orvande.example/", 0) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000) = "
        "0x00000000, link 1, status 0x10",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(NetworkConnection, UnmappedAddressFailsWithTheConnectionAsItWas) {
    auto* const earlier = reinterpret_cast<HANDLE>(uintptr_t{0x1234});
    managedConnection = earlier;
    Answer({.mapResult = E_FAIL});
    EXPECT_FALSE(EstablishNetworkConnection());
    EXPECT_EQ(earlier, managedConnection);
    EXPECT_EQ(0u, device.CountCalls("ConnMgrEstablishConnectionSync")) << "there is no network to ask for";
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(NetworkConnection, FailedConnectionLeavesTheEarlierOneAsItWas) {
    auto* const earlier = reinterpret_cast<HANDLE>(uintptr_t{0x1234});
    managedConnection = earlier;
    Answer({.establishResult = E_FAIL});
    EXPECT_FALSE(EstablishNetworkConnection());
    EXPECT_EQ(earlier, managedConnection);
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(NetworkConnection, StatusOtherThanConnectedIsGivenUpAtOnceAndClearsTheConnection) {
    for (const DWORD status : {0x00u, 0x0Fu, 0x11u, 0x20u, 0x21u, 0x40u}) {
        SCOPED_TRACE(status);
        managedConnection = reinterpret_cast<HANDLE>(uintptr_t{0x1234});
        device.ForgetCalls();
        Answer({.status = status});
        EXPECT_FALSE(EstablishNetworkConnection());
        EXPECT_EQ(nullptr, managedConnection);
        ASSERT_EQ(1u, device.Calls({"ConnMgrReleaseConnection"}).size());
        EXPECT_NE(std::string::npos, device.Calls({"ConnMgrReleaseConnection"})[0].find(", 0) = "));
    }
}

TEST_F(NetworkConnection, IsRequestedEachTimeThoughOneIsUp) {
    EXPECT_TRUE(EstablishNetworkConnection());
    EXPECT_TRUE(EstablishNetworkConnection());
    EXPECT_EQ(2u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(NetworkConnection, GivenUpItStaysKnownAndMayBeGivenUpAgain) {
    ASSERT_TRUE(EstablishNetworkConnection());
    auto* const connection = managedConnection;
    EXPECT_TRUE(ReleaseNetworkConnection());
    EXPECT_TRUE(ReleaseNetworkConnection());
    EXPECT_EQ(connection, managedConnection);
    const std::vector<std::string> expected = {"ConnMgrReleaseConnection(link 1, 0) = 0x00000000 (2 times)"};
    EXPECT_EQ(expected, device.Calls({"ConnMgrReleaseConnection"}));
}

TEST_F(NetworkConnection, GivingUpNoneDoesNothing) {
    EXPECT_TRUE(ReleaseNetworkConnection());
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(NetworkConnection, GivingUpSucceedsWhateverTheConnectionManagerSays) {
    ASSERT_TRUE(EstablishNetworkConnection());
    Answer({.releaseResult = E_FAIL});
    EXPECT_TRUE(ReleaseNetworkConnection());
}
