/* Exceptions of an image, with what is kept of each one in front of the object that is thrown. */
#pragma once

#include <cxxabi.h>
#include <typeinfo>
// The compiler's interface to its unwinder.
#include <unwind.h>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"  // that it is no member of a class
/* As the compiler calls destructors, which on Windows is not as it calls functions. */
using Destroy = void(_GLIBCXX_CDTOR_CALLABI*)(void*);
#pragma GCC diagnostic pop

struct Exception {
    const std::type_info* type;
    Destroy destroy;       /* null: there is nothing to be done for the object */
    Exception* nextCaught; /* the one that was caught before, of any thread */
    unsigned long thread;  /* the one that caught it */
    int handlers;          /* how many handlers are at it; negative while it is thrown on */
    void* caughtObject;    /* the object as its handler wants it: a base of the thrown one */
    Exception* nextCleaning;
    _Unwind_Exception unwinding; /* the unwinder's part */

    static Exception& Of(_Unwind_Exception* unwinding);
    void* Object() { return this + 1; }
};

/* Takes the memory from which exceptions are thrown when there is no other. False: there is none. */
bool TakeExceptionReserve() noexcept;

void ReturnExceptionReserve() noexcept;
