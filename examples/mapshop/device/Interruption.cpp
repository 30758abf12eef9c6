/* A handheld has no key that interrupts a program. */
#include "Interruption.h"

Interruption::Interruption() = default;

Interruption::~Interruption() = default;

bool Interruption::Wanted() const {
    return false;
}
