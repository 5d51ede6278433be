// The user file, the delays and the cache, with a clock of the test's own.
#include "cimserver/http/Access.hpp"
#include "Support.hpp"
#include "cimserver/http/CheckQueue.hpp"

#include <future>

using namespace cimserver::http;
using namespace std::chrono_literals;

namespace {

constexpr const char* kKnownHash = "$1$salt$qJH7.N4xYta3aEG/dfqo/0"; // "password", the cheap way

TEST(UserFile, NamesTheLineThatIsWrong) {
    const std::string good = std::string("a:") + kKnownHash + "\n";
    const std::pair<std::string, std::string> cases[] = {
        {good + "no colon\n", "users:2: expected NAME:HASH or NAME:HASH:ROLE"},
        {":" + std::string(kKnownHash) + "\n", "users:1: expected NAME:HASH or NAME:HASH:ROLE"},
        {good + "b:" + kKnownHash + ":admin", "users:2: the role is 'read' or 'write'"},
        {"b:plain\n", "users:1: the hash of user 'b' is in no format this system knows"},
        {good + "#\n" + good, "users:3: the user 'a' occurs twice"},
        {std::string("a\0:*", 4), "users:1: a zero byte"},
    };
    for (const auto& [text, message] : cases) {
        try {
            UserFile::parse(text, "users");
            ADD_FAILURE() << text;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), message);
        }
    }
}

TEST(UserFile, SavesWholeAndKeepsTheMode) {
    const support::TempDir dir;
    const auto file = dir / "users";
    support::writeFile(file, std::string("known:") + kKnownHash + "\r\nold:*:write\n");
    std::filesystem::permissions(file, std::filesystem::perms(0640));
    auto users = UserFile::load(file);
    users.set({"new", hashPassword("secret"), true});
    users.save(file);
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
    const auto again = UserFile::load(file);
    EXPECT_NE(again.verify("known", "password"), nullptr);
    EXPECT_EQ(again.verify("known", "Password"), nullptr);
    ASSERT_NE(again.verify("new", "secret"), nullptr);
    EXPECT_TRUE(again.find("new")->mayWrite);
    EXPECT_FALSE(again.find("known")->mayWrite);
    EXPECT_EQ(again.verify("old", "*"), nullptr) << "a user without a password has none";
    for (const char* name : {"", "a:b", "#a", " a", "a\nb"}) {
        EXPECT_THROW(users.set({name, "*", false}), std::invalid_argument) << name;
    }
}

TEST(LoginThrottle, DelaysGrowWithFailuresAndAreForgotten) {
    LoginSettings settings;
    settings.freeFailures = 2;
    settings.delay = 100ms;
    settings.maxDelay = 300ms;
    settings.forgetAfter = 10s;
    LoginThrottle throttle(settings);
    auto now = Clock::time_point(1h);
    for (const auto wait : {0ms, 0ms, 100ms, 200ms, 300ms, 300ms}) {
        EXPECT_EQ(throttle.begin("guesser", now)->wait, wait);
        now += wait;
        throttle.end("guesser", false, now);
    }
    EXPECT_EQ(throttle.begin("other", now)->wait, 0ms);
    EXPECT_EQ(throttle.begin("guesser", now + 11s)->wait, 0ms);
}

TEST(LoginThrottle, ParallelGuessesQueueAndThenAreRefused) {
    LoginSettings settings;
    settings.freeFailures = 1;
    settings.delay = settings.maxDelay = 100ms;
    LoginThrottle throttle(settings);
    const auto now = Clock::time_point(1h);
    for (const auto wait : {0ms, 100ms, 200ms, 300ms, 400ms}) {
        EXPECT_EQ(throttle.begin("guesser", now)->wait, wait);
    }
    EXPECT_FALSE(throttle.begin("guesser", now));
}

TEST(LoginThrottle, AFloodNeitherDelaysOthersNorClearsTheGuilty) {
    LoginThrottle throttle{LoginSettings()};
    const auto now = Clock::time_point(1h);
    const auto fail = [&](const std::string& peer, int times) {
        for (int i = 0; i < times; ++i) {
            throttle.begin(peer, now);
            throttle.end(peer, false, now);
        }
    };
    throttle.begin("known", now);
    throttle.end("known", true, now);
    fail("guesser", 7);
    for (int i = 0; i < 40'000; ++i) {
        fail("flood" + std::to_string(i), 2);
    }
    EXPECT_GT(throttle.begin("guesser", now)->wait, 0ms);
    const auto guilty = throttle.begin("flood39999", now)->rank;
    const auto fresh = throttle.begin("new", now);
    EXPECT_EQ(fresh->wait, 0ms);
    EXPECT_LT(fresh->rank, guilty);
    EXPECT_LT(throttle.begin("known", now)->rank, fresh->rank);
}

TEST(CheckQueue, TakesTheLowestRankFirst) {
    CheckQueue queue;
    std::promise<void> begin;
    std::promise<void> end;
    std::string order;
    queue.add(0, [&] { begin.get_future().wait(); });
    queue.add(7, [&] { end.set_value(); });
    for (const auto& [rank, name] : {std::pair(5U, 'd'), {1U, 'a'}, {3U, 'c'}, {1U, 'b'}}) {
        queue.add(rank, [&order, one = name] { order += one; });
    }
    begin.set_value();
    end.get_future().wait();
    EXPECT_EQ(order, "abcd");
}

TEST(Access, RemembersForATimeAndNotWhatAnOlderFileConfirmed) {
    const support::TempDir dir;
    support::writeFile(dir / "users", std::string("known:") + kKnownHash + "\n");
    LoginSettings settings;
    settings.userFile = dir / "users";
    settings.cache = 10s;
    Access access(settings);
    const auto now = Clock::time_point(1h);
    const auto ask = [&](Clock::time_point when) {
        return access.decide("Basic a25vd246cGFzc3dvcmQ=", "peer", "", when); // known:password
    };
    const auto before = ask(now);
    ASSERT_TRUE(before.check);
    const auto identity = access.verify(*before.check);
    ASSERT_TRUE(identity);
    access.reload(); // while the password was being hashed
    access.conclude(before, identity, "peer", now);
    const auto after = ask(now);
    EXPECT_TRUE(after.check) << "what the file of before confirmed is not remembered";
    access.conclude(after, identity, "peer", now);
    EXPECT_TRUE(ask(now + 9s).identity);
    const auto late = access.decide("Basic a25vd246cGFzc3dvcmQ=", "other", "", now + 10s);
    EXPECT_TRUE(late.check);
    EXPECT_EQ(late.turn.rank, 0U) << "what was right before is checked first";
}

TEST(LoginCache, FindsOnlyTheSameCredentials) {
    LoginCache cache(60s);
    const auto now = Clock::time_point(1h);
    cache.add({"user", "password"}, {"user", true}, now);
    ASSERT_NE(cache.find({"user", "password"}, now + 59s), nullptr);
    EXPECT_EQ(cache.find({"user", "Password"}, now), nullptr);
    EXPECT_EQ(cache.find({"use", "rpassword"}, now), nullptr);
    for (int i = 0; i < 1000; ++i) {
        cache.add({"user" + std::to_string(i), "x"}, {}, now + 1s);
    }
    EXPECT_EQ(cache.find({"user", "password"}, now + 1s), nullptr) << "the cache is bounded";
}

} // namespace
