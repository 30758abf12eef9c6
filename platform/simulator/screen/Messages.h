/* Messages as the journal shows them. */
#pragma once

#include "Platform.h"

#include <string>
#include <vector>

namespace simulator {

/* The name of a message, or its number. What the private messages of controls mean depends on the window. */
std::string MessageName(HWND window, UINT message);

/* A message's name and parameters; those that point at something show what lies there. */
std::vector<std::string> MessageArguments(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* A message's result, with what it filled in. */
std::string MessageResult(HWND window, UINT message, LPARAM lParam, LRESULT result);

}  // namespace simulator
