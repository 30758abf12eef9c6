/* The boundary for exceptions: whatever the system or an application calls runs inside it. */
#pragma once

/* The result of `operation`, or `failure` when it throws. The one exception that is expected is that memory
 * runs out; none may reach a caller that knows nothing of C++. */
template <class Result, class Operation>
Result Contained(Result failure, Operation operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return failure;
    }
}

/* As above, for an operation without a result: true when it came to its end. */
template <class Operation>
bool RunContained(Operation operation) noexcept {
    return Contained(false, [&] {
        operation();
        return true;
    });
}
