#include "Text.hpp"

#include "Characters.hpp"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <iomanip>
#include <locale>
#include <sstream>
#include <utf8.h>

namespace transfer {
namespace {

std::string formatTime(std::time_t time, const char* format) {
    std::tm local{};
    localtime_r(&time, &local);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&local, format);
    return text.str();
}

void appendEscaped(std::string& json, unsigned char byte, bool utf8) {
    if (byte == '"' || byte == '\\') {
        json += '\\';
        json += static_cast<char>(byte);
    } else if (byte < 0x20 || byte == 0x7f || (byte >= 0x80 && !utf8)) {
        json += fmt::format("\\u{:04x}", byte);
    } else {
        json += static_cast<char>(byte);
    }
}

} // namespace

bool holdsControl(const std::string& text) {
    return std::any_of(text.begin(), text.end(), zpo::isControl);
}

std::string printable(std::string text) {
    std::replace_if(text.begin(), text.end(), zpo::isControl, '?');
    return text;
}

std::string jsonText(const std::string& text) {
    const bool utf8 = utf8::is_valid(text.begin(), text.end());
    std::string json = "\"";
    for (const char character : text) {
        appendEscaped(json, static_cast<unsigned char>(character), utf8);
    }
    return json + '"';
}

std::string timeText(std::time_t time) {
    return time == 0 ? "never" : formatTime(time, "%Y-%m-%d %H:%M:%S");
}

std::string isoTime(std::time_t time) {
    std::string text = formatTime(time, "%Y-%m-%dT%H:%M:%S%z");
    return text.insert(text.size() - 2, ":");
}

std::string cimTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    const long minutes = local.tm_gmtoff / 60;
    return formatTime(time, "%Y%m%d%H%M%S") +
           fmt::format(".000000{}{:03}", minutes < 0 ? '-' : '+', std::labs(minutes));
}

std::string stampTime(std::time_t time) {
    return formatTime(time, "%Y%m%d-%H%M%S");
}

std::string counted(std::uint64_t count, const char* noun) {
    std::string word = noun;
    if (count != 1) {
        word = word.back() == 'y' ? word.substr(0, word.size() - 1) + "ies" : word + "s";
    }
    return std::to_string(count) + " " + word;
}

} // namespace transfer
