#pragma once

#include "Platform.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "machine/Failing.h"

/* Counts the calls of platform functions, all together in their order, while it exists, and can make one of
 * them fail, as DeviceMachine::FailCall does with one function's. The functions are those that FailCall
 * knows. One at a time. */
class CallWatch {
public:
    CallWatch() : CallWatch(0, 0) {}

    /* Makes the n-th call (1: the first; 0: none) fail with `error`, and with FromThereOn all after it. Calls
     * of the functions in `spared` are counted, but do not fail. */
    CallWatch(size_t n, DWORD error, Failing failing = Failing::Once,
              std::vector<std::string_view> spared = {});

    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;
    ~CallWatch();

    /* The functions that were called. They keep their names when the watch has ended. */
    const std::vector<std::string_view>& Functions() const { return functions_; }

    /* A call that was made to fail. */
    struct Failure {
        size_t number;        // of the call, from 1
        bool isBehindMemory;  // an AllocationWatch had made an allocation fail before
    };
    const std::vector<Failure>& Failures() const { return failed_; }

    /* Ends the watch early; what was counted stays. */
    void Stop();

    /* For the simulator: the error with which the call that begins must fail, if it must. */
    std::optional<DWORD> Take(std::string_view function);

private:
    [[nodiscard]] bool IsSpared(std::string_view function) const;

    size_t firstFailing_;
    DWORD error_;
    Failing failing_;
    std::vector<std::string_view> spared_;
    std::vector<std::string_view> functions_;
    std::vector<Failure> failed_;
};
