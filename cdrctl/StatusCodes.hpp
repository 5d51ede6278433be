// The numbers that people meet in messages and logs, explained.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cdrctl {

struct StatusMeaning {
    std::uint32_t number = 0;
    std::string source; ///< who uses the number: "platform", "CDR module", "CIM", "HTTP"
    std::string name;   ///< as in headers; may be empty
    std::string text;
    std::string advice; ///< what to do; may be empty
};

/// Every meaning of the text, which is a decimal or hexadecimal (0x...) number or a name such as OSA_QUEUE_FULL; empty
/// when it has none.
std::vector<StatusMeaning> meaningsOf(const std::string& code);

/// What the module means by a number in brackets in a server's text, such as "(301)"; nothing when there is none.
std::optional<StatusMeaning> moduleStatusIn(std::string_view text);

} // namespace cdrctl
