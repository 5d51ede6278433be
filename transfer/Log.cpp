#include "Log.hpp"

#include "ZpoShared.h"

namespace transfer::log {
namespace {

constexpr std::int32_t kCategory = 2;
constexpr std::int32_t kNotice = 1;
constexpr std::int32_t kFailure = 4;
constexpr std::int32_t kIdentifier = -1;

/// A log that cannot be written does not keep a file from being sent.
void add(std::int32_t level, const std::string& text) {
    static const std::uint32_t handle = [] {
        std::uint32_t fresh = 0;
        (void)ZpoDiagRegisterModule("CDRTransfer", "CDR", "CDRTransfer", "CdrOAM.log", &fresh);
        return fresh;
    }();
    (void)ZpoDiagAddLogEntry(handle, kCategory, level, kIdentifier, text.c_str());
}

} // namespace

void notice(const std::string& text) {
    add(kNotice, text);
}

void failure(const std::string& text) {
    add(kFailure, text);
}

} // namespace transfer::log
