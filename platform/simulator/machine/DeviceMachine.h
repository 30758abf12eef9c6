/* The machine's part of the device: violations, the journal, failures. */
#pragma once

#include "Platform.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "machine/Failing.h"

class DeviceMachine {
public:
    // ---- Violations -----------------------------------------------------------------------------------

    /* Who is told of violations; the earlier hook is the result. The machine is stricter than a real one. A
     * violation (a handle that is closed twice, of the wrong kind or unknown, left open at the end of a test;
     * a parent closed before its children; a message box that nobody expected) goes to the hook, and the call
     * in which it happens fails. Without a hook, which is null, it is printed and the process aborts. */
    using ViolationHook = void (*)(const std::string& what);
    ViolationHook SetViolationHook(ViolationHook hook);

    // ---- The journal ----------------------------------------------------------------------------------

    /* The calls since BeginTest in their order, one line each, all or those to the functions named.
     * machine/Journal.h says how the lines are written. */
    std::vector<std::string> Calls() const;
    std::vector<std::string> Calls(std::initializer_list<std::string_view> functions) const;

    /* How often the function was called; exact however many there were. Reads and writes of files are
     * counted, not listed: "fread" is each byte that is read and each meeting with the end, "fwrite" each
     * time that written bytes reach the storage: when 4096 of them are together, with fflush, fclose or
     * fseek. */
    size_t CountCalls(std::string_view function) const;

    /* Empties the journal; handles keep their numbers. */
    void ForgetCalls();

    // ---- Failures -------------------------------------------------------------------------------------

    /* Makes the n-th call from now (1: the next) of that function fail with `error`, and with FromThereOn all
     * after it. Further orders for the same function stand beside it. The error is what GetLastError gives
     * then, or the function's own result where that is an error code (registry, Connection Manager). A failed
     * read gives no bytes; what a failed close should close is closed all the same. The functions are those
     * of the journal and fread, fwrite, fseek. The name of another one is a violation. */
    void FailCall(std::string_view function, size_t n, DWORD error, Failing failing = Failing::Once);

    /* How many calls were made to fail since BeginTest. */
    size_t FailedCalls() const;

    /* Forgets what FailCall ordered. */
    void StopFailing();

protected:
    void BeginTest();
    void EndTest();
};
