/* Opening documents and web pages. */
#pragma once

#include "text/WideString.h"

/* Opens `target`, a file or a web address, with the program that the system has for it. `owner` owns what the
 * system has to show; it may be null. With `wait` the result comes when that program has ended, if the system
 * tells which one it is; otherwise as soon as it has been started. False: it could not be opened. */
bool OpenWithShell(const WideString& target, HWND owner, bool wait);
