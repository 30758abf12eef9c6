#include "DeviceFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

#include "Device.h"

DeviceFile::DeviceFile(std::u16string_view path) : place(Device::Current().HostPath(path)) {}

void DeviceFile::Put(std::string_view bytes) const {
    const int file = open(place.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0 || write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error(place + " cannot be written");
    close(file);
}

std::optional<std::string> DeviceFile::Take() const {
    const int file = open(place.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    std::string bytes;
    char block[4096];
    for (ssize_t count = 0; (count = read(file, block, sizeof block)) > 0;)
        bytes.append(block, static_cast<size_t>(count));
    close(file);
    return bytes;
}

void DeviceFile::Remove() const {
    unlink(place.c_str());
}

void DeviceFile::RemoveFolder() const {
    rmdir(place.c_str());
}
