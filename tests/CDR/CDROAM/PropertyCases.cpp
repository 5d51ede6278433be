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
    const bool monthly = property == "TransferDayOfMonth";
    const bool weekly = property == "TransferDayOfWeek";
    platform.put("CDR/CDRPush/TransferType", isPullStatistic() ? "bytes 03"
                                             : monthly         ? "bytes 02"
                                             : weekly          ? "bytes 01"
                                                               : "bytes 00");
}

void PropertyCase::store(fakes::FakePlatform& platform) const {
    makeApplicable(platform);
    platform.put(entry(), stored);
}

const std::vector<PropertyCase>& propertyCases() {
    static const std::string prefixBin = "QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_2\"";
    static const std::string accessBin = "QTX_CDRServiceAccessBin.InstanceID=\"CDRServiceAccessBin_2\"";
    static const std::vector<PropertyCase> cases = {
        // Settings of the service. Values differ, so that no entry passes for another.
        {kService, "Format", "uint8", "CDRService/FORMAT", "bytes 01", "1"},
        {kService, "ReportType", "uint8", "CDRService/TYPE", "bytes 02", "2"},
        {kService, "Language", "uint8", "CDRService/LANG", "bytes 03", "3"},
        {kService, "ReportFilter", "uint8", "CDRService/FILTER", "bytes ff", "255"},
        {kService, "FeatureCode", "string", "CDRService/FEATURE CODE", "bytes f942", "42"},
        {kService, "DateFormat", "uint8", "CDRService/DATE", "bytes 05", "5"},
        {kService, "HeaderFormat", "uint8", "CDRService/HEADER", "bytes 06", "6"},
        {kService, "DNISInfo", "boolean", "CDRService/DNIS", "bytes 01", "true"},
        {kService, "ConnectChar", "uint8", "CDRService/CONNECT", "bytes 07", "7"},
        {kService, "DigitsSuppress", "uint8", "CDRService/DIGITSSUPP", "bytes 08", "8"},
        {kService, "DigitsLimit", "uint16", "CDRService/DIGITSLIMIT", "bytes 0018", "24"},
        {kService, "ClipFileSchedule", "uint8", "CDRService/SCHEDULE", "bytes 09", "9"},
        {kService, "ClipFileSize_100K", "uint32", "CDRService/FILESIZE", "bytes fe", "254"},
        {kService, "CDRDiskSpaceLimit_MB", "uint32", "CDRService/DISKLIMIT", "int 4000000000", "4000000000"},
        {kService, "CLIDWithName", "boolean", "CDRService/NAME", "bytes 01", "true"},
        {kService, "LongCLIDSupport", "boolean", "CDRService/LONGID", "bytes 00", "false"},
        {kService, "CLIDWithCallType", "boolean", "CDRService/CALLTYPE", "bytes 01", "true"},
        {kService, "SupportCallCharge", "boolean", "CDRService/CHARGE", "bytes 01", "true"},
        {kService, "AnswerSupervision", "boolean", "CDRService/SUPERVISE", "bytes 01", "true"},
        {kService, "CallFilterDuration", "uint32", "CDRService/TIME", "bytes 0b", "11"},
        {kService, "HospitalityRecords", "boolean", "CDRService/HOSPITAL", "bytes 01", "true"},
        // Digit bins
        {prefixBin, "PrefixBin", "string", "CDRService/PREFIX BIN", binEntry(8, kEmptyPrefix, 2, "010203040506070c"),
         "1234567"},
        {accessBin, "AccessBin", "string", "CDRService/ACCESS BIN", binEntry(5, kEmptyAccess, 2, "0102030c0c00"),
         "123"},
        {accessBin, "SuppressBin", "string", "CDRService/ACCESS BIN", binEntry(5, kEmptyAccess, 2, "0c0c0c0c0c10"),
         "16"},
        // Push settings
        {kPushSetting, "TransferType", "uint8", "CDRPush/TransferType", "bytes 02", "2", "4", true},
        {kPushSetting, "IPAddress", "string", "CDRPush/IpAddr", "text 10.0.0.1", "10.0.0.1", "", true},
        {kPushSetting, "UserName", "string", "CDRPush/UserName", "text me", "me", "", true},
        {kPushSetting, "Password", "string", "CDRPush/Password", "text secret", "secret", "", true},
        {kPushSetting, "DestFolder", "string", "CDRPush/DestFolder", "text /cdr", "/cdr", "", true},
        {kPushSetting, "NumRetry", "uint32", "CDRPush/NumRetry", "bytes ff", "255", "0", true},
        {kPushSetting, "DeleteFlag", "boolean", "CDRPush/DeleteFlag", "bytes 01", "true", "false", true},
        {kPushSetting, "CompressFlag", "boolean", "CDRPush/CompressFlag", "bytes 01", "true", "false", true},
        {kPushSetting, "IncludeMetricsFlag", "boolean", "CDRPush/IncludeMetricsFlag", "bytes 01", "true", "false",
         true},
        {kPushSetting, "TransferTime", "string", "CDRPush/TranTime", "text 7:5", "7:5", "00:00", true},
        {kPushSetting, "TransferDayOfMonth", "string", "CDRPush/TranDateOfMonth", "text 31", "31", "", true},
        {kPushSetting, "TransferDayOfWeek", "string", "CDRPush/TranDateOfWeek", "text 6", "6", "", true},
        // Statistics
        {kPushStatistics, "LastTransferTime", "datetime", "CDRPush/LastTransferTime", "text 20240229123000.000000+060",
         "20240229123000.000000+060", "00000000000000.000000:000", false, false},
        {kPullStatistics, "MostRecentSuccessfulTransfer", "string", "CDRPull/Pull-MostRecentSuccess", "text today",
         "today", "", false, false},
        {kPullStatistics, "IncludeMetricsFlag", "boolean", "CDRPull/Pull-IncludeMetricsFlag", "bytes 01", "true",
         "false", true},
        {kPullStatistics, "NumberOfSuccessfulTransfers", "uint32", "CDRPull/Pull-NumSuccesses", "bytes 01000000", "1",
         "0", false, false},
        {kPullStatistics, "MostRecentFailedTransfer", "string", "CDRPull/Pull-MostRecentFailure", "text then", "then",
         "", false, false},
        {kPullStatistics, "ReasonForFailure", "string", "CDRPull/Pull-MostRecentFailureReason", "text full", "full", "",
         false, false},
        {kPullStatistics, "NumberOfFailedTransfers", "uint32", "CDRPull/Pull-NumFailures", "bytes 00010000", "256", "0",
         false, false},
        {kPullStatistics, "LargestFileTransferred", "uint32", "CDRPull/Pull-LargestFile", "bytes 00000080",
         "2147483648", "0", false, false},
        {kPullStatistics, "SmallestFileTransferred", "uint32", "CDRPull/Pull-SmallestFile", "bytes 03000000", "3", "0",
         false, false},
        {kPullStatistics, "TotalNumberOfBytesTransferred", "uint32", "CDRPull/Pull-NumberOfBytes", "bytes ffffffff",
         "4294967295", "0", false, false},
        {kPullStatistics, "TotalNumberOfFileTransferred", "uint32", "CDRPull/Pull-NumberOfFiles", "bytes 05000000", "5",
         "0", false, false},
    };
    return cases;
}
