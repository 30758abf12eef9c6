/* What the tests call in place of a function that an image exports. */
#pragma once

#include <gtest/gtest.h>

#include <span>

#include "Device.h"

/* A jump to the image's function, which finds the arguments where the caller has put them. */
#define EXPORT_JUMP(name)                                                                \
    void (*imageHas_##name)();                                                           \
    asm(".pushsection .text; .arm; .global " #name "; .type " #name ", %function;" #name \
        ": ldr ip, =imageHas_" #name "; ldr pc, [ip]; .ltorg; .popsection");

#define EXPORT_ENTRY(name) {#name, &imageHas_##name},

struct ImageExport {
    const char* name;
    void (**function)();
};

/* Leads the jumps into a library that has just been loaded. */
inline void BindExports(const LoadedLibrary& library, std::span<const ImageExport> exports) {
    for (const ImageExport& each : exports) {
        *each.function = library.Find<void()>(each.name);
        ASSERT_NE(nullptr, *each.function) << each.name << " is not exported";
    }
}
