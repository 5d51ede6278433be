#include "QTX_CDRService.hpp"

QTX_CDRService* QTX_CDRServiceImplInstanceManager::createQTX_CDRService(const std::string& systemCreationClassName,
                                                                        const std::string& systemName,
                                                                        const std::string& creationClassName,
                                                                        const std::string& name) {
    return QTX_CDRServiceInstanceManager::createQTX_CDRService(systemCreationClassName, systemName, creationClassName,
                                                               name);
}

void QTX_CDRServiceImplInstanceManager::destroyQTX_CDRService(QTX_CDRService* object) {
    QTX_CDRServiceInstanceManager::destroyQTX_CDRService(object);
}

QTX_CDRService::QTX_CDRService(const std::string& systemCreationClassName, const std::string& systemName,
                               const std::string& creationClassName, const std::string& name)
    : systemCreationClassName_(systemCreationClassName), systemName_(systemName), creationClassName_(creationClassName),
      name_(name) {
    getInstanceManager()->add(this);
}

QTX_CDRService::~QTX_CDRService() {
    getInstanceManager()->remove(this);
}
