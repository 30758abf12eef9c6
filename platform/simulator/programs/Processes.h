#pragma once

namespace simulator {

/* No programs were started, the shell gives process handles, nothing is called before this process ends. */
void ResetPrograms();

}  // namespace simulator
