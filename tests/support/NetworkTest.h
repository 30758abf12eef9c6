/* A test on the simulated handheld in which the library's network state is that of a new process: in the
 * native ring it is set so, in the device ring the library is loaded anew for each test. */
#pragma once

#include "support/DeviceTest.h"

#include "Device.h"

class NetworkTest : public DeviceTest {
protected:
    void SetUp() override;
    void TearDown() override;

    Device& device = Device::Current();
};
