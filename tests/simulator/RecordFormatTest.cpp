// A call and a setting in, a record out.
#include "RecordFormat.hpp"
#include "CallGenerator.hpp"
#include "Support.hpp"

namespace {

using namespace cdrsim;
using S = ServiceSettings;

const int kUtc = setenv("TZ", "UTC", 1);
constexpr std::time_t kNoon = 1795348800; // 2026-11-22 12:00:00
constexpr auto kOut = Direction::Outgoing;

const Call kIncoming{Direction::Incoming,
                     CallType::International,
                     kNoon,
                     5,
                     60,
                     true,
                     "201",
                     4,
                     "441632960123",
                     "Ruth",
                     "",
                     "5550201",
                     0};
const Call kOutgoing{kOut, CallType::Local, kNoon, 7, 61, true, "202", 2, "202", "A, \"R\"", "901144163296", "", 190};
const Call kUnanswered{kOut, CallType::Local, kNoon, 30, 0, false, "202", 2, "202", "Ruth", "95551234", "", 0};
const Call kInternal{Direction::Internal, CallType::Internal, kNoon, 3, 10, true, "203", 0, "202", "R", "203", "", 0};

/// Prefixes 9, 011 and 01; access codes 9 with 1 digit to suppress, 95 with 255.
const DigitBins kBins = decodeBins({9, 12, 0, 0, 0, 0, 0, 0, 0, 1, 1, 12, 3, 3, 3, 3, 0, 1, 10, 4, 4, 4, 4, 4, 255},
                                   {9, 12, 12, 12, 12, 1, 9, 5, 12, 3, 3, 255, 12, 1, 1, 1, 1, 3, 255, 1, 1, 1});

TEST(Record, TellsWithTheFactorySettings) {
    EXPECT_EQ("8,2026-11-22,12:00:00,OUT,202,2,202,\"A, \"\"R\"\"\",,0114416329,9,011,,7,61,\n",
              recordOf(S{}, kBins, kOutgoing, 8));
    EXPECT_EQ("8,2026-11-22,12:00:00,IN,201,4,1632960123,Ruth,,,,,5550201,5,60,\n", recordOf(S{}, kBins, kIncoming, 8));
    EXPECT_EQ("8,2026-11-22,12:00:00,INT,203,,202,R,,203,,,,3,10,\n", recordOf(S{}, kBins, kInternal, 8));
    EXPECT_EQ(support::countOf(",", recordOf(S{}, kBins, kInternal, 8)), support::countOf(",", headOf(S{}, kNoon)));
}

TEST(Record, FollowsEachSetting) {
    struct Case {
        std::uint32_t S::*setting;
        std::uint32_t value;
        const Call& call;
        const char* expected;
    };
    for (const Case& one : std::vector<Case>{
             {&S::dateFormat, 1, kIncoming, "8,11/22/2026,12:00:00,"},
             {&S::dateFormat, 2, kIncoming, "8,22.11.2026,12:00:00,"},
             {&S::dateFormat, 3, kIncoming, "8,20261122,12:00:00,"},
             {&S::dnisInfo, 0, kIncoming, ",Ruth,,,,,,5,60,"},
             {&S::clidWithCallType, 2, kIncoming, ",Ruth,INTERNATIONAL,"},
             {&S::longClidSupport, 1, kIncoming, ",441632960123,"},
             {&S::supportCallCharge, 1, kOutgoing, ",7,61,1.90\n"},
             {&S::answerSupervision, 0, kUnanswered, ",,30,\n"},
             {&S::answerSupervision, 1, kUnanswered, ",,0,\n"},
             {&S::answerSupervision, 0, kIncoming, ",5,60,\n"},
             {&S::digitsLimit, 65535, kInternal, ",,203,,"},
             {&S::digitsSuppress, 0, kUnanswered, ",Ruth,,,95,,,"},
             {&S::digitsSuppress, 1, kUnanswered, ",Ruth,,XXXXXXXX,95,,,"},
             {&S::digitsSuppress, 2, kUnanswered, ",Ruth,,95551234,95,9,,"},
         }) {
        S settings;
        settings.*one.setting = one.value;
        EXPECT_THAT(recordOf(settings, kBins, one.call, 8), testing::HasSubstr(one.expected));
    }
}

TEST(Record, StandsBelowItsHead) {
    S settings;
    std::string heads;
    for (settings.headerFormat = 0; settings.headerFormat <= 2; ++settings.headerFormat) {
        const std::string head = headOf(settings, kNoon);
        heads += std::to_string(support::countOf("\n", head)) + head.substr(0, 43) + ";";
    }
    EXPECT_EQ("0;1Record,Date,Time,Direction,Extension,Trunk,;2# CDR simulator, begun 2026-11-22T12:00:00+;", heads);
    EXPECT_TRUE(isHeadLine("") && isHeadLine("# begun") && isHeadLine("Record,Date"));
    EXPECT_FALSE(isHeadLine("1,2026"));
}

/// All that is told of made-up calls, and the pauses between them.
TEST(Calls, AreTheSameWithTheSameSeed) {
    S settings;
    settings.longClidSupport = settings.clidWithCallType = settings.supportCallCharge = 1;
    settings.digitsSuppress = 2;
    settings.digitsLimit = 24;
    CallGenerator calls(1);
    std::string text;
    for (std::uint64_t number = 1; number <= 60; ++number) {
        text += recordOf(settings, kBins, calls.next(kNoon), number);
    }
    for (const unsigned rate : {1U, 60U, 60U, 60000U}) {
        text += std::to_string(calls.gap(rate).count()) + " ms\n";
    }
    support::expectGolden(CALLS, text);
}

TEST(Record, IsLeftOutByTheFilters) {
    const auto reported = [](const S& settings) {
        std::string result;
        for (const Call* call : {&kIncoming, &kOutgoing, &kUnanswered, &kInternal}) {
            result += isReported(settings, *call) ? '+' : '-';
        }
        return result;
    };
    S settings;
    for (const char* expected : {"++++", "+---", "-++-", "+++-"}) {
        EXPECT_EQ(expected, reported(settings));
        ++settings.reportFilter;
    }
    settings = S{};
    settings.callFilterDuration = 30;
    EXPECT_EQ("++--", reported(settings));
}

TEST(Schedule, EndsAPeriod) {
    constexpr std::time_t kLengths[]{43200, 3600, 900, 60};
    for (std::uint32_t schedule = 1; schedule <= 4; ++schedule) {
        const std::time_t next = kNoon + kLengths[schedule - 1];
        EXPECT_EQ(clipPeriod(schedule, kNoon), clipPeriod(schedule, next - 1)) << schedule;
        EXPECT_NE(clipPeriod(schedule, kNoon), clipPeriod(schedule, next)) << schedule;
    }
}

} // namespace
