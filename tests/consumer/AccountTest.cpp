/* The application's account on the simulated handheld, whose program has the library's resources. */
#include <Device.h>

#include "Account.h"
#include "resources/ResourceIds.h"

int main() {
    Device& device = Device::Current();
    device.BeginTest();
    device.SetResources(device.ProgramInstance(), ReadResourceFile(RESOURCE_FILE));
    const Account account = AccountOfApplication(device.ProgramInstance());
    const bool hasResources = FindResourceW(device.ProgramInstance(), MAKEINTRESOURCEW(SIGN_IN_DIALOG),
                                            MAKEINTRESOURCEW(5)) != nullptr;
    device.EndTest();
    return hasResources && account.productCode == 1 && account.userId.empty() ? 0 : 1;
}
