#include "Device.h"

#include "ConnectionManager.h"
#include "Failures.h"
#include "Handles.h"
#include "Journal.h"
#include "Modules.h"
#include "Registry.h"
#include "Storage.h"
#include "User.h"
#include "Violations.h"
#include "Web.h"

namespace {

void Reset() {
    simulator::ResetConnectionManager();
    simulator::ResetFailures();
    simulator::ResetModules();
    simulator::ResetRegistry();
    simulator::ResetSpecialFolders();
    simulator::ResetUser();
    simulator::ResetWeb();
}

}  // namespace

Device& Device::Current() {
    // Never destroyed: the library's own static objects are closed after main.
    static Device& device = *new Device;
    return device;
}

void Device::BeginTest() {
    Reset();
    simulator::Handles::Current().BeginTest();
    simulator::AcceptOpenFiles();
    simulator::Storage::Current().BeginTest();
    simulator::Journal::Current().Clear();
    SetLastError(ERROR_SUCCESS);
}

void Device::EndTest() {
    simulator::ResetFailures();
    simulator::ReportOpenFiles();
    for (const std::string& name : simulator::Handles::Current().CloseLeaks()) {
        simulator::Violate(name + " is still open at the end of the test");
    }
    simulator::ReportUser();
    Reset();
    simulator::Storage::Current().EndTest();
}
