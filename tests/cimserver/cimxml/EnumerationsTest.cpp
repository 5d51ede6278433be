#include "cimserver/cimxml/Enumerations.hpp"

#include "Support.hpp"
#include "cimserver/cim/CimError.hpp"

namespace {

using namespace cimserver::cimxml;
using cimserver::Status;
using std::chrono::seconds;

const EnumerationOwner kAnn{"ann", "root/cimv2", "INSTANCEPATH"};

Status codeOf(const std::function<void()>& work) {
    return static_cast<Status>(cimserver::outcomeOf(work).code);
}

class Expiry : public testing::Test {
  protected:
    Enumerations::Clock::time_point now_;
    Enumerations enumerations_{{2, 3, 20}, [this] { return now_; }};
    std::string text_;
};

TEST_F(Expiry, EndsWhatIsNotPulledFromAndMakesRoom) {
    const std::string first = enumerations_.open(kAnn, {"a", "b", "c"}, seconds(10));
    const std::string second = enumerations_.open(kAnn, {"d"}, seconds(20));
    EXPECT_EQ(codeOf([&] { enumerations_.open(kAnn, {"e"}, seconds(10)); }), Status::ServerLimitsExceeded);
    now_ += seconds(9);
    EXPECT_FALSE(enumerations_.pull(first, kAnn, 1, text_)); // its time starts anew
    now_ += seconds(9);
    EXPECT_FALSE(enumerations_.pull(first, kAnn, 1, text_));
    now_ += seconds(10);
    EXPECT_EQ(codeOf([&] { enumerations_.pull(first, kAnn, 1, text_); }), Status::InvalidEnumerationContext);
    EXPECT_EQ(codeOf([&] { enumerations_.pull(second, kAnn, 1, text_); }), Status::InvalidEnumerationContext);
    EXPECT_EQ(codeOf([&] { enumerations_.open(kAnn, {"e"}, seconds(10)); }), Status());
    EXPECT_EQ(text_, "ab");
}

TEST_F(Expiry, ElementsAreBoundedInBytesAndGiveThemBack) {
    EXPECT_EQ(codeOf([&] {
                  enumerations_.open(kAnn, {"123456", "12345"}, seconds(10));
              }),
              Status::ServerLimitsExceeded);
    const std::string id = enumerations_.open(kAnn, {"123456"}, seconds(10));
    EXPECT_EQ(codeOf([&] { enumerations_.open(kAnn, {"12345"}, seconds(10)); }), Status::ServerLimitsExceeded);
    EnumerationOwner bob = kAnn;
    bob.user = "bob";
    EXPECT_EQ(codeOf([&] { enumerations_.open(bob, {"1234567890"}, seconds(10)); }), Status());
    EXPECT_TRUE(enumerations_.pull(id, kAnn, 5, text_));
    EXPECT_EQ(codeOf([&] { enumerations_.open(kAnn, {"1234567890"}, seconds(10)); }), Status());
}

TEST(Enumerations, YieldEachElementOnceToConcurrentPulls) {
    Enumerations enumerations({1, 1, 100000});
    const std::string id = enumerations.open(kAnn, std::vector<std::string>(2000, "x"), seconds(10));
    std::string texts[4];
    std::vector<std::thread> threads;
    for (std::string& text : texts) {
        threads.emplace_back([&] {
            while (codeOf([&] { enumerations.pull(id, kAnn, 3, text); }) == Status()) {
            }
        });
    }
    std::size_t total = 0;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i].join();
        total += texts[i].size();
    }
    EXPECT_EQ(total, 2000U);
}

} // namespace
