#include "OW_Logger.hpp"

#include "OW_ExceptionIds.hpp"

#include <utility>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION_WITH_ID(Logger)

const String Logger::STR_NONE_CATEGORY("NONE");
const String Logger::STR_FATAL_CATEGORY("FATAL");
const String Logger::STR_ERROR_CATEGORY("ERROR");
const String Logger::STR_INFO_CATEGORY("INFO");
const String Logger::STR_DEBUG_CATEGORY("DEBUG");
const String Logger::STR_ALL_CATEGORY("ALL");
const String Logger::STR_DEFAULT_COMPONENT("none");

namespace {
struct NamedLevel {
    const char* name;
    ELogLevel level;
};

const NamedLevel kLevels[] = {
    {"NONE", E_NONE_LEVEL}, {"FATAL", E_FATAL_ERROR_LEVEL}, {"ERROR", E_ERROR_LEVEL},
    {"INFO", E_INFO_LEVEL}, {"DEBUG", E_DEBUG_LEVEL},       {"ALL", E_ALL_LEVEL},
};
} // namespace

Logger::Logger(const String& defaultComponent, ELogLevel logLevel)
    : defaultComponent_(defaultComponent), logLevel_(logLevel) {}

Logger::Logger() : Logger(STR_DEFAULT_COMPONENT, E_ERROR_LEVEL) {}
Logger::Logger(ELogLevel logLevel) : Logger(STR_DEFAULT_COMPONENT, logLevel) {}
Logger::Logger(const Logger&) = default;
Logger& Logger::operator=(const Logger&) = default;
Logger::~Logger() = default;

void Logger::swap(Logger& x) {
    defaultComponent_.swap(x.defaultComponent_);
    std::swap(logLevel_, x.logLevel_);
}

void Logger::logAtLevel(ELogLevel level, const String& category, const String& message, const char* filename,
                        int fileline, const char* methodname) const {
    if (logLevel_ >= level) {
        doProcessLogMessage(LogMessage(defaultComponent_, category, message, filename, fileline, methodname));
    }
}

void Logger::logFatalError(const String& message, const char* filename, int fileline, const char* methodname) const {
    logAtLevel(E_FATAL_ERROR_LEVEL, STR_FATAL_CATEGORY, message, filename, fileline, methodname);
}

void Logger::logError(const String& message, const char* filename, int fileline, const char* methodname) const {
    logAtLevel(E_ERROR_LEVEL, STR_ERROR_CATEGORY, message, filename, fileline, methodname);
}

void Logger::logInfo(const String& message, const char* filename, int fileline, const char* methodname) const {
    logAtLevel(E_INFO_LEVEL, STR_INFO_CATEGORY, message, filename, fileline, methodname);
}

void Logger::logDebug(const String& message, const char* filename, int fileline, const char* methodname) const {
    logAtLevel(E_DEBUG_LEVEL, STR_DEBUG_CATEGORY, message, filename, fileline, methodname);
}

void Logger::logMessage(const String& component, const String& category, const String& message) const {
    doProcessLogMessage(LogMessage(component, category, message, nullptr, -1, nullptr));
}

void Logger::logMessage(const String& component, const String& category, const String& message, const char* filename,
                        int fileline, const char* methodname) const {
    doProcessLogMessage(LogMessage(component, category, message, filename, fileline, methodname));
}

void Logger::logMessage(const String& category, const String& message) const {
    doProcessLogMessage(LogMessage(defaultComponent_, category, message, nullptr, -1, nullptr));
}

void Logger::logMessage(const String& category, const String& message, const char* filename, int fileline,
                        const char* methodname) const {
    doProcessLogMessage(LogMessage(defaultComponent_, category, message, filename, fileline, methodname));
}

void Logger::logMessage(const LogMessage& message) const {
    doProcessLogMessage(message);
}

ELogLevel Logger::getLogLevel() const {
    return logLevel_;
}

void Logger::setLogLevel(ELogLevel logLevel) {
    logLevel_ = logLevel;
}

void Logger::setLogLevel(const String& logLevel) {
    logLevel_ = E_FATAL_ERROR_LEVEL;
    for (const NamedLevel& candidate : kLevels) {
        if (logLevel.equalsIgnoreCase(candidate.name)) {
            logLevel_ = candidate.level;
        }
    }
}

void Logger::setDefaultComponent(const String& component) {
    defaultComponent_ = component;
}

String Logger::getDefaultComponent() const {
    return defaultComponent_;
}

bool Logger::categoryIsEnabled(const String& category) const {
    return doCategoryIsEnabled(category);
}

bool Logger::componentAndCategoryAreEnabled(const String& component, const String& category) const {
    return doComponentAndCategoryAreEnabled(component, category);
}

LoggerRef Logger::clone() const {
    return doClone();
}

bool Logger::doCategoryIsEnabled(const String&) const {
    return true;
}

bool Logger::doComponentAndCategoryAreEnabled(const String&, const String&) const {
    return true;
}

} // namespace OpenWBEM
