// A disk that takes only so many bytes of each file, for the length of a block.
#pragma once

#include <gtest/gtest.h>

#ifdef _WIN32

using rlim_t = unsigned long;

namespace varlo::test {

// Windows limits no file's size for one program: what needs that is left out there (tests/windows/left-out.txt).
class FullDisk {
public:
    explicit FullDisk(rlim_t) { ADD_FAILURE() << "there is no full disk to be had on Windows"; }
};

} // namespace varlo::test

#else

#include <csignal>
#include <sys/resource.h>

namespace varlo::test {

// A write past `bytes` of any file fails as it does on a full disk, part of it written.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &oldLimit_), 0);
        const rlimit limit{bytes, oldLimit_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &oldLimit_), 0);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit oldLimit_{};
    void (*oldHandler_)(int);
};

} // namespace varlo::test

#endif
