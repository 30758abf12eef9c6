#pragma once

#include <string>

namespace simulator {

/* Tells the hook of DeviceMachine::SetViolationHook; without one, prints and aborts. */
void Violate(const std::string& what);

}  // namespace simulator
