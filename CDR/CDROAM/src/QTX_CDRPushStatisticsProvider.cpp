#include "QTX_CDRPushStatisticsProvider.hpp"

using namespace cdroam;

const QTX_CDRPushStatisticsProvider::Definition& QTX_CDRPushStatisticsProvider::definition() {
    using Provider = QTX_CDRPushStatisticsProvider;
    using Manager = QTX_CDRPushStatisticsInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRPushStatistics",
        "CDR/CDROAM/src/QTX_CDRPushStatisticsProvider",
        {
            key<&QTX_CDRPushStatistics::getName>("Name"),
            dateTime<&QTX_CDRPushStatistics::getLastTransferTime>("LastTransferTime"),
        },
        {{"Refresh", &QTX_CDRPushStatistics::Refresh}},
        {&Provider::QTX_CDRPushStatisticsToCIMInstance, &Provider::QTX_CDRPushStatisticsToCIMObjectPath,
         &Provider::getQTX_CDRPushStatisticsWithCIMObjectPath, &Provider::getQTX_CDRPushStatisticsWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRPushStatistics, &Manager::destroyQTX_CDRPushStatistics},
    };
    return kDefinition;
}
