/* The simulated handheld under a target. All of it but its files is made anew for every run: these would take
 * longer than most runs. Its calls are counted, but the journal has no lines, for the same reason. */
#pragma once

#include "Device.h"

#include <string>
#include <string_view>

class FuzzedDevice {
public:
    FuzzedDevice();
    FuzzedDevice(const FuzzedDevice&) = delete;
    FuzzedDevice& operator=(const FuzzedDevice&) = delete;
    ~FuzzedDevice();

    /* Begins a run, on a machine without hosts. */
    static void BeginRun();

    /* Ends it, and requires that nothing has been left open. */
    static void EndRun();

    Device& device = Device::Current();
};

/* A file of the machine, whose place on this computer is looked for once. */
class FuzzedFile {
public:
    explicit FuzzedFile(std::u16string_view devicePath);

    [[nodiscard]] const std::u16string& Path() const { return path; }
    void Put(std::string_view bytes) const;
    [[nodiscard]] std::string Take() const;
    void Remove() const;

private:
    std::u16string path;
    std::string place;
};
