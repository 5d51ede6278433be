#include "PropertyCases.hpp"

#include <cstring>

const char* const kService = "QTX_CDRService.SystemCreationClassName=\"QTX_System\",SystemName=\"QTX\","
                             "CreationClassName=\"QTX_CDRService\",Name=\"CDRService\"";
const char* const kPushSetting = "QTX_CDRPushSetting.InstanceID=\"CDRPushSetting\"";
const char* const kPushStatistics = "QTX_CDRPushStatistics.Name=\"CDRPushStatistic\"";
const char* const kPullStatistics = "QTX_CDRPullStatistics.Name=\"CDRPullStatistic\"";

std::string binEntry(int rows, const std::string& other, int row, const std::string& content) {
    std::string bytes = "bytes ";
    for (int i = 0; i < rows; ++i) {
        bytes += i == row ? content : other;
    }
    return bytes;
}

std::string counterEntry(std::uint32_t value) {
    unsigned char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    std::string entry = "bytes ";
    for (const unsigned byte : bytes) {
        entry += {"0123456789abcdef"[byte >> 4U], "0123456789abcdef"[byte & 15U]};
    }
    return entry;
}

std::string binPath(const std::string& name, int row) {
    return "QTX_" + name + ".InstanceID=\"" + name + "_" + std::to_string(row) + "\"";
}

char PropertyCase::transferType() const {
    return isPullStatistic()                  ? '3'
           : property == "TransferDayOfMonth" ? '2'
           : property == "TransferDayOfWeek"  ? '1'
                                              : '0';
}

bool PropertyCase::appliesIn(char transfer) const {
    const bool isDay = property.compare(0, 11, "TransferDay") == 0;
    return isDay || isPullStatistic() ? transfer == transferType()
                                      : property == "TransferType" || (transfer != '3' && transfer != '4');
}

namespace {

using Text = const std::string&;

// Settings of the push transfer are created with their defaults. A text is stored as it is given; an entry takes 511
// bytes of it.
PropertyCase pushText(Text property, Text key, Text shown, Text absent = "", const std::vector<std::string>& taken = {},
                      const std::vector<std::string>& refused = {}, const TextPairs& alsoShown = {}) {
    PropertyCase made{kPushSetting,    property, "string", "CDRPush/" + key,
                      "text " + shown, shown,    absent,   "text " + absent};
    const std::string longest = shown + ":" + std::string(510 - shown.size(), 'x');
    made.taken = {{longest, "text " + longest}};
    for (const std::string& value : taken) {
        made.taken.emplace_back(value, "text " + value);
    }
    for (const std::string& value : refused) {
        made.refused.emplace_back(value, "301");
    }
    made.refused.emplace_back(longest + "x", "");
    made.alsoShown = alsoShown;
    return made;
}

// clang-format off
PropertyCase setting(Text property, Text type, Text key, Text stored, Text shown, const TextPairs& taken = {},
                     const TextPairs& refused = {}, const TextPairs& alsoShown = {}) {
    return {kService, property, type, "CDRService/" + key, stored, shown, "-", "", true, taken, refused, alsoShown};
}
PropertyCase bin(Text name, Text property, Text key, Text stored, Text shown, const TextPairs& taken, const TextPairs& refused,
                 const TextPairs& alsoShown) {
    return {binPath(name, 2), property, "string", "CDRService/" + key, stored, shown, "-", "", true, taken, refused, alsoShown};
}
PropertyCase push(Text property, Text type, Text stored, Text shown, Text absent, Text created, const TextPairs& taken = {}) {
    return {kPushSetting, property, type, "CDRPush/" + property, stored, shown, absent, created, true, taken};
}
PropertyCase pulled(Text property, Text type, Text key, Text stored, Text shown, Text absent) {
    return {kPullStatistics, property, type, "CDRPull/Pull-" + key, stored, shown, absent, "", false};
}
std::string prefixRow(Text row) { return binEntry(8, kEmptyPrefix, 2, row); }
std::string accessRow(Text row) { return binEntry(5, kEmptyAccess, 2, row); }

// Values differ, so that no entry passes for another, and from the factory settings.
const std::vector<PropertyCase> kCases = {
    setting("Format", "uint8", "FORMAT", "bytes 01", "1"),
    setting("ReportType", "uint8", "TYPE", "bytes 02", "2"),
    setting("Language", "uint8", "LANG", "bytes 03", "3"),
    setting("ReportFilter", "uint8", "FILTER", "bytes ff", "255"),
    setting("FeatureCode", "string", "FEATURE CODE", "bytes f942", "42",
            {{"9a", "bytes f990"}, {"123", "bytes f912"}, {"7", "bytes f970"}, {"", "bytes f900"}},
            {{"1234", "FeatureCode length must be must be <= 3"}}, {{"bytes 00af", ":?"}}),
    setting("DateFormat", "uint8", "DATE", "bytes 05", "5"),
    setting("HeaderFormat", "uint8", "HEADER", "bytes 06", "6"),
    setting("DNISInfo", "boolean", "DNIS", "bytes 00", "false", {{"true", "bytes 01"}}, {}, {{"bytes 02", "true"}}),
    setting("ConnectChar", "uint8", "CONNECT", "bytes 07", "7"),
    setting("DigitsSuppress", "uint8", "DIGITSSUPP", "bytes 08", "8"),
    setting("DigitsLimit", "uint16", "DIGITSLIMIT", "bytes 0018", "24", {{"3", "bytes 0003"}},
            {{"25", "DigitsLimit must be <= 24"}, {"2", "DigitsLimit must be >= 3"}}, {{"bytes 1234", "4660"}}),
    setting("ClipFileSchedule", "uint8", "SCHEDULE", "bytes 09", "9"),
    setting("ClipFileSize_100K", "uint32", "FILESIZE", "bytes fe", "254", {{"300", "bytes 2c"}, {"256", "bytes 00"}}),
    setting("CDRDiskSpaceLimit_MB", "uint32", "DISKLIMIT", "int 4000000000", "4000000000"),
    setting("CLIDWithName", "boolean", "NAME", "bytes 00", "false"),
    setting("LongCLIDSupport", "boolean", "LONGID", "bytes 01", "true"),
    setting("CLIDWithCallType", "boolean", "CALLTYPE", "bytes 01", "true"),
    setting("SupportCallCharge", "boolean", "CHARGE", "bytes 01", "true"),
    setting("AnswerSupervision", "boolean", "SUPERVISE", "bytes 00", "false"),
    setting("CallFilterDuration", "uint32", "TIME", "bytes 0b", "11", {{"4294967295", "bytes ff"}}),
    setting("HospitalityRecords", "boolean", "HOSPITAL", "bytes 01", "true"),
    bin("CDRServicePrefixBin", "PrefixBin", "PREFIX BIN", prefixRow("010203040506070c"), "1234567",
        {{"", prefixRow(kEmptyPrefix)}, {"12345678", prefixRow("0102030405060708")}, {"90", prefixRow("09000c0c0c0c0c0c")}},
        {{"123456789", "PrefixBin length must be must be <= 8"}, {"12a", "301"}, {"1234567\xc3", "301"}},
        {{prefixRow("0c01020304050607"), ""}, {prefixRow("01ff030405060708"), "1"}, {prefixRow("0a0b0c0101010101"), ":;"}}),
    bin("CDRServiceAccessBin", "AccessBin", "ACCESS BIN", accessRow("0102030c0c00"), "123",
        {{"", accessRow(kEmptyAccess)}, {"12345", accessRow("010203040500")}},
        {{"123456", "AccessBin length must be must be <= 5"}, {"1234x", "301"}}, {{accessRow("09080706050f"), "98765"}}),
    bin("CDRServiceAccessBin", "SuppressBin", "ACCESS BIN", accessRow("0c0c0c0c0c10"), "16",
        {{"", accessRow(kEmptyAccess)}, {"2", accessRow("0c0c0c0c0c02")}},
        {{"17", "301"}, {"-1", "301"}, {"100", "SuppressBin length must be must be <= 2"}}, {{accessRow("0908070605ff"), "255"}}),
    push("TransferType", "uint8", "bytes 02", "2", "4", "bytes 04"),
    // What grows beyond 511 bytes in UTF-8 is cut between characters.
    pushText("IPAddress", "IpAddr", "10.0.0.1", "", {}, {}, {{"text " + std::string(510, 'x') + "\xe9", std::string(510, 'x')}}),
    pushText("UserName", "UserName", "me", "", {"J\xc3\xb6"}, {}, {{"text J\xf6", "J\xc3\xb6"}, {"text J\xc3\xb6", "J\xc3\x83\xc2\xb6"}}),
    pushText("Password", "Password", "secret"),
    pushText("DestFolder", "DestFolder", "/cdr"),
    push("NumRetry", "uint32", "bytes ff", "255", "0", "bytes 00", {{"300", "bytes 2c"}}),
    push("DeleteFlag", "boolean", "bytes 01", "true", "false", "bytes 00"),
    push("CompressFlag", "boolean", "bytes 01", "true", "false", "bytes 00"),
    push("IncludeMetricsFlag", "boolean", "bytes 01", "true", "false", "bytes 00"),
    pushText("TransferTime", "TranTime", "7:5", "00:00",
             {"0:0", "00:00", "23:59", "", ":", "12", "7:5:99", "::7::5", " 7: 5", "9x:1y"},
             {"24:00", "12:60", "ab:10", "10:ab", "000:10", "1:000", "-1:00", "1:-1", ":30", "99999999999:0", "7: "}),
    pushText("TransferDayOfMonth", "TranDateOfMonth", "31", "", {"1", "15th", " 2"},
             {"32", "0", "", "x", "-1", "4294967297"}),
    pushText("TransferDayOfWeek", "TranDateOfWeek", "6", "", {"0", "", "x", "3rd"}, {"7", "-1"}),
    {kPushStatistics, "LastTransferTime", "datetime", "CDRPush/LastTransferTime",
     "text 20240229123000.000000+060", "20240229123000.000000+060", "00000000000000.000000:000", "", false},
    pulled("MostRecentSuccessfulTransfer", "string", "MostRecentSuccess", "text today", "today", ""),
    {kPullStatistics, "IncludeMetricsFlag", "boolean", "CDRPull/Pull-IncludeMetricsFlag",
     "bytes 01", "true", "false", "bytes 00"},
    pulled("NumberOfSuccessfulTransfers", "uint32", "NumSuccesses", counterEntry(1), "1", "0"),
    pulled("MostRecentFailedTransfer", "string", "MostRecentFailure", "text then", "then", ""),
    pulled("ReasonForFailure", "string", "MostRecentFailureReason", "text full", "full", ""),
    pulled("NumberOfFailedTransfers", "uint32", "NumFailures", counterEntry(256), "256", "0"),
    pulled("LargestFileTransferred", "uint32", "LargestFile", counterEntry(2147483648), "2147483648", "0"),
    pulled("SmallestFileTransferred", "uint32", "SmallestFile", counterEntry(3), "3", "0"),
    pulled("TotalNumberOfBytesTransferred", "uint32", "NumberOfBytes", counterEntry(4294967295), "4294967295", "0"),
    pulled("TotalNumberOfFileTransferred", "uint32", "NumberOfFiles", counterEntry(5), "5", "0"),
};
// clang-format on

} // namespace

const std::vector<PropertyCase>& propertyCases() {
    return kCases;
}
