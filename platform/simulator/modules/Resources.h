#pragma once

#include "Platform.h"

#include <string>
#include <string_view>

#include "modules/ResourceFile.h"

namespace simulator {

/* The module's resource of that type and name: of language 1033 when it is there, otherwise the first. Null
 * when there is none. */
const Resource* FindResourceOf(HMODULE module, const ResourceId& name, const ResourceId& type);

/* As FindResourceOf, by numbers: type is RT_MENU, ... as an integer. */
const Resource* FindResourceOf(HMODULE module, uint16_t name, uint16_t type);

/* The resource that has its bytes at that address, or null. */
const Resource* ResourceAt(const void* bytes);

/* The text of that id in the module's string table; empty when there is none. The view lies in the resource.
 * */
std::u16string_view StringOf(HMODULE module, UINT id);

/* How the journal names a type or a name. */
std::string ResourceText(const ResourceId& id);

/* The default resources, and no others. */
void ResetResources();

}  // namespace simulator
