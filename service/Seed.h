/* What the map shop offers when it opens. */
#pragma once

#include <vector>

#include "MapFile.h"
#include "MapSource.h"

/* Maps of countries, islands and provinces on every inhabited continent. */
MapSource RegionsOfTheWorld();

/* The files that some of them have, from empty to 64 MB. The sizes agree with those of the maps, which are in
 * kilobytes, rounded up. */
std::vector<MapFile> FilesOfTheWorld();
