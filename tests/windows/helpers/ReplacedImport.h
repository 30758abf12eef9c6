/* Making a function that a DLL imports do something else. */
#pragma once

#include "Platform.h"

/* As long as it lives, a loaded DLL calls another function in place of one that it imports by name. Throws
 * std::runtime_error when the DLL does not import it. */
class ReplacedImport {
public:
    ReplacedImport(HMODULE module, const char* name, void (*replacement)());
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() { Write(original); }

private:
    void Write(ULONG_PTR address) const;

    ULONG_PTR* slot = nullptr;
    ULONG_PTR original = 0;
};
