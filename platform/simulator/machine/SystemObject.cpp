#include "machine/SystemObject.h"

#include "machine/Call.h"

BOOL WINAPI CloseHandle(HANDLE handle) {
    using simulator::Handles;
    simulator::Call call("CloseHandle");
    call.Arguments({Handles::Current().NameOf(handle)});
    if (Handles::Current().Find<simulator::SystemObject>(handle, call) == nullptr)
        return call.False(ERROR_INVALID_HANDLE);
    Handles::Current().Close(handle);
    return call.MustFail() ? call.False(call.OrderedError()) : call.True();
}
