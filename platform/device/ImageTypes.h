/* How the tables for exceptions name types, for the images' runtime. */
#pragma once

#include <unwind.h>
#include <typeinfo>

/* Null: every type. */
inline const std::type_info* TypeAt(const unsigned char* place) {
    const _Unwind_Word type = _Unwind_decode_typeinfo_ptr(0, reinterpret_cast<_Unwind_Word>(place));
    return reinterpret_cast<const std::type_info*>(type);
}
