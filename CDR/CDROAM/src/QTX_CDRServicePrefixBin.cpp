#include "QTX_CDRServicePrefixBin.hpp"

QTX_CDRServicePrefixBin*
QTX_CDRServicePrefixBinImplInstanceManager::createQTX_CDRServicePrefixBin(const std::string& instanceId) {
    return QTX_CDRServicePrefixBinInstanceManager::createQTX_CDRServicePrefixBin(instanceId);
}

void QTX_CDRServicePrefixBinImplInstanceManager::destroyQTX_CDRServicePrefixBin(QTX_CDRServicePrefixBin* object) {
    QTX_CDRServicePrefixBinInstanceManager::destroyQTX_CDRServicePrefixBin(object);
}

QTX_CDRServicePrefixBin::QTX_CDRServicePrefixBin(const std::string& instanceId) : instanceId_(instanceId) {
    getInstanceManager()->add(this);
}

QTX_CDRServicePrefixBin::~QTX_CDRServicePrefixBin() {
    getInstanceManager()->remove(this);
}
