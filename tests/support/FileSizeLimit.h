// A disk that is full after so many bytes: no file of this process may grow beyond them.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace varlo::test {

// Holds until it is destroyed. Writes beyond the limit fail instead of ending the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &oldLimit_), 0);
        const rlimit limit{bytes, oldLimit_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit() {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &oldLimit_), 0);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    void (*oldHandler_)(int);
    rlimit oldLimit_{};
};

} // namespace varlo::test
