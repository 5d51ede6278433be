// Logger, DateTime, OperationContext and the streams.

#include "LibraryTest.hpp"
#include "OW_BaseStreamBuffer.hpp"
#include "OW_CerrLogger.hpp"
#include "OW_StringBuffer.hpp"
#include "OW_UserInfo.hpp"

#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // createLogger() is the only way to syslog

#include <climits>
#include <cstdlib>

using namespace OpenWBEM;

std::string priorities;

extern "C" void syslog(int priority, const char* /*format*/, ...) { // in place of the C library's
    priorities += std::to_string(priority);
}

namespace {

class RecordingLogger : public Logger {
  public:
    explicit RecordingLogger(ELogLevel level) : Logger("module", level) {}
    static std::string lines;

  protected:
    void doProcessLogMessage(const LogMessage& m) const override {
        lines += Format("%1/%2/%3/%4;", m.component, m.category, m.message, m.fileline).c_str();
    }
    LoggerRef doClone() const override { return new RecordingLogger(*this); }
};
std::string RecordingLogger::lines;

TEST(Logger, dropsWhatTheLevelLeavesOut) {
    const std::pair<const char*, const char*> cases[] = {
        {"NONE", ""},
        {"nonsense", "module/FATAL/f/-1;"},
        {"Error", "module/FATAL/f/-1;module/ERROR/e/-1;"},
        {"INFO", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;"},
        {"debug", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;module/DEBUG/d/-1;"},
        {"all", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;module/DEBUG/d/-1;"}};
    for (const auto& [level, lines] : cases) {
        const LoggerRef logger(new RecordingLogger(E_ALL_LEVEL));
        logger->setLogLevel(String(level));
        RecordingLogger::lines.clear();
        for (const LoggerRef& each : {logger, Logger::createLogger("syslog", true)}) {
            each->logFatalError("f");
            each->logError("e");
            each->logInfo("i");
            each->logDebug("d");
        }
        EXPECT_EQ(RecordingLogger::lines, lines) << level;
        EXPECT_TRUE(logger->categoryIsEnabled("DEBUG") && logger->componentAndCategoryAreEnabled("x", "ERROR"));
    }
    testing::internal::CaptureStderr();
    const LoggerRef cerrLogger(new CerrLogger);
    cerrLogger->clone()->logDebug("to standard error");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "to standard error\n");
    EXPECT_EQ(cerrLogger->getDefaultComponent(), "cerr");
    EXPECT_EQ(priorities.substr(0, 4), "2367") << "critical, error, information, debug";
}

TEST(Logger, macrosBuildTheMessageOnlyWhenItIsLogged) {
    const LoggerRef logger(new RecordingLogger(E_ERROR_LEVEL));
    const LoggerRef copy = logger->clone();
    copy->setDefaultComponent("copy");
    int built = 0;
    const auto message = [&built] {
        ++built;
        return String("m");
    };
    RecordingLogger::lines.clear();
    OW_LOG_INFO(logger, message());
    OW_LOG_DEBUG(logger, message());
    EXPECT_EQ(built, 0);
    const int line = __LINE__ + 1;
    OW_LOG_ERROR(copy, message());
    logger->logMessage("own", "x");
    EXPECT_EQ(RecordingLogger::lines, Format("copy/ERROR/m/%1;module/own/x/-1;", line).c_str());
}

class DateTimeInNewYork : public testing::Test {
  protected:
    void SetUp() override { setZone("EST5EDT,M3.2.0,M11.1.0"); }
    void TearDown() override { setZone(nullptr); }

  private:
    static void setZone(const char* zone) {
        zone ? ::setenv("TZ", zone, 1) : ::unsetenv("TZ");
        ::tzset();
    }
};

TEST_F(DateTimeInNewYork, readsAndSetsTheCalendar) {
    const DateTime::ETimeOffset utc = DateTime::E_UTC_TIME;
    const DateTime start(2004, 1, 31, 12, 30, 15, 250000);
    using Change = void (*)(DateTime&);
    const std::pair<Change, const char*> cases[] = {
        {[](DateTime&) {}, "Sat Jan 31 12:30:15 2004\n"},
        {[](DateTime& t) { t.addMonths(1); }, "Tue Mar  2 12:30:15 2004\n"},
        {[](DateTime& t) { t.addMonths(6); }, "Sat Jul 31 13:30:15 2004\n"}, // in UTC
        {[](DateTime& t) { t.setMonth(7); }, "Sat Jul 31 13:30:15 2004\n"},  // the daylight flag stays
        {[](DateTime& t) { t.setMonth(7, DateTime::E_UTC_TIME); }, "Sat Jul 31 13:30:15 2004\n"},
        {[](DateTime& t) { t.addYears(-1); }, "Fri Jan 31 12:30:15 2003\n"},
        {[](DateTime& t) { t.addWeeks(-1); }, "Sat Jan 24 12:30:15 2004\n"},
        {[](DateTime& t) { t.addDays(1); }, "Sun Feb  1 12:30:15 2004\n"},
        {[](DateTime& t) { t.addHours(-1); }, "Sat Jan 31 11:30:15 2004\n"},
        {[](DateTime& t) { t.addMinutes(31); }, "Sat Jan 31 13:01:15 2004\n"},
        {[](DateTime& t) { t += 50; }, "Sat Jan 31 12:31:05 2004\n"},
        {[](DateTime& t) { t -= 16; }, "Sat Jan 31 12:29:59 2004\n"},
        {[](DateTime& t) { t.setDay(0); }, "Wed Dec 31 12:30:15 2003\n"},
        {[](DateTime& t) { t.setMinute(70); }, "Sat Jan 31 13:10:15 2004\n"},
        {[](DateTime& t) { t.setSecond(-1); }, "Sat Jan 31 12:29:59 2004\n"},
        {[](DateTime& t) { t.setHour(5, DateTime::E_UTC_TIME); }, "Sat Jan 31 00:30:15 2004\n"},
        {[](DateTime& t) { t.setTime(1, 2, 3); }, "Sat Jan 31 01:02:03 2004\n"},
        {[](DateTime& t) { t.setYear(105); }, "Mon Jan 31 12:30:15 2005\n"}, // counts from 1900
        {[](DateTime& t) { t.set(2003, 14, 35, 25, 0, 0, 0); }, "Sun Mar  7 01:00:00 2004\n"}};
    for (const auto& [change, local] : cases) {
        DateTime changed(start);
        change(changed);
        EXPECT_EQ(changed.toString(), local);
    }
    EXPECT_EQ(start.toString(utc), "Sat Jan 31 17:30:15 2004\n");
    EXPECT_EQ(DateTime(2004, 7, 1, 12).getHour(utc), 16);
    EXPECT_EQ(start.toString("%d.%m.%y %H"), "31.01.04 12");
    EXPECT_EQ(start.toString("") + start.toString(std::string(1024, 'x').c_str()), "");
    EXPECT_TRUE(start.getMonth() == 1 && start.getDow() == 6 && start.getHour(utc) == 17 && start.getYear() == 2004);
    EXPECT_EQ(start.getMicrosecond(), 250000U);
    struct tm fields;
    EXPECT_EQ(start.toLocal(fields), -300);
    EXPECT_TRUE(DateTime(10, 1) < DateTime(10, 2) && DateTime(9, 2) < DateTime(10, 1) && DateTime(-5) < DateTime());
}

TEST_F(DateTimeInNewYork, isReadFromText) {
    // Null: refused.
    const std::pair<const char*, const char*> cases[] = {
        {"20040131142530.123456+060", "Sat Jan 31 13:25:30 2004\n"},
        {"200401311425**.******-300", "Sat Jan 31 19:25:00 2004\n"},
        {"20041331142530.123456+060", nullptr}, // month 13
        {"20040131142530.123456:000", nullptr}, // an interval
        {"Jan 31 14:25 2004", "Sat Jan 31 19:25:00 2004\n"},
        {"2004", nullptr},
        {"Monday January 31 14:25:30 2004 CET", "Sat Jan 31 13:25:30 2004\n"}, // no look at the weekday
        {"CEST 14:25 31\t2004 Jul Sat", "Sat Jul 31 12:25:00 2004\n"},
        {"14:25 31 Jan 2004 J", "Sat Jan 31 19:25:00 2004\n"},
        {"14:25 31 Jan 2004 Y", "Sun Feb  1 02:25:00 2004\n"},
        {"14:25 31 jan 2004", nullptr},
        {"14:25 31 Jan 2004 XYZ", nullptr},
        {"14:25 31 Jan 2004 Z Z", nullptr},
        {"14:25 31 Jan 2004 5", nullptr},
        {"24:00 31 Jan 2004", nullptr},
        {"14:25: 31 Jan 2004", nullptr},
        {"14:25 31 2004", nullptr},
        {"Sat, 14:25 31 Jan 2004", nullptr},
        {"", nullptr}};
    for (const auto& [text, utc] : cases) {
        DateTime read;
        const std::string thrown = thrownBy([&read, from = text] { read = DateTime(String(from)); });
        EXPECT_EQ(thrown, utc ? "nothing" : std::string("DateTimeException: Invalid DateTime: ") + text);
        EXPECT_EQ(read.toString(DateTime::E_UTC_TIME), utc ? utc : "Thu Jan  1 00:00:00 1970\n") << text;
    }
    EXPECT_EQ(DateTime(String(cases[0].first)).getMicrosecond(), 123456U);
}

TEST(DateTime, refusesWhatItCannotRepresent) {
    const std::string before1970 = "DateTimeException: Unable to represent time \"";
    DateTime time(5, 6);
    using Call = std::function<void()>;
    const std::pair<Call, std::string> cases[] = {
        {[&] { time.setMonth(0); }, "DateTimeException: invalid month: 0"},
        {[&] { time.setMicrosecond(1000000); }, "DateTimeException: invalid microseconds: 1000000"},
        {[&] { time.set(-1); }, "DateTimeException: Either t == -1 or microseconds > 999999"},
        {[&] { time.set(1, 1000000); }, "DateTimeException: Either t == -1 or microseconds > 999999"},
        {[] { DateTime(std::numeric_limits<time_t>::max()).getYear(); },
         sizeof(time_t) > 4 ? "DateTimeException: Invalid time_t: 9223372036854775807" : "nothing"},
        {[] { DateTime(1969, 12, 31, 0, 0, 0, 0, DateTime::E_UTC_TIME); },
         before1970 + "Wed Dec 31 00:00:00 1969\n\" as a time_t"},
        {[&] { time.addYears(INT_MAX); }, "DateTimeException: A date or time is out of range"},
        {[] { DateTime(2026, INT_MIN, 1); }, "DateTimeException: A date or time is out of range"}};
    for (const auto& [call, thrown] : cases) {
        EXPECT_EQ(thrownBy(call), thrown);
    }
    EXPECT_EQ(time, DateTime(5, 6)) << "changed";
    EXPECT_NE(thrownBy([&] { time.addDays(-1); }), "nothing");
    EXPECT_EQ(time.get(), 5 - 86400) << "holds the negative time";
}

TEST(OperationContext, keepsDataUnderKeys) {
    struct Number : public OperationContext::Data {};
    OperationContext context;
    context.setStringData("user", "admin");
    context.setData("number", new Number);
    EXPECT_EQ(context.getStringData("user"), "admin");
    EXPECT_TRUE(context.getUserInfo().getInternal() && context.getUserInfo().getUserName().empty());
    context.setStringData(OperationContext::USER_NAME, "operator");
    EXPECT_TRUE(!context.getUserInfo().getInternal() && context.getUserInfo().getUserName() == "operator");
    EXPECT_EQ(context.getStringDataWithDefault("number", "none"), "none");
    EXPECT_TRUE(context.getData("number").cast_to<Number>());
    EXPECT_EQ(thrownBy([&] { context.getStringData("absent"); }), "ContextDataNotFoundException: absent");
    context.removeData("user");
    EXPECT_FALSE(context.keyHasData("user") || context.getData("user"));
}

TEST(StringBuffer, appendsAndCuts) {
    StringBuffer text;
    text += UInt8(65);
    text += Int8(-1);
    text += ' ';
    text += String("s");
    text += static_cast<const char*>(nullptr);
    text += 0.5;
    text += Bool(true);
    text += Char16(UInt16(0xE9));
    EXPECT_STREQ(text.append("xyz", 1).append(StringBuffer("!")).c_str(), "65-1 s0.500000true\xC3\xA9x!");
    text.truncate(2);
    text.truncate(99);
    EXPECT_TRUE(text.equals("65") && text.endsWith('5') && text.startsWith('6') && text[99] == '\0');
    text.chop();
    EXPECT_STREQ(text.c_str(), "6");
    text = " a \t";
    text.trim();
    EXPECT_STREQ(text.c_str(), "a");
    StringBuffer empty(size_t(0));
    empty.chop();
    empty.trim();
    empty.reset();
    EXPECT_FALSE(empty.startsWith('\0') || empty.endsWith('\0') || empty.equals("") || empty.length() != 0);
    const size_t rooms[] = {StringBuffer().allocated(), empty.allocated(), StringBuffer("abc").allocated()};
    EXPECT_TRUE(rooms[0] == 128 && rooms[1] == 128 && rooms[2] == 131);
    text.swap(empty);
    EXPECT_EQ(empty.releaseString(), "a");
    EXPECT_EQ(empty.length(), 1U) << "still tells the old one";
    empty = String("again");
    EXPECT_STREQ(empty.c_str(), "again");
}

TEST(StringBuffer, readsLines) {
    std::istringstream lines("a\r\n\nb\rc");
    StringBuffer text("former");
    EXPECT_STREQ(text.getLine(lines), "a");
    EXPECT_STREQ(text.getLine(lines), "");
    EXPECT_FALSE(lines.eof());
    text = "so far ";
    EXPECT_STREQ(text.getLine(lines, false), "so far b");
    EXPECT_TRUE(lines.eof() && !lines.fail());
    EXPECT_STREQ(text.getLine(lines), "");
    EXPECT_TRUE(lines.fail());
}

// A device that returns what was written to it, a few bytes at a time, and is full at 20.
struct Loop : public BaseStreamBuffer {
    Loop() : BaseStreamBuffer(4) {}
    size_t readDevice(char* buffer, size_t size) override {
        const size_t got = content.copy(buffer, std::min<size_t>(size, 3));
        content.erase(0, got);
        return got;
    }
    bool writeDevice(const char* buffer, size_t size) override { return content.append(buffer, size).size() <= 20; }
    std::string content;
};

TEST(BaseStreamBuffer, movesAllBytesAndReportsAFullDevice) {
    Loop loop;
    std::iostream stream(&loop);
    stream << "over the buffer" << std::flush;
    std::string line;
    std::getline(stream, line);
    EXPECT_EQ(line, "over the buffer");
    stream.clear();
    EXPECT_FALSE(stream << std::string(30, 'x') << std::flush);
}

} // namespace
