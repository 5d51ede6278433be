#include "LibraryTest.hpp"

using namespace OpenWBEM;

namespace {

TEST(CIMDateTime, readsAndPrintsText) {
    const std::tuple<const char*, const char*, bool, bool> cases[] = {
        {"20040131142530.123456+060", "20040131142530.123456+060", false, true},
        {"12345678235959.999999:000", "12345678235959.999999:000", true, true},
        {"", "00000000000000.000000:000", true, false},
        {"00000000000000.000000:000", "00000000000000.000000:000", true, false},
        {"00000000000000.000000+060", "00000000000000.000000+060", false, false},
        {"20041399996199.123456+999", "20041399996199.123456+999", false, true}, // nothing checks ranges
        {"2004**311425xx.12****+060", "20040031142500.000012+060", false, true},
        {"2004 131 42530.123456+060", "20040131042530.123456+060", false, true},
        {"2004-131142530.123456+060", "20040031142530.123456+060", false, true},
        {"20040131142530.123456+-60", "20040131142530.123456+000", false, true},
        {"20040131142530.123456+060 and more", "20040131142530.123456+060", false, true},
        {"20040131142530.123456+", "20040131142530.123456+000", false, true},
        {"00000001000000.000000:999", "00000001000000.000000:000", true, true}};
    for (const auto& [text, printed, interval, truth] : cases) {
        const CIMDateTime dateTime{String(text)};
        EXPECT_EQ(dateTime.toString(), printed) << text;
        EXPECT_EQ(dateTime.isInterval(), interval) << text;
        EXPECT_EQ(dateTime ? true : false, truth) << text;
    }
}

TEST(CIMDateTime, refusesTextWithoutItsSign) {
    const std::string refusal = "CIMDateTimeException: Invalid format for date time";
    for (const char* text : {"x", "20040131142530.123456", "20040131142530.123456*060", "20040131142530.123456 +60",
                             "2004-01-31 14:25:30.000000"}) {
        int code = 0;
        EXPECT_EQ(thrownBy([text] { CIMDateTime dateTime{String(text)}; }, &code), refusal) << text;
        EXPECT_EQ(code, CIMDateTime::E_INVALID_DATE_TIME_FORMAT);
    }
}

TEST(CIMDateTime, countsIntervalsFromMicroSeconds) {
    const std::pair<UInt64, const char*> cases[] = {{0, "00000000000000.000000:000"},
                                                    {1, "00000000000000.000001:000"},
                                                    {90061000002UL, "00000001010101.000002:000"},
                                                    {~UInt64(0), "99999999235959.999999:000"}};
    for (const auto& [microSeconds, text] : cases) {
        EXPECT_EQ(CIMDateTime(microSeconds).toString(), text);
    }
    EXPECT_TRUE(CIMDateTime().isInterval());
    EXPECT_FALSE(CIMDateTime(UInt64(0)));
    EXPECT_FALSE(CIMDateTime(CIMNULL));
}

TEST(CIMDateTime, keepsItsFieldsHoweverWide) {
    CIMDateTime dateTime;
    dateTime.setInterval(false);
    dateTime.setYear(65535).setMonth(255).setDay(4294967295u).setHours(255).setMinutes(255).setSeconds(255);
    dateTime.setMicroSeconds(4294967295u).setUtc(-32768);
    EXPECT_EQ(dateTime.toString(), "655352554294967295255255255.4294967295-32768");
    EXPECT_EQ(dateTime.getDays(), 4294967295u);
    EXPECT_EQ(dateTime.getUtc(), -32768);
    EXPECT_TRUE(CIMDateTime() < dateTime);
    EXPECT_TRUE(CIMDateTime(CIMNULL) < dateTime && !(CIMDateTime(CIMNULL) < CIMDateTime(CIMNULL)));
}

TEST(CIMDateTime, comparesFieldsForEqualityAndInstantsForOrder) {
    const std::tuple<const char*, const char*, bool, bool> cases[] = {
        {"20040131120000.000000+060", "20040131120000.000000+060", true, false},
        {"20040131120000.000000+060", "20040131110000.000000+000", false, false}, // the same instant
        {"20040131120000.000000+060", "20040131120000.000000+000", false, true},
        {"20040131120000.000000+000", "20040131120000.000001+000", false, true},
        {"20031231235959.999999+000", "20040101000000.000000+000", false, true},
        {"00000001000000.000000:000", "00000000240001.000000:000", false, true}};
    for (const auto& [first, second, equal, less] : cases) {
        const CIMDateTime x{String(first)};
        const CIMDateTime y{String(second)};
        EXPECT_EQ(x == y, equal) << first << " " << second;
        EXPECT_EQ(x < y, less) << first << " " << second;
        EXPECT_FALSE(y < x) << first << " " << second;
    }
}

TEST(CIMDateTime, isAnInstant) {
    const std::pair<const char*, Int64> cases[] = {
        {"19700101000000.000000+000", 0},          {"20040229120000.000000+000", 1078056000},
        {"20040229130000.000000+060", 1078056000}, {"20000301000000.000000+000", 951868800},
        {"19691231235959.000000+000", -1},         {"20991231235959.000000-720", 4102487999},
        {"00000002000001.000000:000", 172801}};
    for (const auto& [text, seconds] : cases) {
        const CIMDateTime instant{String(text)};
        if (static_cast<time_t>(seconds) == seconds) {
            EXPECT_EQ(instant.toDateTime().get(), seconds) << text;
        } else { // a time_t of 32 bits
            EXPECT_THROW(instant.toDateTime(), DateTimeException) << text;
        }
    }
    const DateTime now(time_t(1078056000), 42);
    const CIMDateTime point = now;
    EXPECT_FALSE(point.isInterval());
    EXPECT_EQ(point.getMicroSeconds(), 42u);
    EXPECT_EQ(point.toDateTime().get(), now.get()) << point;
}

} // namespace
