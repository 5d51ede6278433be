#include "QTX_CDRServiceAccessBin.hpp"

QTX_CDRServiceAccessBin*
QTX_CDRServiceAccessBinImplInstanceManager::createQTX_CDRServiceAccessBin(const std::string& instanceId) {
    return QTX_CDRServiceAccessBinInstanceManager::createQTX_CDRServiceAccessBin(instanceId);
}

void QTX_CDRServiceAccessBinImplInstanceManager::destroyQTX_CDRServiceAccessBin(QTX_CDRServiceAccessBin* object) {
    QTX_CDRServiceAccessBinInstanceManager::destroyQTX_CDRServiceAccessBin(object);
}

QTX_CDRServiceAccessBin::QTX_CDRServiceAccessBin(const std::string& instanceId) : instanceId_(instanceId) {
    getInstanceManager()->add(this);
}

QTX_CDRServiceAccessBin::~QTX_CDRServiceAccessBin() {
    getInstanceManager()->remove(this);
}
