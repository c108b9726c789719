// SPDX-License-Identifier: Apache-2.0
#pragma once

// A folder of a test's own, which is the working directory as long as it lives and is removed then.

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fixtop {

class TemporaryFolder {
 public:
    TemporaryFolder() : former_(std::filesystem::current_path()) {
        static std::atomic<int> number{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                ("fixtop_test_" + std::to_string(now) + "_" + std::to_string(number++));
        std::filesystem::create_directories(path_);
        std::filesystem::current_path(path_);
    }
    ~TemporaryFolder() {
        std::filesystem::current_path(former_);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string File(const std::string& name) const { return (path_ / name).string(); }
    bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }
    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    // The text of a file, lines ended by a line feed alone on every platform.
    std::string Read(const std::string& name) const {
        std::ifstream file(path_ / name);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

 private:
    std::filesystem::path former_;
    std::filesystem::path path_;
};

}  // namespace fixtop
