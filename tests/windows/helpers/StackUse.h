/* Measuring the stack that a call needs, the system's part included. */
#pragma once

#include <cstddef>
#include <functional>

/* Runs `call` on a thread of its own, whose stack is painted before, and gives the bytes of it that are used
 * afterwards, 256 KB at most. Throws std::runtime_error when there is no thread to be had. */
size_t StackUseOf(const std::function<void()>& call);
