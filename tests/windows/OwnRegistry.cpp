/* Linked into a program of tests, this makes HKEY_CURRENT_USER a key of the process's own, which is empty at
 * first. Nobody else sees what the tests set there, so that the program can run beside others; nor do
 * programs that it starts. */
#include "Platform.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

class OwnRegistry {
public:
    OwnRegistry() {
        // What a process of the same number left behind is not part of the tests.
        RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
        HKEY key = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            nullptr) != ERROR_SUCCESS ||
            RegOverridePredefKey(HKEY_CURRENT_USER, key) != ERROR_SUCCESS) {
            std::fputs("the process can have no registry of its own\n", stderr);
            std::abort();
        }
        RegCloseKey(key);
    }

    ~OwnRegistry() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
    }

    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;

private:
    const std::wstring path = L"Software\\Orvande tests " + std::to_wstring(GetCurrentProcessId());
};

const OwnRegistry ownRegistry;

}  // namespace
