#include "DiagnosticLog.hpp"

#include "ZpoShared.h"

#include <cstdarg>
#include <cstdio>

std::uint32_t zpoHandle = 0;
char controlLogBuffer[256] = "";

namespace {

constexpr std::int32_t kCategory = 2;
constexpr std::int32_t kIdentifier = -1;

} // namespace

namespace cdroam {

void registerDiagnostics() {
    (void)ZpoDiagRegisterModule("CDRProvider.so", "CDR", "CDROAM", "CdrOAM.log", &zpoHandle);
}

void deregisterDiagnostics() {
    (void)ZpoDiagDeregisterModule(zpoHandle);
}

std::uint32_t addLogEntry(LogLevel level, const char* text) {
    return ZpoDiagAddLogEntry(zpoHandle, kCategory, level, kIdentifier, text);
}

std::uint32_t logFormatted(LogLevel level, const char* format, ...) {
    char text[1024];
    std::va_list arguments;
    va_start(arguments, format);
    (void)std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return addLogEntry(level, text);
}

std::uint32_t logFailure(LogLevel level, const char* operation, unsigned long code) {
    return logFormatted(level, "%s error = %i", operation, static_cast<int>(code));
}

void logControlCharacters(const char* label) {
    (void)std::snprintf(controlLogBuffer, sizeof controlLogBuffer, "ControlCharacters Found in PDR:%s", label);
    (void)addLogEntry(LogWarning, controlLogBuffer);
}

} // namespace cdroam

std::uint32_t writeError(const char* operation, unsigned long code) {
    return cdroam::logFailure(cdroam::LogError, operation, code);
}
