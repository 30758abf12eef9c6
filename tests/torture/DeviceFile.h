/* A file of the simulated handheld, whose place on this computer is looked for once: there are thousands of
 * runs. */
#pragma once

#include <optional>
#include <string>
#include <string_view>

class DeviceFile {
public:
    /* Its folder has to be there. */
    explicit DeviceFile(std::u16string_view path);

    void Put(std::string_view bytes) const;
    [[nodiscard]] std::optional<std::string> Take() const;
    void Remove() const;

    /* The same for an empty folder of that name. */
    void RemoveFolder() const;

private:
    std::string place;
};
