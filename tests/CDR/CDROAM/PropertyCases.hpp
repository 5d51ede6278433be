// Every property of the six classes: where it is stored, examples of how entry and CIM value stand for each other, and
// which values are taken and refused. The tests of the module, of the schema and of the programs go through it.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Paths of the single instances.
extern const char* const kService;
extern const char* const kPushSetting;
extern const char* const kPushStatistics;
extern const char* const kPullStatistics;

using TextPairs = std::vector<std::pair<std::string, std::string>>;

/// Entries are told as "bytes f912", "text abc" or "int 7"; "" is one that does not exist.
struct PropertyCase {
    std::string path; ///< an instance that has the property
    std::string property;
    std::string type; ///< CIM type
    std::string key;  ///< section and key of the entry
    std::string stored;
    std::string shown;
    /// What a getter shows when there is no such entry; "-" when the property is left out then.
    std::string absent = "-";
    std::string created = ""; ///< what the getter then puts into the entry
    bool writable = true;
    TextPairs taken = {};     ///< values and what the entry holds after them
    TextPairs refused = {};   ///< values and the message: "301" from the setting, "" from the registry, or a check's
    TextPairs alsoShown = {}; ///< other contents of the entry, and how they are shown

    std::string entry() const { return "CDR/" + key; }
    std::string className() const { return path.substr(0, path.find('.')); }
    bool isPushSetting() const { return path == kPushSetting; }
    bool isPullStatistic() const { return path == kPullStatistics; }
    bool isService() const { return path == kService; }
    /// Whether a change arms the scheduled task anew.
    bool isScheduled() const { return isPushSetting() && property.compare(0, 8, "Transfer") == 0; }
    /// A transfer type in which the property applies, and whether it applies in the one given.
    char transferType() const;
    bool appliesIn(char transfer) const;
};

inline std::ostream& operator<<(std::ostream& out, const PropertyCase& c) {
    return out << c.className() << "." << c.property;
}

/// In the order of the classes' properties.
const std::vector<PropertyCase>& propertyCases();

/// The path of a row's instance; the class's name without "QTX_".
std::string binPath(const std::string& name, int row);

/// "bytes ..." of an entry of so many rows that are all `other` but the given one, in hexadecimal digits.
std::string binEntry(int rows, const std::string& other, int row, const std::string& content);

/// "bytes ..." of a counter, which lies in the machine's byte order.
std::string counterEntry(std::uint32_t value);

constexpr const char* kEmptyPrefix = "0c0c0c0c0c0c0c0c";
constexpr const char* kEmptyAccess = "0c0c0c0c0c00";
