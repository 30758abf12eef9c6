/* The simulated handheld, as tests see it.
 *
 * The simulator implements the platform functions that the library calls. What the machine holds and how it
 * answers is scripted through Device, and everything that the library did is read back from it. There is one
 * machine in the process. BeginTest makes it new; EndTest looks for what was left open. It also works outside
 * of a test, for the objects that the library creates before main and destroys after it; it is bare then: no
 * files, no registry, no hosts.
 *
 * Every room of the simulator that tests script or look into has a part of Device, in a header of its own.
 *
 * Text is UTF-16 in std::u16string, which is the library's own wide string here. Everything runs on one
 * thread. */
#pragma once

#include "Platform.h"

#include "machine/AllocationWatch.h"
#include "machine/CallWatch.h"
#include "machine/DeviceMachine.h"
#include "modules/DeviceModules.h"
#include "network/DeviceNetwork.h"
#include "programs/DevicePrograms.h"
#include "storage/DeviceStorage.h"
#include "user/DeviceUser.h"

class Device : public DeviceMachine,
               public DeviceStorage,
               public DeviceNetwork,
               public DeviceModules,
               public DevicePrograms,
               public DeviceUser {
public:
    static Device& Current();

    /* Makes a new machine: a folder of its own, an empty registry, no hosts, default answers, an empty
     * journal, nothing set to fail. What is open at this point stays open and does not count as a leak
     * later. */
    void BeginTest();

    /* Reports as violations: internet handles, registry keys, files, process handles, windows and menus that
     * were opened since BeginTest and are still open, scripted answers for message boxes that were never
     * shown, scripts for dialogs that were never needed, a wait cursor left on. Closes and removes
     * everything; windows get no messages about it. */
    void EndTest();

    /* Between two of a test's many runs: reports and closes what is left open, as EndTest does, and makes the
     * machine new but for files, registry, modules and hosts, which take the time. Answers and scripts that
     * were not needed, and a cursor, are not reported. */
    void BeginRun();

private:
    Device() = default;
};
