#include "OW_Logger.hpp"

#include <utility>

namespace OpenWBEM {

OW_DEFINE_EXCEPTION(Logger)

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

const NamedLevel LEVELS[] = {
    {"NONE", E_NONE_LEVEL}, {"FATAL", E_FATAL_ERROR_LEVEL}, {"ERROR", E_ERROR_LEVEL},
    {"INFO", E_INFO_LEVEL}, {"DEBUG", E_DEBUG_LEVEL},       {"ALL", E_ALL_LEVEL},
};
} // namespace

Logger::Logger(const String& defaultComponent, ELogLevel logLevel)
    : m_defaultComponent(defaultComponent), m_logLevel(logLevel) {}

Logger::Logger(const Logger&) = default;
Logger& Logger::operator=(const Logger&) = default;
Logger::~Logger() = default;

void Logger::swap(Logger& x) {
    m_defaultComponent.swap(x.m_defaultComponent);
    std::swap(m_logLevel, x.m_logLevel);
}

void Logger::logAtLevel(ELogLevel level, const String& category, const String& message, const char* filename,
                        int fileline, const char* methodname) const {
    if (m_logLevel >= level) {
        doProcessLogMessage(LogMessage(m_defaultComponent, category, message, filename, fileline, methodname));
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
    doProcessLogMessage(LogMessage(m_defaultComponent, category, message, nullptr, -1, nullptr));
}

void Logger::logMessage(const String& category, const String& message, const char* filename, int fileline,
                        const char* methodname) const {
    doProcessLogMessage(LogMessage(m_defaultComponent, category, message, filename, fileline, methodname));
}

void Logger::logMessage(const LogMessage& message) const {
    doProcessLogMessage(message);
}

ELogLevel Logger::getLogLevel() const {
    return m_logLevel;
}

void Logger::setLogLevel(ELogLevel logLevel) {
    m_logLevel = logLevel;
}

void Logger::setLogLevel(const String& logLevel) {
    m_logLevel = E_FATAL_ERROR_LEVEL;
    for (const NamedLevel& candidate : LEVELS) {
        if (logLevel.equalsIgnoreCase(candidate.name)) {
            m_logLevel = candidate.level;
        }
    }
}

void Logger::setDefaultComponent(const String& component) {
    m_defaultComponent = component;
}

String Logger::getDefaultComponent() const {
    return m_defaultComponent;
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

bool Logger::doCategoryIsEnabled(const String& category) const {
    for (const NamedLevel& candidate : LEVELS) {
        if (category.equalsIgnoreCase(candidate.name)) {
            return candidate.level != E_NONE_LEVEL && m_logLevel >= candidate.level;
        }
    }
    return m_logLevel != E_NONE_LEVEL;
}

bool Logger::doComponentAndCategoryAreEnabled(const String&, const String& category) const {
    return doCategoryIsEnabled(category);
}

} // namespace OpenWBEM
