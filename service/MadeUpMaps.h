/* Catalogues of any size, for trying large searches. */
#pragma once

#include "MapSource.h"

constexpr int32_t mostMadeUpMaps = 1000000;

/* `count` maps (0 to mostMadeUpMaps), spread over the globe: each covers a cell of its own, 0.18 degrees high
 * and 0.36 wide, and touches its neighbours. In the order of their names they are numbered from 1. */
MapSource MadeUpMaps(int32_t count);
