// A temporary folder of a test's own, removed with everything in it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

inline std::string fileBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Folder {
  public:
    Folder() {
        std::random_device source;
        do {
            path_ = std::filesystem::temp_directory_path() / ("qrs-test-" + std::to_string(source()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    std::filesystem::path write(const std::string& name, const std::string& content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }
    std::string read(const std::string& name) const { return fileBytes(path_ / name); }
    std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            all.insert(entry.path().filename().u8string());
        return all;
    }

  private:
    std::filesystem::path path_;
};
