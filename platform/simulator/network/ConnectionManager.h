#pragma once

namespace simulator {

/* Every call succeeds and connects. */
void ResetConnectionManager();

}  // namespace simulator
