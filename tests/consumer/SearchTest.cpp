/* The application's search on the simulated handheld: with a scripted host in its network, or with the
 * service that listens on the port that is given. */
#include <Device.h>
#include <network/NetworkWeb.h>

#include <cstdio>
#include <cstdlib>

#include "Search.h"

namespace {

/* Success, no maps, and the number of maps in the shop. */
WebHandler ScriptedShop() {
    const std::string reply("\0\0\0\0\0\0\0\0\x26\0\0\0", 12);
    return [reply](const WebRequest&) { return WebReply::WithBody(reply); };
}

}  // namespace

int main(int count, char** values) {
    Device& device = Device::Current();
    device.BeginTest();
    device.AddHost(u"online.orvande.example", 80,
                   count > 1 ? HostOnLoopback(static_cast<uint16_t>(std::atoi(values[1]))) : ScriptedShop());
    int32_t results = 0;
    const int32_t maps = SearchShop(&results);
    device.EndTest();
    std::printf("%d of %d maps\n", static_cast<int>(results), static_cast<int>(maps));
    return 0;
}
