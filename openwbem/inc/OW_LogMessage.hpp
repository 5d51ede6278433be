// One message on its way to the log.

#pragma once

#include "OW_String.hpp"
#include "OW_config.h"

namespace OpenWBEM {

struct OW_COMMON_API LogMessage {
    /// The file and method names are kept as pointers: they must outlive the message. They may be null, the line -1.
    LogMessage(const String& component_, const String& category_, const String& message_, const char* filename_,
               int fileline_, const char* methodname_)
        : component(component_), category(category_), message(message_), filename(filename_), fileline(fileline_),
          methodname(methodname_) {}

    String component;
    String category;
    String message;
    const char* filename;
    int fileline;
    const char* methodname;
};

} // namespace OpenWBEM
