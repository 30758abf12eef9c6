/* The images under test. */
#pragma once

#include <string>

/* The file of an image, by its name: as devices get it, or the checked one. */
std::string ImageFile(const std::string& name);

/* Takes images from another folder from now on, which stop at an address that is not aligned. */
void UseCheckedImages(const std::string& folder);

bool AreImagesChecked();
