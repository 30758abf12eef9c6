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

Call::Call(const char* function)
    : function_(function), text_(function), orderedError_(OrderedFailure(function)) {}

void Call::Arguments(const std::vector<std::string>& arguments) {
    text_ += '(';
    const char* separator = "";
    for (const std::string& argument : arguments) {
        text_ += separator + argument;
        separator = ", ";
    }
    text_ += ')';
}

void Call::Write(const std::string& result) {
    Journal::Current().Add(function_, text_ + " = " + result);
}

void Call::Done() {
    Journal::Current().Add(function_, text_);
}

void Call::Violates(const std::string& what) const {
    Violate(text_ + ": " + what);
}

CountedFunction::CountedFunction(const char* name) : name_(name), calls_(Journal::Current().Counter(name)) {}

std::optional<DWORD> CountedFunction::Call() {
    ++calls_;
    const auto error = OrderedFailure(name_);
    if (error) SetLastError(*error);
    return error;
}

}  // namespace simulator
