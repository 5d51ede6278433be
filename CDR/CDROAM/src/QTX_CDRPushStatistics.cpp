#include "QTX_CDRPushStatistics.hpp"

QTX_CDRPushStatistics* QTX_CDRPushStatisticsImplInstanceManager::createQTX_CDRPushStatistics(const std::string& name) {
    return QTX_CDRPushStatisticsInstanceManager::createQTX_CDRPushStatistics(name);
}

void QTX_CDRPushStatisticsImplInstanceManager::destroyQTX_CDRPushStatistics(QTX_CDRPushStatistics* object) {
    QTX_CDRPushStatisticsInstanceManager::destroyQTX_CDRPushStatistics(object);
}

QTX_CDRPushStatistics::QTX_CDRPushStatistics(const std::string& name) : name_(name) {
    getInstanceManager()->add(this);
}

QTX_CDRPushStatistics::~QTX_CDRPushStatistics() {
    getInstanceManager()->remove(this);
}
