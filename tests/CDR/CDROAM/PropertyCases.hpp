// Every property of the six classes with an example of how its registry entry and its CIM value stand for each other.
#pragma once

#include "FakePlatform.hpp"

#include <ostream>
#include <string>
#include <vector>

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

    std::string entry() const { return "CDR/" + key; }
    std::string className() const { return path.substr(0, path.find('.')); }
    bool isPushSetting() const { return className() == "QTX_CDRPushSetting"; }
    bool isPullStatistic() const { return className() == "QTX_CDRPullStatistics"; }
    /// Stores the transfer type with which the property applies.
    void makeApplicable(fakes::FakePlatform& platform) const;
};

inline std::ostream& operator<<(std::ostream& out, const PropertyCase& c) {
    return out << c.className() << "." << c.property;
}

const std::vector<PropertyCase>& propertyCases();

/// "bytes ..." of an entry of so many rows that are all `empty` but the given one, in hexadecimal digits.
std::string binEntry(int rows, const std::string& empty, int row, const std::string& content);

constexpr const char* kEmptyPrefix = "0c0c0c0c0c0c0c0c";
constexpr const char* kEmptyAccess = "0c0c0c0c0c00";
