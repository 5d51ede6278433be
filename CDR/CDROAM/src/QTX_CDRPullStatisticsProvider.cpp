#include "QTX_CDRPullStatisticsProvider.hpp"

using namespace cdroam;

const QTX_CDRPullStatisticsProvider::Definition& QTX_CDRPullStatisticsProvider::definition() {
    using Provider = QTX_CDRPullStatisticsProvider;
    using Manager = QTX_CDRPullStatisticsInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRPullStatistics",
        "CDR/CDROAM/src/QTX_CDRPullStatisticsProvider",
        {
            key<&QTX_CDRPullStatistics::getName>("Name"),
            readOnly<&QTX_CDRPullStatistics::getMostRecentSuccessfulTransfer>("MostRecentSuccessfulTransfer"),
            readWrite<&QTX_CDRPullStatistics::getIncludeMetricsFlag, &QTX_CDRPullStatistics::setIncludeMetricsFlag>(
                "IncludeMetricsFlag"),
            readOnly<&QTX_CDRPullStatistics::getNumberOfSuccessfulTransfers>("NumberOfSuccessfulTransfers"),
            readOnly<&QTX_CDRPullStatistics::getMostRecentFailedTransfer>("MostRecentFailedTransfer"),
            readOnly<&QTX_CDRPullStatistics::getReasonForFailure>("ReasonForFailure"),
            readOnly<&QTX_CDRPullStatistics::getNumberOfFailedTransfers>("NumberOfFailedTransfers"),
            readOnly<&QTX_CDRPullStatistics::getLargestFileTransferred>("LargestFileTransferred"),
            readOnly<&QTX_CDRPullStatistics::getSmallestFileTransferred>("SmallestFileTransferred"),
            readOnly<&QTX_CDRPullStatistics::getTotalNumberOfBytesTransferred>("TotalNumberOfBytesTransferred"),
            readOnly<&QTX_CDRPullStatistics::getTotalNumberOfFileTransferred>("TotalNumberOfFileTransferred"),
        },
        {{"Refresh", &QTX_CDRPullStatistics::Refresh}},
        {&Provider::QTX_CDRPullStatisticsToCIMInstance, &Provider::QTX_CDRPullStatisticsToCIMObjectPath,
         &Provider::getQTX_CDRPullStatisticsWithCIMObjectPath, &Provider::getQTX_CDRPullStatisticsWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRPullStatistics, &Manager::destroyQTX_CDRPullStatistics},
    };
    return kDefinition;
}
