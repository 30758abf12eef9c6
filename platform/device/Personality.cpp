/* What the compiler's unwinder for ARM calls for every function that an exception comes through. */
#include "Exceptions.h"
#include "Landing.h"

namespace {

/* The exceptions for which objects are being destroyed; where the last one goes on. */
Exception* cleaning;

/* Takes the frame away, and the exception on to the caller. */
_Unwind_Reason_Code Continue(_Unwind_Exception* unwinding, _Unwind_Context* frame) {
    return __gnu_unwind_frame(unwinding, frame) == _URC_OK ? _URC_CONTINUE_UNWIND : _URC_FAILURE;
}

void Enter(const Landing& landing, Exception& exception, _Unwind_Context* frame) {
    _Unwind_SetGR(frame, 0, reinterpret_cast<_Unwind_Word>(&exception.unwinding));
    _Unwind_SetGR(frame, 1, static_cast<_Unwind_Word>(landing.clause));
    _Unwind_SetIP(frame, landing.address);
}

}  // namespace

extern "C" {

/* Once for every frame to find the handler, and once more to go there. */
_Unwind_Reason_Code __gxx_personality_v0(_Unwind_State state, _Unwind_Exception* unwinding,
                                         _Unwind_Context* frame) {
    const int step = state & _US_ACTION_MASK;
    if (step == _US_UNWIND_FRAME_RESUME) return Continue(unwinding, frame);
    // Where the functions that look at the frame expect it.
    _Unwind_SetGR(frame, UNWIND_POINTER_REG, reinterpret_cast<_Unwind_Word>(unwinding));
    Exception& exception = Exception::Of(unwinding);
    const Landing landing = FindLanding(exception, frame);
    if (step == _US_VIRTUAL_UNWIND_FRAME) {
        if (landing.clause == 0) return Continue(unwinding, frame);
        exception.caughtObject = landing.object;
        unwinding->barrier_cache.sp = _Unwind_GetGR(frame, UNWIND_STACK_REG);
        return _URC_HANDLER_FOUND;
    }
    if (landing.address == 0) return Continue(unwinding, frame);
    if (landing.clause == 0) {
        exception.nextCleaning = cleaning;
        cleaning = &exception;
    }
    Enter(landing, exception, frame);
    return _URC_INSTALL_CONTEXT;
}

/* Called at the end of a landing that only destroys objects: the exception goes on. */
_Unwind_Exception* EndCleaning() {
    Exception& exception = *cleaning;
    cleaning = exception.nextCleaning;
    return &exception.unwinding;
}

__attribute__((naked)) void __cxa_end_cleanup() {
    asm("bl EndCleaning\n\tb _Unwind_Resume");
}
}
