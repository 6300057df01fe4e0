// The rights of an ordinary user for the length of a block: root could read and write everything.
#pragma once

#include <gtest/gtest.h>

#ifdef _WIN32

namespace varlo::test {

// Rights to files are another matter there, and no program can give up its own: what needs that is left out
// (tests/windows/left-out.txt).
class WithoutRootRights {
public:
    WithoutRootRights() { ADD_FAILURE() << "rights cannot be given up on Windows"; }
};

} // namespace varlo::test

#else

#include <array>
#include <grp.h>
#include <unistd.h>

namespace varlo::test {

// Root becomes the user "nobody" without a group; anybody else stays who he is. Folders that the block uses
// must be open to others.
class WithoutRootRights {
public:
    WithoutRootRights() {
        if (!wasRoot_)
            return;
        groupCount_ = getgroups(static_cast<int>(groups_.size()), groups_.data());
        EXPECT_GE(groupCount_, 0);
        EXPECT_EQ(setgroups(0, nullptr), 0);
        EXPECT_EQ(setresgid(kNobody, kNobody, 0), 0);
        // The real user, too: Qt asks for that one's rights. The saved one stays root, for the way back.
        EXPECT_EQ(setresuid(kNobody, kNobody, 0), 0);
    }
    ~WithoutRootRights() {
        if (!wasRoot_)
            return;
        EXPECT_EQ(setresuid(0, 0, 0), 0);
        EXPECT_EQ(setresgid(0, 0, 0), 0);
        EXPECT_EQ(setgroups(static_cast<size_t>(groupCount_), groups_.data()), 0);
    }
    WithoutRootRights(const WithoutRootRights &) = delete;
    WithoutRootRights &operator=(const WithoutRootRights &) = delete;

private:
    static constexpr unsigned kNobody = 65534;
    const bool wasRoot_ = geteuid() == 0;
    std::array<gid_t, 256> groups_{};
    int groupCount_ = 0;
};

} // namespace varlo::test

#endif
