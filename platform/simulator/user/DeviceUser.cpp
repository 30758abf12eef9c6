#include "user/DeviceUser.h"

#include "user/ModalDialogs.h"
#include "user/Scripts.h"
#include "user/User.h"

namespace {

void Reset() {
    simulator::ResetDialogs();
    simulator::ResetScripts();
    simulator::ResetUser();
}

}  // namespace

void DeviceUser::BeginTest() {
    Reset();
}

void DeviceUser::EndTest() {
    simulator::ReportUser();
    simulator::ReportScripts();
    Reset();
}
