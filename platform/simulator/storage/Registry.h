#pragma once

namespace simulator {

/* Empties the registry. */
void ResetRegistry();

}  // namespace simulator
