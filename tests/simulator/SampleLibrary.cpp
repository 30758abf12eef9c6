/* A library for the loader's tests: it shows when its static objects live and what it is attached with. A
 * static object allocates once, and so does either call of DllMain. */
#include "Platform.h"

#include <memory>
#include <new>

#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct StaticObject {
    StaticObject() : session(InternetOpenW(TEXT("Sample"), 0, nullptr, nullptr, 0)) {}
    StaticObject(const StaticObject&) = delete;
    StaticObject& operator=(const StaticObject&) = delete;
    ~StaticObject() { InternetCloseHandle(session); }

    HINTERNET session;
    std::unique_ptr<int> memory = std::make_unique<int>(1);
};

const StaticObject staticObject;

int calls = 0;

}  // namespace

SAMPLE_EXPORT BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    ::operator delete(::operator new(1));
    return SHInitExtraControls(instance, reason, reserved);
}

SAMPLE_EXPORT int CountCallsSinceLoad();

int CountCallsSinceLoad() {
    return ++calls;
}
