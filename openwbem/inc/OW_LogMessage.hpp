// One message on its way to the log.

#pragma once

#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

struct OW_COMMON_API LogMessage {
    /// The file and method names are kept as pointers: they must outlive the message. They may be null, the line -1.
    LogMessage(const String& ofComponent, const String& ofCategory, const String& text, const char* file, int line,
               const char* method)
        : component(ofComponent), category(ofCategory), message(text), filename(file), fileline(line),
          methodname(method) {}

    String component;
    String category;
    String message;
    const char* filename;
    int fileline;
    const char* methodname;
};

} // namespace OpenWBEM
