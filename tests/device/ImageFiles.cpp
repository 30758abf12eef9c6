#include "ImageFiles.h"

namespace {

std::string checkedFolder;

}  // namespace

std::string ImageFile(const std::string& name) {
    return (AreImagesChecked() ? checkedFolder : ORVANDE_DEVICE_FOLDER) + "/" + name;
}

void UseCheckedImages(const std::string& folder) {
    checkedFolder = folder;
}

bool AreImagesChecked() {
    return !checkedFolder.empty();
}
