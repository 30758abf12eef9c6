/* Opening documents and web pages. */
#pragma once

#include "text/WideString.h"

/* Opens `target`, a file or a web address, with the program that the system has for it. `owner` owns the
 * windows that the system may show; it may be null. With `wait` the function returns when that program has
 * ended, if the system tells which process it is; otherwise as soon as it has been started. False: it could
 * not be opened. */
bool OpenWithShell(const WideString& target, HWND owner, bool wait);
