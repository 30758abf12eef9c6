/* What the map shop offers when it opens. */
#pragma once

#include "MapSource.h"

/* Maps of countries, islands and provinces on every inhabited continent. */
MapSource RegionsOfTheWorld();
