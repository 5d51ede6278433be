#include "QTX_CDRPullStatistics.hpp"

QTX_CDRPullStatistics* QTX_CDRPullStatisticsImplInstanceManager::createQTX_CDRPullStatistics(const std::string& name) {
    return QTX_CDRPullStatisticsInstanceManager::createQTX_CDRPullStatistics(name);
}

void QTX_CDRPullStatisticsImplInstanceManager::destroyQTX_CDRPullStatistics(QTX_CDRPullStatistics* object) {
    QTX_CDRPullStatisticsInstanceManager::destroyQTX_CDRPullStatistics(object);
}

QTX_CDRPullStatistics::QTX_CDRPullStatistics(const std::string& name) : name_(name) {
    getInstanceManager()->add(this);
}

QTX_CDRPullStatistics::~QTX_CDRPullStatistics() {
    getInstanceManager()->remove(this);
}
