/* The page that shows a visitor what the service offers. */
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "MapRecord.h"

/* How many maps the page shows at most: it is for reading, not for copying a catalogue of a million. */
constexpr int32_t mostListedMaps = 1000;

/* A whole HTML page in UTF-8 with a table of `maps`, the first of all `total` maps. Texts are escaped. The
 * paths for which `hasFile` holds are links. */
std::string CataloguePage(std::span<const MapRecord> maps, int32_t total,
                          const std::function<bool(const std::string& path)>& hasFile);
