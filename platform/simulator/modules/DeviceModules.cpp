#include "modules/DeviceModules.h"

#include "modules/Modules.h"
#include "modules/Resources.h"

void DeviceModules::Reset() {
    simulator::ResetModules();
    simulator::ResetResources();
}
