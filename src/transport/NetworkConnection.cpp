#include "transport/NetworkConnection.h"

#include "base/Trace.h"
#include "settings/Settings.h"
#include "transport/OnlineConfiguration.h"

namespace {

constexpr DWORD connectTimeout = 30000;  // ms
constexpr uint32_t roamingBit = 0x200;   // of the phone state

}  // namespace

bool EstablishNetworkConnection() {
    GUID network{};
    DWORD index = 0;
    const HRESULT mapped = ConnMgrMapURL(homePage, &network, &index);
    if constexpr (isTraced) Trace(TEXT("find network"), homePage, mapped, 0);
    if (FAILED(mapped)) return false;

    CONNMGR_CONNECTIONINFO info{};
    info.cbSize = sizeof info;
    info.dwParams = CONNMGR_PARAM_GUIDDESTNET;
    info.dwPriority = CONNMGR_PRIORITY_USERINTERACTIVE;
    info.guidDestNet = network;
    HANDLE connection = nullptr;
    DWORD status = 0;
    const HRESULT asked = ConnMgrEstablishConnectionSync(&info, &connection, connectTimeout, &status);
    if constexpr (isTraced)
        Trace(TEXT("dial"), nullptr, FAILED(asked) ? asked : static_cast<HRESULT>(status), 0);
    if (FAILED(asked)) return false;

    if (status == CONNMGR_STATUS_CONNECTED) {
        managedConnection = connection;
        return true;
    }
    ConnMgrReleaseConnection(connection, 0);
    managedConnection = nullptr;
    return false;
}

bool ReleaseNetworkConnection() {
    if (managedConnection != nullptr) ConnMgrReleaseConnection(managedConnection, 0);
    return true;
}

bool IsRoaming() {
    const uint32_t status =
        ReadRegistryDword(HKEY_LOCAL_MACHINE, TEXT("System\\State\\Phone"), TEXT("Status"), 0);
    return (status & roamingBit) != 0;
}
