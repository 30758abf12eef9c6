/* Throwing and catching: the functions that the compiler calls for `throw` and `catch`. They take the place
 * of the compiler's own, which are larger, take a reserve of 19 KB on Windows that is not given back, and
 * there also semaphores and memory for every thread.
 *
 * An image's exceptions never leave it and no other come in, so there are no foreign ones here, and no copies
 * of pointers to them. */
#include "Exceptions.h"

#include "ImageThreads.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

/* Room for an exception of the standard library's, of which the largest holds a pointer. */
struct Reserved {
    Exception exception;
    void* object[2];
    bool isTaken;
};

/* More exceptions than that are not at once in flight when there is no memory. */
constexpr size_t reservedCount = 8;
Reserved* reserve;

/* The exceptions that are being handled, the last caught first. */
Exception* caught;

void* TakeReserved(size_t size) {
    if (reserve == nullptr || size > sizeof(Reserved::object)) return nullptr;
    const ThreadLock lock;
    for (Reserved* place = reserve; place != reserve + reservedCount; ++place) {
        if (place->isTaken) continue;
        place->isTaken = true;
        return place;
    }
    return nullptr;
}

/* The last exception that this thread has caught, where the list holds it; a null pointer there if there is
 * none. Called under the lock. */
Exception** LastCaught() {
    const unsigned long thread = CurrentThread();
    Exception** place = &caught;
    while (*place != nullptr && (*place)->thread != thread)
        place = &(*place)->nextCaught;
    return place;
}

}  // namespace

Exception& Exception::Of(_Unwind_Exception* unwinding) {
    auto* const bytes = reinterpret_cast<std::byte*>(unwinding);
    return *static_cast<Exception*>(static_cast<void*>(bytes - offsetof(Exception, unwinding)));
}

bool TakeExceptionReserve() noexcept {
    reserve = static_cast<Reserved*>(std::malloc(reservedCount * sizeof(Reserved)));
    if (reserve == nullptr) return false;
    std::memset(reserve, 0, reservedCount * sizeof(Reserved));
    return true;
}

void ReturnExceptionReserve() noexcept {
    std::free(reserve);
    reserve = nullptr;
}

void std::terminate() noexcept {
    std::abort();
}

extern "C" {

void* __cxa_allocate_exception(size_t size) noexcept {
    void* memory = std::malloc(sizeof(Exception) + size);
    if (memory == nullptr) memory = TakeReserved(size);
    if (memory == nullptr) std::terminate();
    std::memset(memory, 0, sizeof(Exception));
    return static_cast<Exception*>(memory)->Object();
}

void __cxa_free_exception(void* object) noexcept {
    void* const memory = static_cast<Exception*>(object) - 1;
    auto* const place = static_cast<Reserved*>(memory);
    if (reserve != nullptr && place >= reserve && place < reserve + reservedCount)
        place->isTaken = false;
    else
        std::free(memory);
}

void __cxa_throw(void* object, std::type_info* type, Destroy destroy) {
    Exception& exception = static_cast<Exception*>(object)[-1];
    exception.type = type;
    exception.destroy = destroy;
    _Unwind_RaiseException(&exception.unwinding);
    // It comes back when there is no handler.
    std::terminate();
}

void* __cxa_begin_catch(void* unwinding) noexcept {
    Exception& exception = Exception::Of(static_cast<_Unwind_Exception*>(unwinding));
    exception.handlers = (exception.handlers < 0 ? -exception.handlers : exception.handlers) + 1;
    const ThreadLock lock;
    if (*LastCaught() != &exception) {
        exception.thread = CurrentThread();
        exception.nextCaught = caught;
        caught = &exception;
    }
    return exception.caughtObject;
}

void __cxa_end_catch() {
    Exception* exception = nullptr;
    bool isOver = false;
    {
        const ThreadLock lock;
        Exception** const place = LastCaught();
        exception = *place;
        const bool isThrownOn = exception->handlers < 0;
        exception->handlers += isThrownOn ? 1 : -1;
        if (exception->handlers == 0) *place = exception->nextCaught;
        isOver = exception->handlers == 0 && !isThrownOn;
    }
    if (!isOver) return;
    if (exception->destroy != nullptr) exception->destroy(exception->Object());
    __cxa_free_exception(exception->Object());
}

void __cxa_rethrow() {
    Exception* exception = nullptr;
    {
        const ThreadLock lock;
        exception = *LastCaught();
    }
    if (exception != nullptr) {
        exception->handlers = -exception->handlers;
        _Unwind_Resume_or_Rethrow(&exception->unwinding);
    }
    std::terminate();
}
}
