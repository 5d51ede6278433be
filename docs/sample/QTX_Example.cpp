// [define]
#include "QTX_Example.hpp"

QTX_Example* QTX_ExampleImplInstanceManager::createQTX_Example(const std::string& instanceId) {
    return QTX_ExampleInstanceManager::createQTX_Example(instanceId);
}

void QTX_ExampleImplInstanceManager::destroyQTX_Example(QTX_Example* object) {
    QTX_ExampleInstanceManager::destroyQTX_Example(object);
}

QTX_Example::QTX_Example(const std::string& instanceId) : instanceId_(instanceId) {
    getInstanceManager()->add(this);
}

QTX_Example::~QTX_Example() {
    getInstanceManager()->remove(this);
}
// [define]
