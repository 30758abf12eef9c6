/* The C functions on arrays of wide characters, which coredll lacks and the C++ library's strings use. */
#include <cstring>
#include <cwchar>

extern "C" {

wchar_t* wmemcpy(wchar_t* destination, const wchar_t* source, size_t count) {
    std::memcpy(destination, source, count * sizeof(wchar_t));
    return destination;
}

wchar_t* wmemmove(wchar_t* destination, const wchar_t* source, size_t count) {
    std::memmove(destination, source, count * sizeof(wchar_t));
    return destination;
}

wchar_t* wmemset(wchar_t* destination, wchar_t unit, size_t count) {
    for (size_t i = 0; i < count; ++i)
        destination[i] = unit;
    return destination;
}

int wmemcmp(const wchar_t* one, const wchar_t* other, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (one[i] != other[i]) return one[i] < other[i] ? -1 : 1;
    }
    return 0;
}

wchar_t* wmemchr(const wchar_t* units, wchar_t unit, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (units[i] == unit) return const_cast<wchar_t*>(units + i);
    }
    return nullptr;
}
}
