#include "QTX_CDRPushSettingProvider.hpp"

using namespace cdroam;

const QTX_CDRPushSettingProvider::Definition& QTX_CDRPushSettingProvider::definition() {
    using Provider = QTX_CDRPushSettingProvider;
    using Manager = QTX_CDRPushSettingInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRPushSetting",
        "CDR/CDROAM/src/QTX_CDRPushSettingProvider",
        {
            readWrite<&QTX_CDRPushSetting::getTransferType, &QTX_CDRPushSetting::setTransferType>("TransferType"),
            readWrite<&QTX_CDRPushSetting::getIPAddress, &QTX_CDRPushSetting::setIPAddress>("IPAddress"),
            readWrite<&QTX_CDRPushSetting::getUserName, &QTX_CDRPushSetting::setUserName>("UserName"),
            readWrite<&QTX_CDRPushSetting::getPassword, &QTX_CDRPushSetting::setPassword>("Password"),
            readWrite<&QTX_CDRPushSetting::getDestFolder, &QTX_CDRPushSetting::setDestFolder>("DestFolder"),
            readWrite<&QTX_CDRPushSetting::getNumRetry, &QTX_CDRPushSetting::setNumRetry>("NumRetry"),
            readWrite<&QTX_CDRPushSetting::getDeleteFlag, &QTX_CDRPushSetting::setDeleteFlag>("DeleteFlag"),
            readWrite<&QTX_CDRPushSetting::getCompressFlag, &QTX_CDRPushSetting::setCompressFlag>("CompressFlag"),
            readWrite<&QTX_CDRPushSetting::getIncludeMetricsFlag, &QTX_CDRPushSetting::setIncludeMetricsFlag>(
                "IncludeMetricsFlag"),
            readWrite<&QTX_CDRPushSetting::getTransferTime, &QTX_CDRPushSetting::setTransferTime>("TransferTime"),
            readWrite<&QTX_CDRPushSetting::getTransferDayOfMonth, &QTX_CDRPushSetting::setTransferDayOfMonth>(
                "TransferDayOfMonth"),
            readWrite<&QTX_CDRPushSetting::getTransferDayOfWeek, &QTX_CDRPushSetting::setTransferDayOfWeek>(
                "TransferDayOfWeek"),
            key<&QTX_CDRPushSetting::getInstanceID>("InstanceID"),
        },
        {{"PushFileNow", &QTX_CDRPushSetting::PushFileNow}},
        {&Provider::QTX_CDRPushSettingToCIMInstance, &Provider::QTX_CDRPushSettingToCIMObjectPath,
         &Provider::getQTX_CDRPushSettingWithCIMObjectPath, &Provider::getQTX_CDRPushSettingWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRPushSetting, &Manager::destroyQTX_CDRPushSetting},
    };
    return kDefinition;
}
