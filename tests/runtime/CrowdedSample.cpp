/* A DLL with more objects to destroy than an image has room for. */
#include "Platform.h"

#include <utility>

namespace {

struct Object {
    Object() noexcept { DeleteFileW(TEXT("made")); }
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() { DeleteFileW(TEXT("destroyed")); }
};

template <int number>
void MakeObject() {
    static const Object object;
}

template <int... numbers>
bool MakeObjects(std::integer_sequence<int, numbers...> /*each*/) {
    (MakeObject<numbers>(), ...);
    return true;
}

const bool areMade = MakeObjects(std::make_integer_sequence<int, 33>());

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) DeleteFileW(TEXT("attach"));
    return areMade ? TRUE : FALSE;
}

extern "C" int ObjectsAreMade() {
    return areMade ? 1 : 0;
}
