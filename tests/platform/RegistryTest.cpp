// The registry behind the C functions, in this and other processes.

#include "Home.hpp"
#include "RegistryContract.hpp"

#include <atomic>

const Home kHome;

namespace {

TEST(Registry, IsSharedByProcessesAcrossForks) {
    ASSERT_EQ(ZPO_OK, ZpoSetRegEntryInt("C", "Fork", "key", 1)); // the parent's store is open when the child is made
    EXPECT_EQ(0, support::inChild([] {
                  std::uint32_t value = 0;
                  ZpoGetRegEntryInt("C", "Fork", "key", &value);
                  return value == 1 && ZpoSetRegEntryInt("C", "Fork", "key", 2) == ZPO_OK ? 0 : 1;
              }));
    std::uint32_t value = 0;
    EXPECT_EQ(ZPO_OK, ZpoGetRegEntryInt("C", "Fork", "key", &value));
    EXPECT_EQ(2U, value);
}

// A child forked at any moment of another thread's work is not stuck on a lock that it inherited.
TEST(Registry, ForksWhileOtherThreadsWork) {
    std::uint32_t handle = 0;
    ASSERT_EQ(ZPO_OK, ZpoDiagRegisterModule("m", "c", "BUSY", "busy.log", &handle));
    std::atomic<bool> done{false};
    std::vector<std::thread> busy(3); // so that one waits for the change of another, too
    for (std::thread& one : busy) {
        one = std::thread([&] {
            for (std::uint32_t value = 0; !done; ++value) {
                ZpoSetRegEntryInt("C", "Fork", "busy", value);
                ZpoDiagAddLogEntry(handle, 2, 4, -1, "busy");
            }
        });
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(0, support::inChild([&] {
                      alarm(5);
                      return ZpoDiagAddLogEntry(handle, 2, 4, -1, "child") == ZPO_OK &&
                                     ZpoSetRegEntryInt("C", "Fork", "child", 1) == ZPO_OK
                                 ? 0
                                 : 1;
                  }));
    }
    done = true;
    for (std::thread& one : busy) {
        one.join();
    }
}

TEST(Registry, RefusesNamesThatCannotBeShown) {
    EXPECT_EQ(ZPO_REG_BAD_NAME, ZpoSetRegEntryInt("C", "S", "line\nfeed", 1));
    EXPECT_EQ(ZPO_REG_BAD_NAME, ZpoSetRegEntryInt("C", "S", std::string(128, 'k').c_str(), 1));
    EXPECT_EQ(ZPO_OK, ZpoSetRegEntryInt("C", "S", std::string(127, 'k').c_str(), 1));
    const std::string large(ZPO_REG_MAX_BINARY + 1, 'x');
    EXPECT_EQ(ZPO_OK, ZpoSetRegEntryBinary("C", "S", "large", large.data(), ZPO_REG_MAX_BINARY));
    EXPECT_EQ(ZPO_REG_BAD_ARGUMENT, ZpoSetRegEntryBinary("C", "S", "large", large.data(), ZPO_REG_MAX_BINARY + 1));
}

} // namespace
