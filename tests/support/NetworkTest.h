/* A test on the simulated handheld in which the library's network state is that of a new process. */
#pragma once

#include "support/DeviceTest.h"

#include "Device.h"
#include "transport/NetworkConnection.h"
#include "transport/WebConnection.h"

class NetworkTest : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        Forget();
    }
    void TearDown() override {
        Forget();
        DeviceTest::TearDown();
    }

    Device& device = Device::Current();

private:
    static void Forget() {
        managedConnection = nullptr;
        roamingWarningAccepted = false;
    }
};
