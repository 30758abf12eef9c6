#include "Device.h"

#include "machine/Failures.h"
#include "machine/Handles.h"
#include "machine/Journal.h"
#include "machine/Violations.h"
#include "modules/Modules.h"
#include "modules/Resources.h"
#include "network/ConnectionManager.h"
#include "network/Web.h"
#include "programs/Processes.h"
#include "screen/Menus.h"
#include "screen/Screen.h"
#include "storage/Registry.h"
#include "storage/Storage.h"
#include "user/ModalDialogs.h"
#include "user/Scripts.h"
#include "user/User.h"

namespace {

void Reset() {
    simulator::ResetConnectionManager();
    simulator::ResetDialogs();
    simulator::ResetFailures();
    simulator::ResetModules();
    simulator::ResetPrograms();
    simulator::ResetRegistry();
    simulator::ResetResources();
    simulator::ResetScripts();
    simulator::ResetSpecialFolders();
    simulator::ResetUser();
    simulator::ResetWeb();
    simulator::Screen::Current().Reset();
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
    simulator::Screen::Current().ReportLeaks();
    simulator::ReportMenus();
    for (const std::string& name : simulator::Handles::Current().CloseLeaks()) {
        simulator::Violate(name + " is still open at the end of the test");
    }
    simulator::ReportUser();
    simulator::ReportScripts();
    Reset();
    simulator::Storage::Current().EndTest();
}
