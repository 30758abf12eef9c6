#include "Box.h"

bool IsOnGlobe(const Box& box) {
    const auto isLongitude = [](int32_t value) { return value >= -antimeridian && value <= antimeridian; };
    return box.south >= -pole && box.south <= box.north && box.north <= pole && isLongitude(box.west) &&
           isLongitude(box.east);
}

std::vector<Box> PiecesOf(const Box& box) {
    if (box.west > box.east) {
        return {{box.south, box.west, box.north, antimeridian},
                {box.south, -antimeridian, box.north, box.east}};
    }
    std::vector<Box> pieces{box};
    if (box.east == antimeridian && box.west != -antimeridian) {
        pieces.push_back({box.south, -antimeridian, box.north, -antimeridian});
    }
    if (box.west == -antimeridian && box.east != antimeridian) {
        pieces.push_back({box.south, antimeridian, box.north, antimeridian});
    }
    return pieces;
}
