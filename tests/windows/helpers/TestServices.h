/* The services that ./test starts for the tests. It says in the environment where they are. */
#pragma once

#include <cstdint>
#include <string>

/* The value of a variable of the environment. Throws std::runtime_error when it is not set. */
std::string Told(const char* name);

/* A variable's value that is a port. Throws like Told. */
uint16_t PortTold(const char* name);
