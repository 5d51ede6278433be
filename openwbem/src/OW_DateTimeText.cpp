// Reading points in time from text.

#include "OW_Array.hpp"
#include "OW_DateTime.hpp"
#include "OW_Format.hpp"
#include "OW_String.hpp"

#include <algorithm>
#include <cstring>

namespace OpenWBEM {

namespace {

/// The fields read from a text; -1: not read yet.
struct Fields {
    int year = -1;
    int month = -1;
    int day = -1;
    int hour = -1;
    int minute = -1;
    int second = 0;
    int microseconds = 0;
    bool weekday = false;
    bool zoned = false;        // else local time
    bool hasZone = false;      // also for the zone of local time
    int minutesAheadOfUTC = 0; // of the zone

    bool inRange() const {
        return year >= 0 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31 && hour >= 0 &&
               hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 60;
    }
};

/// A number of one to six digits; -1 for anything else.
int numberOf(const char* text, size_t length) {
    if (length == 0 || length > 6) {
        return -1;
    }
    int number = 0;
    for (size_t i = 0; i < length; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

/// yyyymmddhhmmss.mmmmmmsutc
bool isCimForm(const String& text) {
    return text.length() == 25 && text.charAt(14) == '.' && (text.charAt(21) == '+' || text.charAt(21) == '-');
}

bool readCimForm(const String& given, Fields& fields) {
    char text[26];
    std::memcpy(text, given.c_str(), sizeof(text));
    std::replace(text, text + sizeof(text), '*', '0');
    fields.year = numberOf(text, 4);
    fields.month = numberOf(text + 4, 2);
    fields.day = numberOf(text + 6, 2);
    fields.hour = numberOf(text + 8, 2);
    fields.minute = numberOf(text + 10, 2);
    fields.second = numberOf(text + 12, 2);
    fields.microseconds = numberOf(text + 15, 6);
    const int offset = numberOf(text + 22, 3);
    fields.zoned = true;
    fields.minutesAheadOfUTC = text[21] == '-' ? -offset : offset;
    return fields.microseconds >= 0 && offset >= 0;
}

const char* const kWeekdays[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
const char* const kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};

struct Zone {
    const char* name;
    int hours; // ahead of UTC
};

const Zone kZones[] = {
    {"Z", 0},    {"UTC", 0},  {"GMT", 0},  {"WET", 0},  {"A", 1},     {"B", 2},     {"C", 3},     {"D", 4},
    {"E", 5},    {"F", 6},    {"G", 7},    {"H", 8},    {"I", 9},     {"K", 10},    {"L", 11},    {"M", 12},
    {"N", -1},   {"O", -2},   {"P", -3},   {"Q", -4},   {"R", -5},    {"S", -6},    {"T", -7},    {"U", -8},
    {"V", -9},   {"W", -10},  {"X", -11},  {"Y", -12},  {"BST", 1},   {"IST", 1},   {"WEST", 1},  {"CET", 1},
    {"CEST", 2}, {"EET", 2},  {"EEST", 3}, {"MSK", 3},  {"MSD", 4},   {"WST", 8},   {"ADT", -3},  {"AST", -4},
    {"EDT", -4}, {"EST", -5}, {"ET", -5},  {"CDT", -5}, {"CST", -6},  {"CT", -6},   {"MDT", -6},  {"MST", -7},
    {"MT", -7},  {"PDT", -7}, {"PST", -8}, {"PT", -8},  {"AKDT", -8}, {"AKST", -9}, {"HST", -10},
};

/// The position of the name, given in full or by its first three letters; -1 if it is not among the names.
template <size_t N>
int indexIn(const char* const (&names)[N], const String& token) {
    for (size_t i = 0; i < N; ++i) {
        if (token == names[i] || (token.length() == 3 && std::strncmp(token.c_str(), names[i], 3) == 0)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

/// Sets a field; false if it is set already or the value is not a number (-1).
bool setOnce(int& field, int value) {
    if (field != -1 || value < 0) {
        return false;
    }
    field = value;
    return true;
}

/// H:M or H:M:S
bool readTime(const String& token, Fields& fields) {
    const size_t first = token.indexOf(':');
    const size_t second = token.indexOf(':', first + 1);
    const size_t minuteEnd = std::min(second, token.length());
    const char* text = token.c_str();
    if (!setOnce(fields.hour, numberOf(text, first)) ||
        !setOnce(fields.minute, numberOf(text + first + 1, minuteEnd - first - 1))) {
        return false;
    }
    fields.second = second == String::npos ? 0 : numberOf(text + second + 1, token.length() - second - 1);
    return true;
}

bool readZone(const String& token, Fields& fields) {
    if (fields.hasZone) {
        return false;
    }
    fields.hasZone = true;
    if (token == "J") {
        return true;
    }
    const Zone* zone =
        std::find_if(std::begin(kZones), std::end(kZones), [&token](const Zone& known) { return token == known.name; });
    if (zone == std::end(kZones)) {
        return false;
    }
    fields.zoned = true;
    fields.minutesAheadOfUTC = zone->hours * 60;
    return true;
}

bool readToken(const String& token, Fields& fields) {
    if (token.indexOf(':') != String::npos) {
        return readTime(token, fields);
    }
    const int number = numberOf(token.c_str(), token.length());
    if (number >= 0) {
        return setOnce(fields.day == -1 ? fields.day : fields.year, number);
    }
    const int month = indexIn(kMonths, token);
    if (month >= 0) {
        return setOnce(fields.month, month + 1);
    }
    if (indexIn(kWeekdays, token) >= 0) {
        const bool first = !fields.weekday;
        fields.weekday = true;
        return first;
    }
    return readZone(token, fields);
}

bool readFreeForm(const String& text, Fields& fields) {
    const StringArray tokens = text.tokenize();
    return std::all_of(tokens.begin(), tokens.end(),
                       [&fields](const String& token) { return readToken(token, fields); });
}

} // namespace

DateTime::DateTime(const String& str) : time_(0), microseconds_(0) {
    Fields f;
    const bool read = isCimForm(str) ? readCimForm(str, f) : readFreeForm(str, f);
    if (!read || !f.inRange()) {
        OW_THROW(DateTimeException, Format("Invalid DateTime: %1", str).c_str());
    }
    set(f.year, f.month, f.day, f.hour, f.minute - f.minutesAheadOfUTC, f.second, static_cast<UInt32>(f.microseconds),
        f.zoned ? E_UTC_TIME : E_LOCAL_TIME);
}

} // namespace OpenWBEM
