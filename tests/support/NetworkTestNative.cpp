#include "support/NetworkTest.h"

#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"

namespace {

void ForgetNetworkState() {
    managedConnection = nullptr;
    roamingWarningAccepted = false;
}

}  // namespace

void NetworkTest::SetUp() {
    DeviceTest::SetUp();
    ForgetNetworkState();
}

void NetworkTest::TearDown() {
    ForgetNetworkState();
    DeviceTest::TearDown();
}
