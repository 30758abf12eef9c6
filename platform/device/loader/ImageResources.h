/* The resources of an image. */
#pragma once

#include <vector>

#include "MappedImage.h"
#include "modules/ResourceFile.h"

/* All of them. Throws ImageError when their tree makes no sense. */
std::vector<Resource> ResourcesOf(const MappedImage& image);
