#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace support {

// A folder of the machine's own, removed when the test is over.
struct OwnFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 ("kest_test_" + std::to_string(std::random_device()()));

    OwnFolder() { std::filesystem::create_directories(path); }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    ~OwnFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

}  // namespace support
