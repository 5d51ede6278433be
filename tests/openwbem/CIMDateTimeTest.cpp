#include "OW_Array.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"
#include "Thrown.hpp"

#include <gtest/gtest.h>

using namespace OpenWBEM;

namespace {

TEST(CIMDateTime, readsAndPrintsText) {
    struct {
        const char* text;
        const char* printed;
        bool interval;
        bool truth;
    } const cases[] = {
        {"20040131142530.123456+060", "20040131142530.123456+060", false, true},
        {"20040131142530.000000-300", "20040131142530.000000-300", false, true},
        {"20040131142530.000000+000", "20040131142530.000000+000", false, true},
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
        {"00000001000000.000000:999", "00000001000000.000000:000", true, true},
    };
    for (const auto& c : cases) {
        const CIMDateTime dateTime{String(c.text)};
        EXPECT_EQ(dateTime.toString(), c.printed) << c.text;
        EXPECT_EQ(dateTime.isInterval(), c.interval) << c.text;
        EXPECT_EQ(dateTime ? true : false, c.truth) << c.text;
    }
}

TEST(CIMDateTime, refusesTextWithoutItsSign) {
    for (const char* text : {"x", "20040131142530.123456", "20040131142530.123456*060", "20040131142530.123456 +60",
                             "2004-01-31 14:25:30.000000"}) {
        EXPECT_EQ(thrownBy([text] { CIMDateTime dateTime{String(text)}; }),
                  "CIMDateTimeException: Invalid format for date time")
            << text;
    }
    try {
        const CIMDateTime dateTime(String("x"));
        FAIL();
    } catch (const CIMDateTimeException& e) {
        EXPECT_EQ(e.getErrorCode(), CIMDateTime::E_INVALID_DATE_TIME_FORMAT);
    }
}

TEST(CIMDateTime, countsIntervalsFromMicroSeconds) {
    struct {
        UInt64 microSeconds;
        const char* text;
    } const cases[] = {{0, "00000000000000.000000:000"},
                       {1, "00000000000000.000001:000"},
                       {90061000002UL, "00000001010101.000002:000"},
                       {~UInt64(0), "99999999235959.999999:000"}};
    for (const auto& c : cases) {
        EXPECT_EQ(CIMDateTime(c.microSeconds).toString(), c.text);
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
}

TEST(CIMDateTime, comparesFieldsForEqualityAndInstantsForOrder) {
    struct {
        const char* x;
        const char* y;
        bool equal;
        bool less;
    } const cases[] = {
        {"20040131120000.000000+060", "20040131120000.000000+060", true, false},
        {"20040131120000.000000+060", "20040131110000.000000+000", false, false}, // the same instant
        {"20040131120000.000000+060", "20040131120000.000000+000", false, true},
        {"20040131120000.000000+000", "20040131120000.000001+000", false, true},
        {"20031231235959.999999+000", "20040101000000.000000+000", false, true},
        {"00000001000000.000000:000", "00000000240001.000000:000", false, true},
    };
    for (const auto& c : cases) {
        const CIMDateTime x{String(c.x)};
        const CIMDateTime y{String(c.y)};
        EXPECT_EQ(x == y, c.equal) << c.x << " " << c.y;
        EXPECT_EQ(x < y, c.less) << c.x << " " << c.y;
        EXPECT_FALSE(y < x) << c.x << " " << c.y;
    }
}

TEST(CIMDateTime, isAnInstant) {
    struct {
        const char* text;
        time_t seconds;
    } const cases[] = {{"19700101000000.000000+000", 0},          {"20040229120000.000000+000", 1078056000},
                       {"20040229130000.000000+060", 1078056000}, {"20000301000000.000000+000", 951868800},
                       {"19691231235959.000000+000", -1},         {"20991231235959.000000-720", 4102487999},
                       {"00000002000001.000000:000", 172801}};
    for (const auto& c : cases) {
        EXPECT_EQ(CIMDateTime{String(c.text)}.toDateTime().get(), c.seconds) << c.text;
    }
    const DateTime now(time_t(1078056000), 42);
    const CIMDateTime point = now;
    EXPECT_FALSE(point.isInterval());
    EXPECT_EQ(point.getMicroSeconds(), 42u);
    EXPECT_EQ(point.toDateTime().get(), now.get()) << point;
}

} // namespace
