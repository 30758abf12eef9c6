/* Why something failed, in words that tell what to do about it. */
#pragma once

#include <cstdint>
#include <string>

/* What was asked of the network. Unimportant where only a local file can be at fault. */
struct Asked {
    std::wstring host;
    std::wstring what;  // the path of a file there, or "the map shop"
};

/* One sentence: `lead`, which says what failed, and why that is; the code stands in brackets at its end.
 * `cause` is what a function of the library has left in the last error, or a code of the system that came
 * with a local file, which is the subject of `lead` then. "a.map was not downloaded: the host maps.example is
 * not known; check its name and the connection (12007)." */
std::wstring FailureSentence(const std::wstring& lead, uint32_t cause, const Asked& asked = {});
