// Logger, DateTime, OperationContext and the streams.

#include "OW_BaseStreamBuffer.hpp"
#include "OW_DateTime.hpp"
#include "OW_Format.hpp"
#include "OW_Logger.hpp"
#include "OW_OperationContext.hpp"
#include "OW_StringBuffer.hpp"
#include "OW_StringStream.hpp"
#include "Thrown.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <functional>
#include <limits>

using namespace OpenWBEM;

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
    const struct {
        const char* level;
        const char* lines;
    } cases[] = {
        {"NONE", ""},
        {"nonsense", "module/FATAL/f/-1;"},
        {"Error", "module/FATAL/f/-1;module/ERROR/e/-1;"},
        {"INFO", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;"},
        {"debug", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;module/DEBUG/d/-1;"},
        {"all", "module/FATAL/f/-1;module/ERROR/e/-1;module/INFO/i/-1;module/DEBUG/d/-1;"},
    };
    for (const auto& c : cases) {
        const LoggerRef logger(new RecordingLogger(E_ALL_LEVEL));
        logger->setLogLevel(String(c.level));
        RecordingLogger::lines.clear();
        logger->logFatalError("f");
        logger->logError("e");
        logger->logInfo("i");
        logger->logDebug("d");
        EXPECT_EQ(RecordingLogger::lines, c.lines) << c.level;
        EXPECT_EQ(logger->categoryIsEnabled("DEBUG"), std::string(c.lines).find("DEBUG") != std::string::npos);
        EXPECT_EQ(logger->componentAndCategoryAreEnabled("x", "ERROR"),
                  std::string(c.lines).find("ERROR") != std::string::npos);
    }
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

TEST(DateTime, readsAndSetsTheCalendar) {
    ::setenv("TZ", "EST5EDT,M3.2.0,M11.1.0", 1);
    ::tzset();
    const DateTime summer(2026, 7, 4, 12, 30, 15, 250000);
    EXPECT_EQ(summer.getUtcOffsetMinutes(), -240);
    EXPECT_EQ(summer.getHour(DateTime::E_UTC_TIME), 16);
    EXPECT_EQ(summer.toString(), "Sat Jul  4 12:30:15 2026");
    EXPECT_EQ(summer.getMicrosecond(), 250000U);
    DateTime winter(summer);
    winter.addMonths(6);
    EXPECT_EQ(winter.toString(), "Mon Jan  4 12:30:15 2027");
    EXPECT_EQ(winter.getUtcOffsetMinutes(), -300);
    winter.addDays(-4);
    winter.addYears(1);
    EXPECT_EQ(winter.toString(), "Fri Dec 31 12:30:15 2027");
    EXPECT_EQ(DateTime(1970, 1, 1, 0, 0, -1, 0, DateTime::E_UTC_TIME).get(), -1);
    EXPECT_EQ(DateTime(10, 2500000), DateTime(12, 500000));
    EXPECT_TRUE(DateTime(10, 1) < DateTime(10, 2) && DateTime(9, 2) < DateTime(10, 1));
    EXPECT_EQ((DateTime(10) + 5 - 3).get(), 12);
    ::unsetenv("TZ");
    ::tzset();
}

TEST(DateTime, refusesWhatNoClockShows) {
    const std::string refusal = "DateTimeException: A date or time is out of range";
    EXPECT_EQ(thrownBy([] { DateTime(INT_MIN, 1, 1); }), refusal);
    EXPECT_EQ(thrownBy([] { DateTime(2026, INT_MIN, 1); }), refusal);
    EXPECT_EQ(thrownBy([] { DateTime(INT_MAX, 12, 31).addYears(INT_MAX); }), refusal);
    EXPECT_EQ(thrownBy([] { DateTime(std::numeric_limits<time_t>::max()) += 1; }), refusal);
    EXPECT_NE(thrownBy([] { DateTime(std::numeric_limits<time_t>::max()).getYear(); }), "nothing");
}

TEST(OperationContext, keepsDataUnderKeys) {
    struct Number : public OperationContext::Data {};
    OperationContext context;
    context.setStringData("user", "admin");
    context.setData("number", new Number);
    EXPECT_EQ(context.getStringData("user"), "admin");
    EXPECT_EQ(context.getStringDataWithDefault("number", "none"), "none");
    EXPECT_TRUE(context.getData("number").cast_to<Number>());
    EXPECT_EQ(thrownBy([&] { context.getStringData("absent"); }), "ContextDataNotFoundException: absent");
    context.removeData("user");
    EXPECT_FALSE(context.keyHasData("user") || context.getData("user"));
}

TEST(StringStream, writesAndReads) {
    OStringStream out(1);
    out << "n=" << 42 << std::string(1000, '.');
    EXPECT_EQ(out.length(), 1004U);
    EXPECT_EQ(out.toString().substring(0, 5), "n=42.");
    out.reset();
    out << 'x';
    EXPECT_EQ(out.releaseString(), "x");
    EXPECT_EQ(out.length(), 0U);
    IStringStream in("7 words");
    int number = 0;
    std::string word;
    in >> number >> word;
    EXPECT_TRUE(number == 7 && word == "words" && in.peek() == EOF);
}

TEST(StringBuffer, appendsNumbersAsNumbers) {
    StringBuffer text;
    text += UInt8(65);
    text += Int8(-1);
    text += ' ';
    text += String("s");
    text += static_cast<const char*>(nullptr);
    text += 0.5;
    EXPECT_STREQ(text.c_str(), "65-1 s0.5");
    text.truncate(2);
    text.truncate(99);
    EXPECT_TRUE(text.equals("65") && text.endsWith('5') && text[99] == '\0');
    IStringStream lines("a\r\n\nb");
    EXPECT_TRUE(text.getLine(lines) && text.equals("a"));
    EXPECT_TRUE(text.getLine(lines) && text.equals(""));
    EXPECT_TRUE(text.getLine(lines) && text.equals("b"));
    EXPECT_FALSE(text.getLine(lines));
}

// A device that returns what was written to it, a few bytes at a time, until it is full.
class Loop : public BaseStreamBuffer {
  public:
    Loop() : BaseStreamBuffer(4) {}

  protected:
    size_t readDevice(char* buffer, size_t size) override {
        const size_t got = m_content.copy(buffer, std::min<size_t>(size, 3));
        m_content.erase(0, got);
        return got;
    }
    bool writeDevice(const char* buffer, size_t size) override {
        m_content.append(buffer, size);
        return m_content.size() <= 20;
    }

  private:
    std::string m_content;
};

TEST(BaseStreamBuffer, movesAllBytesAndReportsAFullDevice) {
    Loop loop;
    std::iostream stream(&loop);
    stream << "over the buffer" << std::flush;
    std::string line;
    std::getline(stream, line);
    EXPECT_EQ(line, "over the buffer");
    stream.clear();
    stream << std::string(30, 'x') << std::flush;
    EXPECT_FALSE(stream);
}

} // namespace
