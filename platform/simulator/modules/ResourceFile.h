/* Resources, and the compiled files that hold them. */
#pragma once

#include "Platform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/* The type or the name of a resource: a text, or a number when the text is empty. */
struct ResourceId {
    uint16_t number = 0;
    std::u16string text;

    bool operator==(const ResourceId&) const = default;
};

/* One resource of a module, as the resource compiler made it. */
struct Resource {
    ResourceId type;  // RT_DIALOG is 5, ...
    ResourceId name;
    uint16_t language = 0;
    std::string bytes;
};

/* The resources in the bytes of a compiled resource file (.res, what `windres -O res` writes), in their
 * order. Nothing when the bytes are no such file, or end in the middle of a resource. */
std::optional<std::vector<Resource>> ParseResourceFile(std::string_view bytes);

/* The resources of a file of the computer that runs the test. A file that cannot be read or parsed is a
 * violation. */
std::vector<Resource> ReadResourceFile(const std::string& file);
