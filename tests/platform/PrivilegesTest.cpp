// What a process of root may still do after it has become another user.
#include "Privileges.hpp"
#include "Support.hpp"

#include <algorithm>
#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

TEST(Privileges, AreThoseOfTheDirectorysOwner) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    const support::TempDir dir;
    for (const uid_t owner : {uid_t{65534}, uid_t{4242}}) { // "nobody", and one without a name
        for (const auto rights : {zpo::RootRights::Kept, zpo::RootRights::Dropped}) {
            ASSERT_EQ(0, chown(dir.path().c_str(), owner, owner));
            const pid_t child = support::startChild([&] {
                const gid_t before[] = {0, 4};
                const bool became = setgroups(2, before) == 0 && zpo::becomeOwnerOf(dir.path(), rights) == 0;
                gid_t groups[16] = {};
                const int count = getgroups(16, groups);
                const bool others = std::any_of(groups, groups + count, [&](gid_t group) { return group != owner; });
                const bool back = seteuid(0) == 0;
                return became && !others && getegid() == owner && back == (rights == zpo::RootRights::Kept) ? 0 : 1;
            });
            EXPECT_EQ(0, support::waitForChild(child)) << owner;
        }
    }
    ASSERT_EQ(0, chown(dir.path().c_str(), 0, 0));
    EXPECT_EQ(0, zpo::becomeOwnerOf(dir.path(), zpo::RootRights::Dropped));
    EXPECT_EQ(0U, geteuid()) << "a directory of root changes nothing";
}

} // namespace
