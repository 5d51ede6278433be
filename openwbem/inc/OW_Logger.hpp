// Interface to the log.

#pragma once

#include "OW_CommonFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_IntrusiveCountableBase.hpp"
#include "OW_LogLevel.hpp"
#include "OW_LogMessage.hpp"
#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// A log cannot be set up.
OW_DECLARE_APIEXCEPTION(Logger, OW_COMMON_API)

/// Logs messages under a component and a category. Several threads may log at once if doProcessLogMessage() allows it;
/// set level and default component before sharing the Logger.
class OW_VISIBILITY_DEFAULT OW_COMMON_API Logger : public IntrusiveCountableBase {
  public:
    /// Error codes of the LoggerException that createLogger() throws.
    enum ELoggerErrorCodes { E_UNKNOWN_LOG_APPENDER_TYPE, E_INVALID_MAX_FILE_SIZE, E_INVALID_MAX_BACKUP_INDEX };

    /// The categories of the four methods below, the names of the remaining levels, and the component of messages
    /// without one.
    static const String STR_NONE_CATEGORY;
    static const String STR_FATAL_CATEGORY;
    static const String STR_ERROR_CATEGORY;
    static const String STR_INFO_CATEGORY;
    static const String STR_DEBUG_CATEGORY;
    static const String STR_ALL_CATEGORY;
    static const String STR_DEFAULT_COMPONENT;

    ~Logger() override;

    /// Log under the default component, unless the level leaves the category out.
    void logFatalError(const String& message, const char* filename = nullptr, int fileline = -1,
                       const char* methodname = nullptr) const;
    void logError(const String& message, const char* filename = nullptr, int fileline = -1,
                  const char* methodname = nullptr) const;
    void logInfo(const String& message, const char* filename = nullptr, int fileline = -1,
                 const char* methodname = nullptr) const;
    void logDebug(const String& message, const char* filename = nullptr, int fileline = -1,
                  const char* methodname = nullptr) const;

    /// Log whatever the level is.
    void logMessage(const String& component, const String& category, const String& message) const;
    void logMessage(const String& component, const String& category, const String& message, const char* filename,
                    int fileline, const char* methodname) const;
    void logMessage(const String& category, const String& message) const;
    void logMessage(const String& category, const String& message, const char* filename, int fileline,
                    const char* methodname) const;
    void logMessage(const LogMessage& message) const;

    ELogLevel getLogLevel() const;
    void setLogLevel(ELogLevel logLevel);
    /// Takes "NONE", "FATAL", "ERROR", "INFO", "DEBUG" or "ALL" in any case; any other text means "FATAL".
    void setLogLevel(const String& logLevel);
    void setDefaultComponent(const String& component);
    String getDefaultComponent() const;
    /// Whether a message of that category would be logged at all.
    bool categoryIsEnabled(const String& category) const;
    bool componentAndCategoryAreEnabled(const String& component, const String& category) const;
    /// A Logger to the same log with its own level and default component.
    LoggerRef clone() const;
    /// A Logger to the system's log ("syslog"), to nowhere ("null") or to standard error ("cerr"), at level error or,
    /// with debug, at all levels. Throws LoggerException for another type.
    OW_DEPRECATED static LoggerRef createLogger(const String& type, bool debug);

  protected:
    Logger(const String& defaultComponent, ELogLevel logLevel);
    /// For component STR_DEFAULT_COMPONENT, the first at level error.
    OW_DEPRECATED Logger();
    OW_DEPRECATED explicit Logger(ELogLevel logLevel);
    Logger(const Logger&);
    Logger& operator=(const Logger&);
    void swap(Logger& x);

    /// Writes the message to the log.
    virtual void doProcessLogMessage(const LogMessage& message) const = 0;
    virtual LoggerRef doClone() const = 0;
    /// By default everything is enabled, whatever the level.
    virtual bool doCategoryIsEnabled(const String& category) const;
    virtual bool doComponentAndCategoryAreEnabled(const String& component, const String& category) const;

  private:
    void logAtLevel(ELogLevel level, const String& category, const String& message, const char* filename, int fileline,
                    const char* methodname) const;

    String defaultComponent_;
    ELogLevel logLevel_;
};

} // namespace OpenWBEM

/// Log with the place of the macro. logger is anything with operator-> to a Logger; message is built only when it is
/// logged.
#define OW_LOG_AT_LEVEL(logger, level, logCategory, message)                                                           \
    do {                                                                                                               \
        if ((logger)->getLogLevel() >= (level)) {                                                                      \
            (logger)->logMessage((logCategory), (message), __FILE__, __LINE__, __PRETTY_FUNCTION__);                   \
        }                                                                                                              \
    } while (0)
#define OW_LOG_DEBUG(logger, message)                                                                                  \
    OW_LOG_AT_LEVEL(logger, ::OpenWBEM::E_DEBUG_LEVEL, ::OpenWBEM::Logger::STR_DEBUG_CATEGORY, message)
#define OW_LOG_INFO(logger, message)                                                                                   \
    OW_LOG_AT_LEVEL(logger, ::OpenWBEM::E_INFO_LEVEL, ::OpenWBEM::Logger::STR_INFO_CATEGORY, message)
#define OW_LOG_ERROR(logger, message)                                                                                  \
    OW_LOG_AT_LEVEL(logger, ::OpenWBEM::E_ERROR_LEVEL, ::OpenWBEM::Logger::STR_ERROR_CATEGORY, message)
#define OW_LOG_FATAL_ERROR(logger, message)                                                                            \
    OW_LOG_AT_LEVEL(logger, ::OpenWBEM::E_FATAL_ERROR_LEVEL, ::OpenWBEM::Logger::STR_FATAL_CATEGORY, message)
#define OW_LOG(logger, category, message)                                                                              \
    do {                                                                                                               \
        if ((logger)->categoryIsEnabled((category))) {                                                                 \
            (logger)->logMessage((category), (message), __FILE__, __LINE__, __PRETTY_FUNCTION__);                      \
        }                                                                                                              \
    } while (0)
