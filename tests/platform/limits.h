// A disk without room, and a user who may not do everything.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

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
