#pragma once

#include "Platform.h"

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "machine/Allocations.h"

namespace simulator {

/* One call of a platform function: suspends the counting of allocations, knows whether the call must fail and
 * writes its line of the journal when it returns. */
class Call {
public:
    explicit Call(const char* function);

    /* The arguments as the journal shows them: the first thing to say about a call. */
    void Arguments(std::initializer_list<std::string> arguments) {
        Show({arguments.begin(), arguments.size()});
    }
    void Arguments(const std::vector<std::string>& arguments) { Show(arguments); }

    /* Whether a test ordered this call to fail; the error is then to be passed on. */
    bool MustFail() const { return orderedError_.has_value(); }
    DWORD OrderedError() const { return orderedError_.value_or(0); }

    /* Writes the line "function(arguments) = text" and gives `result` back. */
    template <class Result>
    Result Returns(Result result, const std::string& text) {
        Write(text);
        return result;
    }

    /* As Returns, and sets the last error. */
    template <class Result>
    Result Fails(Result result, const std::string& text, DWORD error) {
        SetLastError(error);
        Write(text, error);
        return result;
    }

    BOOL True() { return Returns(TRUE, "TRUE"); }
    BOOL True(const std::string& detail) { return Returns(TRUE, "TRUE, " + detail); }
    BOOL False(DWORD error) { return Fails(FALSE, "FALSE", error); }

    /* For functions whose result is an error code; the last error stays. */
    LONG Code(DWORD error) { return Returns(static_cast<LONG>(error), std::to_string(error)); }

    /* Writes the line of a function without a result. */
    void Done();

    /* A violation in this call. */
    void Violates(const std::string& what) const;

private:
    void Show(std::span<const std::string> arguments);
    void Write(const std::string& result, std::optional<DWORD> error = {});

    OwnWork ownWork_;
    const char* function_;
    std::string text_;  // empty while the journal is not written
    std::optional<DWORD> orderedError_;
};

/* A function whose calls get no line in the journal, because there are too many of them. */
class CountedFunction {
public:
    explicit CountedFunction(const char* name);

    /* Counts a call. The error with which it must fail, if it must: it is the last error then. */
    std::optional<DWORD> Call();

private:
    const char* name_;
    size_t& calls_;
};

}  // namespace simulator
