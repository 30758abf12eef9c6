#include "Device.h"

#include "machine/Handles.h"
#include "network/Web.h"
#include "screen/Screen.h"
#include "storage/Storage.h"

using simulator::Screen;

Device& Device::Current() {
    // Never destroyed: the library's own static objects are closed after main.
    static Device& device = *new Device;
    return device;
}

void Device::BeginTest() {
    DeviceUser::BeginTest();
    DevicePrograms::Reset();
    Screen::Current().BeginTest();
    DeviceModules::Reset();
    DeviceNetwork::Reset();
    DeviceStorage::BeginTest();
    DeviceMachine::BeginTest();
}

void Device::EndTest() {
    // What is closed now shall not fail.
    StopFailing();
    // Files, windows and menus have reports of their own; the handles that are left then are leaks.
    DeviceStorage::EndTest();
    Screen::Current().EndTest();
    DeviceMachine::EndTest();
    DeviceUser::EndTest();
    DevicePrograms::Reset();
    DeviceModules::Reset();
    DeviceNetwork::Reset();
}

void Device::BeginRun() {
    StopFailing();
    simulator::ReportOpenFiles();
    Screen::Current().EndTest();
    DeviceMachine::EndTest();
    simulator::Handles::Current().CloseOpened();
    DeviceUser::BeginTest();
    DevicePrograms::Reset();
    Screen::Current().BeginTest();
    simulator::ForgetRequests();
    simulator::AcceptOpenFiles();
    DeviceMachine::BeginTest();
}
