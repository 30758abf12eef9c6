#pragma once

#include "Platform.h"

#include <optional>
#include <string_view>

namespace simulator {

/* To be asked once for every call of that function: the error with which this one must fail, if it must. */
std::optional<DWORD> OrderedFailure(std::string_view function);

/* Forgets the orders and their count; a watch over calls goes on. */
void ResetFailures();

}  // namespace simulator
