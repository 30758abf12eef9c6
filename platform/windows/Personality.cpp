/* What the compiler's unwinder for 32-bit Windows calls for every function that an exception comes
 * through. */
#include "Exceptions.h"
#include "Landing.h"

/* Once for every frame to find the handler, and once more to go there. */
extern "C" _Unwind_Reason_Code __gxx_personality_v0(int /*version*/, _Unwind_Action step,
                                                    _Unwind_Exception_Class /*kind*/,
                                                    _Unwind_Exception* unwinding, _Unwind_Context* frame) {
    const auto* const table = static_cast<const unsigned char*>(_Unwind_GetLanguageSpecificData(frame));
    if (table == nullptr) return _URC_CONTINUE_UNWIND;
    Exception& exception = Exception::Of(unwinding);
    const Landing landing =
        FindLanding(exception, table, _Unwind_GetRegionStart(frame), _Unwind_GetIP(frame));
    if ((step & _UA_SEARCH_PHASE) != 0) {
        if (landing.clause == 0) return _URC_CONTINUE_UNWIND;
        exception.caughtObject = landing.object;
        return _URC_HANDLER_FOUND;
    }
    if (landing.address == 0) return _URC_CONTINUE_UNWIND;
    _Unwind_SetGR(frame, __builtin_eh_return_data_regno(0), reinterpret_cast<_Unwind_Ptr>(unwinding));
    _Unwind_SetGR(frame, __builtin_eh_return_data_regno(1), static_cast<_Unwind_Word>(landing.clause));
    _Unwind_SetIP(frame, landing.address);
    return _URC_INSTALL_CONTEXT;
}
