// A folder of a test's own, removed with everything in it, a disk without room, and a user who may not do everything.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>

class Scratch {
  public:
    Scratch() {
        std::random_device source;
        do {
            folder_ = std::filesystem::temp_directory_path() / ("qrs-test-" + std::to_string(source()));
        } while (!std::filesystem::create_directory(folder_));
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path operator/(const std::string& name) const { return folder_ / name; }

    void put(const std::string& name, const std::string& content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    std::string get(const std::string& name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            all.insert(entry.path().filename());
        return all;
    }

  private:
    std::filesystem::path folder_;
};

// Lets no file grow beyond the limit while it lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
};

// The administrator becomes an ordinary user while it lives, so that permissions hold.
class OrdinaryUser {
  public:
    OrdinaryUser() : holds_(before_ != 0 || seteuid(kNobody) == 0) {}
    ~OrdinaryUser() {
        if (before_ == 0 && holds_ && seteuid(before_) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    // False where the system knows no other user.
    explicit operator bool() const { return holds_; }

  private:
    static constexpr uid_t kNobody = 65534;
    uid_t before_ = geteuid();
    bool holds_;
};
