/* What this process holds of the system, counted. */
#pragma once

#include <cstddef>

struct HeldFigures {
    size_t handles = 0;          // of the system, sockets left out
    size_t graphicsObjects = 0;  // pens, brushes, fonts, bitmaps, regions, device contexts
    size_t windowObjects = 0;    // windows, menus and icons
    size_t internetHandles = 0;  // one above the least number that WinINet has free
    size_t blocks = 0;           // on all heaps
    size_t blockBytes = 0;       // of these blocks
    size_t privateBytes = 0;     // of memory
};

/* Throws std::runtime_error when something cannot be counted. */
HeldFigures CountHeld();
