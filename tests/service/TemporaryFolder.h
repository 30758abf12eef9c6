/* A folder for one test. */
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

/* A new, empty folder; it goes away with all that is in it. */
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "orvande-service-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return path; }

private:
    std::filesystem::path path;
};
