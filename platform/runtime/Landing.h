/* Where a function goes on when an exception comes through it. */
#pragma once

#include "Exceptions.h"

struct Landing {
    _Unwind_Ptr address = 0; /* 0: nowhere, the exception goes on to the caller */
    int clause = 0;          /* which `catch` it is; 0: none, only objects are destroyed */
    void* object = nullptr;  /* what the `catch` gets */
};

/* Looks the place of the frame's call up in its function's table. Does not come back when no exception may
 * leave the function there. */
Landing FindLanding(Exception& exception, _Unwind_Context* frame);
