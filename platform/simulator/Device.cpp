#include "Device.h"

#include "ConnectionManager.h"
#include "Dialogs.h"
#include "Failures.h"
#include "Handles.h"
#include "Journal.h"
#include "Menus.h"
#include "Modules.h"
#include "Processes.h"
#include "Registry.h"
#include "Resources.h"
#include "Screen.h"
#include "Scripts.h"
#include "Storage.h"
#include "User.h"
#include "Violations.h"
#include "Web.h"

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
