#pragma once

namespace simulator {

/* Forgets which dialogs were shown. */
void ResetDialogs();

}  // namespace simulator
