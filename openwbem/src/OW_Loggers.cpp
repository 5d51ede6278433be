// The loggers of the library itself.

#include "OW_CerrLogger.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_Format.hpp"

#include <iostream>
#include <syslog.h>

namespace OpenWBEM {

CerrLogger::CerrLogger() : Logger("cerr", E_ALL_LEVEL) {}
CerrLogger::~CerrLogger() = default;

void CerrLogger::doProcessLogMessage(const LogMessage& message) const {
    std::cerr << message.message + "\n"; // in one call, so that the lines of threads do not mix
}

LoggerRef CerrLogger::doClone() const {
    return new CerrLogger(*this);
}

namespace {

class NullLogger : public Logger {
  public:
    NullLogger() : Logger(STR_DEFAULT_COMPONENT, E_NONE_LEVEL) {}

  protected:
    void doProcessLogMessage(const LogMessage&) const override {}
    LoggerRef doClone() const override { return new NullLogger(*this); }
};

int priorityOf(const String& category) {
    if (category == Logger::STR_FATAL_CATEGORY) {
        return LOG_CRIT;
    }
    if (category == Logger::STR_ERROR_CATEGORY) {
        return LOG_ERR;
    }
    return category == Logger::STR_DEBUG_CATEGORY ? LOG_DEBUG : LOG_INFO;
}

class SyslogLogger : public Logger {
  public:
    SyslogLogger() : Logger("syslog", E_ERROR_LEVEL) {}

  protected:
    void doProcessLogMessage(const LogMessage& message) const override {
        ::syslog(priorityOf(message.category), "%s", message.message.c_str());
    }
    LoggerRef doClone() const override { return new SyslogLogger(*this); }
};

LoggerRef makeLogger(const String& type) {
    if (type == "syslog") {
        return new SyslogLogger;
    }
    if (type == "null") {
        return new NullLogger;
    }
    if (type == "cerr") {
        return new CerrLogger;
    }
    OW_THROW_ERR(LoggerException, Format("Unknown type of log: %1", type).c_str(), Logger::E_UNKNOWN_LOG_APPENDER_TYPE);
}

} // namespace

LoggerRef Logger::createLogger(const String& type, bool debug) {
    LoggerRef logger = makeLogger(type);
    logger->setLogLevel(debug ? E_ALL_LEVEL : E_ERROR_LEVEL);
    return logger;
}

} // namespace OpenWBEM
