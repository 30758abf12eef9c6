#include "network/DeviceNetwork.h"

#include "network/ConnectionManager.h"
#include "network/Web.h"

void DeviceNetwork::Reset() {
    simulator::ResetConnectionManager();
    simulator::ResetWeb();
}
