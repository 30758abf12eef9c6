/* Where a function goes on when an exception comes through it. */
#pragma once

#include "Exceptions.h"

struct Landing {
    _Unwind_Ptr address = 0; /* 0: nowhere, the exception goes on to the caller */
    int clause = 0;          /* which `catch` it is; 0: none, only objects are destroyed */
    void* object = nullptr;  /* what the `catch` gets */
};

/* Looks a call up in the table of the function that begins at `start`; the call returns to `returnAddress`.
 * Does not come back when no exception may leave the function there. */
Landing FindLanding(Exception& exception, const unsigned char* table, _Unwind_Ptr start,
                    _Unwind_Ptr returnAddress);
