#include "PropertyCases.hpp"

#include "ModuleTest.hpp"

std::string binEntry(int rows, const std::string& empty, int row, const std::string& content) {
    std::string bytes = "bytes ";
    for (int i = 0; i < rows; ++i) {
        bytes += i == row ? content : empty;
    }
    return bytes;
}

void PropertyCase::makeApplicable(fakes::FakePlatform& platform) const {
    const char* transfer = isPullStatistic()                  ? "bytes 03"
                           : property == "TransferDayOfMonth" ? "bytes 02"
                           : property == "TransferDayOfWeek"  ? "bytes 01"
                                                              : "bytes 00";
    platform.put("CDR/CDRPush/TransferType", transfer);
}

namespace {

using Text = const char*;

PropertyCase setting(Text property, Text type, const std::string& key, Text stored, Text shown) {
    return {kService, property, type, "CDRService/" + key, stored, shown, "-", "", true};
}

PropertyCase bin(const std::string& name, Text property, const std::string& key, const std::string& stored,
                 Text shown) {
    return {"QTX_" + name + ".InstanceID=\"" + name + "_2\"", property, "string", "CDRService/" + key, stored, shown};
}

PropertyCase push(Text property, Text type, const std::string& key, Text stored, Text shown, Text absent,
                  Text created) {
    return {kPushSetting, property, type, "CDRPush/" + key, stored, shown, absent, created, true};
}

PropertyCase pulled(Text property, Text type, const std::string& key, Text stored, Text shown, Text absent) {
    return {kPullStatistics, property, type, "CDRPull/Pull-" + key, stored, shown, absent, "", false};
}

} // namespace

// In the order of the instances. Values differ, so that no entry passes for another. Counters lie in the entry as on a
// little-endian host.
// clang-format off
const std::vector<PropertyCase>& propertyCases() {
    static const std::vector<PropertyCase> cases = {
        setting("Format", "uint8", "FORMAT", "bytes 01", "1"),
        setting("ReportType", "uint8", "TYPE", "bytes 02", "2"),
        setting("Language", "uint8", "LANG", "bytes 03", "3"),
        setting("ReportFilter", "uint8", "FILTER", "bytes ff", "255"),
        setting("FeatureCode", "string", "FEATURE CODE", "bytes f942", "42"),
        setting("DateFormat", "uint8", "DATE", "bytes 05", "5"),
        setting("HeaderFormat", "uint8", "HEADER", "bytes 06", "6"),
        setting("DNISInfo", "boolean", "DNIS", "bytes 01", "true"),
        setting("ConnectChar", "uint8", "CONNECT", "bytes 07", "7"),
        setting("DigitsSuppress", "uint8", "DIGITSSUPP", "bytes 08", "8"),
        setting("DigitsLimit", "uint16", "DIGITSLIMIT", "bytes 0018", "24"),
        setting("ClipFileSchedule", "uint8", "SCHEDULE", "bytes 09", "9"),
        setting("ClipFileSize_100K", "uint32", "FILESIZE", "bytes fe", "254"),
        setting("CDRDiskSpaceLimit_MB", "uint32", "DISKLIMIT", "int 4000000000", "4000000000"),
        setting("CLIDWithName", "boolean", "NAME", "bytes 01", "true"),
        setting("LongCLIDSupport", "boolean", "LONGID", "bytes 00", "false"),
        setting("CLIDWithCallType", "boolean", "CALLTYPE", "bytes 01", "true"),
        setting("SupportCallCharge", "boolean", "CHARGE", "bytes 01", "true"),
        setting("AnswerSupervision", "boolean", "SUPERVISE", "bytes 01", "true"),
        setting("CallFilterDuration", "uint32", "TIME", "bytes 0b", "11"),
        setting("HospitalityRecords", "boolean", "HOSPITAL", "bytes 01", "true"),
        bin("CDRServicePrefixBin", "PrefixBin", "PREFIX BIN", binEntry(8, kEmptyPrefix, 2, "010203040506070c"), "1234567"),
        bin("CDRServiceAccessBin", "AccessBin", "ACCESS BIN", binEntry(5, kEmptyAccess, 2, "0102030c0c00"), "123"),
        bin("CDRServiceAccessBin", "SuppressBin", "ACCESS BIN", binEntry(5, kEmptyAccess, 2, "0c0c0c0c0c10"), "16"),
        push("TransferType", "uint8", "TransferType", "bytes 02", "2", "4", "bytes 04"),
        push("IPAddress", "string", "IpAddr", "text 10.0.0.1", "10.0.0.1", "", "text "),
        push("UserName", "string", "UserName", "text me", "me", "", "text "),
        push("Password", "string", "Password", "text secret", "secret", "", "text "),
        push("DestFolder", "string", "DestFolder", "text /cdr", "/cdr", "", "text "),
        push("NumRetry", "uint32", "NumRetry", "bytes ff", "255", "0", "bytes 00"),
        push("DeleteFlag", "boolean", "DeleteFlag", "bytes 01", "true", "false", "bytes 00"),
        push("CompressFlag", "boolean", "CompressFlag", "bytes 01", "true", "false", "bytes 00"),
        push("IncludeMetricsFlag", "boolean", "IncludeMetricsFlag", "bytes 01", "true", "false", "bytes 00"),
        push("TransferTime", "string", "TranTime", "text 7:5", "7:5", "00:00", "text 00:00"),
        push("TransferDayOfMonth", "string", "TranDateOfMonth", "text 31", "31", "", "text "),
        push("TransferDayOfWeek", "string", "TranDateOfWeek", "text 6", "6", "", "text "),
        {kPushStatistics, "LastTransferTime", "datetime", "CDRPush/LastTransferTime",
         "text 20240229123000.000000+060", "20240229123000.000000+060", "00000000000000.000000:000", "", false},
        pulled("MostRecentSuccessfulTransfer", "string", "MostRecentSuccess", "text today", "today", ""),
        {kPullStatistics, "IncludeMetricsFlag", "boolean", "CDRPull/Pull-IncludeMetricsFlag",
         "bytes 01", "true", "false", "bytes 00"},
        pulled("NumberOfSuccessfulTransfers", "uint32", "NumSuccesses", "bytes 01000000", "1", "0"),
        pulled("MostRecentFailedTransfer", "string", "MostRecentFailure", "text then", "then", ""),
        pulled("ReasonForFailure", "string", "MostRecentFailureReason", "text full", "full", ""),
        pulled("NumberOfFailedTransfers", "uint32", "NumFailures", "bytes 00010000", "256", "0"),
        pulled("LargestFileTransferred", "uint32", "LargestFile", "bytes 00000080", "2147483648", "0"),
        pulled("SmallestFileTransferred", "uint32", "SmallestFile", "bytes 03000000", "3", "0"),
        pulled("TotalNumberOfBytesTransferred", "uint32", "NumberOfBytes", "bytes ffffffff", "4294967295", "0"),
        pulled("TotalNumberOfFileTransferred", "uint32", "NumberOfFiles", "bytes 05000000", "5", "0"),
    };
    return cases;
}
