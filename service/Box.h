/* Boxes on the globe, as queries name them and as maps cover them. */
#pragma once

#include <cstdint>
#include <vector>

/* Edges in units of 1e-5 degrees, each edge part of the box. A box whose west lies east of its east crosses
 * the antimeridian: it reaches from west to 180 degrees east, and on from 180 degrees west to east. */
struct Box {
    int32_t south = 0;
    int32_t west = 0;
    int32_t north = 0;
    int32_t east = 0;

    bool operator==(const Box&) const = default;
};

constexpr int32_t unitsPerDegree = 100000;
constexpr int32_t pole = 90 * unitsPerDegree;
constexpr int32_t antimeridian = 180 * unitsPerDegree;

/* Whether every edge lies on the globe (90 degrees of latitude, 180 of longitude, both ways) and the south is
 * not north of the north. */
bool IsOnGlobe(const Box& box);

/* Boxes with west <= east that together cover what `box` covers; `box` must be on the globe. The antimeridian
 * is one line with two longitudes: a box that touches it at one of them also gets the line at the other, so
 * that comparing longitudes suffices to find what touches it there. */
std::vector<Box> PiecesOf(const Box& box);
