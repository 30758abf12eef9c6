#include "machine/DeviceMachine.h"

#include "machine/Failures.h"
#include "machine/Handles.h"
#include "machine/Journal.h"
#include "machine/Violations.h"

void DeviceMachine::BeginTest() {
    simulator::ResetFailures();
    simulator::Handles::Current().BeginTest();
    simulator::Journal::Current().Clear();
    SetLastError(ERROR_SUCCESS);
}

void DeviceMachine::EndTest() {
    for (const std::string& name : simulator::Handles::Current().CloseLeaks()) {
        simulator::Violate(name + " is still open at the end of the test");
    }
    simulator::ResetFailures();
}
