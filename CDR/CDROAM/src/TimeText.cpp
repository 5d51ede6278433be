#include "TimeText.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace cdroam {
namespace {

// The first two tokens between colons, split like strtok: colons in a row count as one. Works on a copy, so that the
// text can be split again.
class Tokens {
  public:
    explicit Tokens(const char* text) : copy_(text) {
        char* rest = nullptr;
        hour = strtok_r(copy_.data(), ":", &rest);
        minute = hour == nullptr ? nullptr : strtok_r(nullptr, ":", &rest);
    }
    Tokens(const Tokens&) = delete;
    Tokens& operator=(const Tokens&) = delete;

    const char* hour; ///< null when missing
    const char* minute;

  private:
    std::string copy_;
};

bool inRange(const char* token, int highest) {
    if (token == nullptr) {
        return true;
    }
    const int value = leadingInteger(token);
    if (value == 0) {
        return std::strcmp(token, "0") == 0 || std::strcmp(token, "00") == 0;
    }
    return value > 0 && value <= highest;
}

int valueOf(const char* token) {
    return token == nullptr ? 0 : leadingInteger(token);
}

} // namespace

int leadingInteger(const char* text) {
    const long value = std::strtol(text, nullptr, 10);
    return static_cast<int>(std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

TimeOfDay parseTimeOfDay(const char* text) {
    const Tokens tokens(text);
    return {valueOf(tokens.hour), valueOf(tokens.minute)};
}

bool isTimeOfDay(const char* text) {
    const Tokens tokens(text);
    return inRange(tokens.hour, 23) && inRange(tokens.minute, 59);
}

} // namespace cdroam
