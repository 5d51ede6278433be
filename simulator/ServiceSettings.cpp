#include "ServiceSettings.hpp"

#include "StatusText.hpp"
#include "ZpoShared.h"

#include <array>
#include <limits>

namespace cdrsim {
namespace {

enum class Kind { Byte, Word, Integer };

struct Row {
    const char* property;
    const char* key;
    std::uint32_t ServiceSettings::*value;
    Kind kind = Kind::Byte;
    std::uint32_t highest = std::numeric_limits<std::uint32_t>::max(); ///< the highest value with a meaning
};

using S = ServiceSettings;
constexpr std::array<Row, 15> kRows{{
    {"ReportFilter", "FILTER", &S::reportFilter, Kind::Byte, 3},
    {"DateFormat", "DATE", &S::dateFormat, Kind::Byte, 3},
    {"HeaderFormat", "HEADER", &S::headerFormat, Kind::Byte, 2},
    {"DNISInfo", "DNIS", &S::dnisInfo},
    {"DigitsSuppress", "DIGITSSUPP", &S::digitsSuppress, Kind::Byte, 2},
    {"DigitsLimit", "DIGITSLIMIT", &S::digitsLimit, Kind::Word},
    {"ClipFileSchedule", "SCHEDULE", &S::clipFileSchedule, Kind::Byte, 4},
    {"ClipFileSize_100K", "FILESIZE", &S::clipFileSize100K},
    {"CDRDiskSpaceLimit_MB", "DISKLIMIT", &S::diskSpaceLimitMb, Kind::Integer},
    {"CLIDWithName", "NAME", &S::clidWithName},
    {"LongCLIDSupport", "LONGID", &S::longClidSupport},
    {"CLIDWithCallType", "CALLTYPE", &S::clidWithCallType},
    {"SupportCallCharge", "CHARGE", &S::supportCallCharge},
    {"AnswerSupervision", "SUPERVISE", &S::answerSupervision},
    {"CallFilterDuration", "TIME", &S::callFilterDuration},
}};

constexpr std::array<const char*, 6> kIgnored{"Format",      "ReportType",  "Language",
                                              "FeatureCode", "ConnectChar", "HospitalityRecords"};

/// Reads the entry of the row, whose bytes have the most significant first.
std::uint32_t read(const Row& row, std::uint32_t& value) {
    if (row.kind == Kind::Integer) {
        return ZpoGetRegEntryInt("CDR", "CDRService", row.key, &value);
    }
    std::array<unsigned char, 2> bytes{};
    const std::uint32_t length = row.kind == Kind::Word ? 2 : 1;
    const std::uint32_t status = ZpoGetRegEntryBinary("CDR", "CDRService", row.key, bytes.data(), length);
    if (status == ZPO_OK) {
        value = length == 1 ? bytes[0] : bytes[0] * 256U + bytes[1];
    }
    return status;
}

} // namespace

ServiceSettings readServiceSettings(const ServiceSettings& present, std::vector<std::string>& notes) {
    ServiceSettings result = present;
    for (const Row& row : kRows) {
        std::uint32_t& value = result.*row.value;
        const std::uint32_t before = value;
        const std::string name = row.property;
        if (const std::uint32_t status = read(row, value); status != ZPO_OK) {
            notes.push_back(name + " cannot be read: " + zpo::statusText(status) + "; it stays " +
                            std::to_string(before));
        } else if (value > row.highest) {
            notes.push_back(name + " is " + std::to_string(value) + ": the simulator knows 0 to " +
                            std::to_string(row.highest) + " and takes it as 0");
            value = 0;
        } else if (value != before) {
            notes.push_back(name + " is " + std::to_string(value) + ", it was " + std::to_string(before));
        }
    }
    return result;
}

std::vector<std::string> ignoredSettings() {
    std::vector<std::string> lines;
    lines.reserve(kIgnored.size());
    for (const char* property : kIgnored) {
        lines.push_back(std::string(property) + " has no effect: what its values mean is not known");
    }
    return lines;
}

} // namespace cdrsim
