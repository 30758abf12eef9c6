#include "machine/Call.h"

#include "machine/Failures.h"
#include "machine/Journal.h"
#include "machine/Violations.h"

namespace {

DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD WINAPI GetLastError() {
    return lastError;
}

void WINAPI SetLastError(DWORD error) {
    lastError = error;
}

namespace simulator {

Call::Call(const char* function) : function_(function), orderedError_(OrderedFailure(function)) {
    if (Journal::Current().IsWritten()) text_ = function;
}

void Call::Show(std::span<const std::string> arguments) {
    if (!Journal::Current().IsWritten()) return;
    text_ += '(';
    const char* separator = "";
    for (const std::string& argument : arguments) {
        text_ += separator + argument;
        separator = ", ";
    }
    text_ += ')';
}

void Call::Write(const std::string& result, std::optional<DWORD> error) {
    Journal& journal = Journal::Current();
    if (!journal.IsWritten()) {
        ++journal.Counter(function_);
        return;
    }
    const std::string suffix = error ? ", error " + std::to_string(*error) : std::string();
    journal.Add(function_, text_ + " = " + result + suffix);
}

void Call::Done() {
    Journal& journal = Journal::Current();
    if (journal.IsWritten())
        journal.Add(function_, text_);
    else
        ++journal.Counter(function_);
}

void Call::Violates(const std::string& what) const {
    Violate((text_.empty() ? function_ : text_) + ": " + what);
}

CountedFunction::CountedFunction(const char* name) : name_(name), calls_(Journal::Current().Counter(name)) {}

std::optional<DWORD> CountedFunction::Call() {
    ++calls_;
    const auto error = OrderedFailure(name_);
    if (error) SetLastError(*error);
    return error;
}

}  // namespace simulator
