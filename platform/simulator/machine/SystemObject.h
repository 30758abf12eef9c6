#pragma once

#include "machine/Handles.h"

namespace simulator {

/* What CloseHandle closes: a file or a process. */
struct SystemObject : Object {
    using Object::Object;
};

}  // namespace simulator
