/* The trace: a file beside the library that tells what it does, in builds that are made for that
 * (docs/trace.md). All calls stand behind `if constexpr (isTraced)`: in other builds nothing of them is left,
 * and their arguments are not looked at.
 *
 * No secrets: never bytes of a body, nor what a user has typed or sees filled in, but how long it is. The
 * functions change neither files that anybody else uses nor the last error, and nothing that fails in them is
 * told. */
#pragma once

#include "Platform.h"
#include "base/TraceOption.h"

/* The trace of `module` goes to the file that has its path with ".trace.txt" in place of the extension.
 * Before that lines are lost. Its times count from here. */
void BeginTrace(HINSTANCE module) noexcept;

/* Appends a line: the time, what was done, with what, what came of it, and a code: 0, or why it failed.
 * `object` may be null; all from its first "?" on is left out, because an address may have a secret there. */
void Trace(const WCHAR* what, const WCHAR* object, int64_t result, DWORD code) noexcept;

/* The same for a call of the system: the code is the last error unless it has succeeded. */
void TraceCall(const WCHAR* what, const WCHAR* object, int64_t result, bool succeeded) noexcept;
