#include "QTX_CDRPushSetting.hpp"

QTX_CDRPushSetting* QTX_CDRPushSettingImplInstanceManager::createQTX_CDRPushSetting(const std::string& instanceId) {
    return QTX_CDRPushSettingInstanceManager::createQTX_CDRPushSetting(instanceId);
}

void QTX_CDRPushSettingImplInstanceManager::destroyQTX_CDRPushSetting(QTX_CDRPushSetting* object) {
    QTX_CDRPushSettingInstanceManager::destroyQTX_CDRPushSetting(object);
}

QTX_CDRPushSetting::QTX_CDRPushSetting(const std::string& instanceId) : instanceId_(instanceId) {
    getInstanceManager()->add(this);
}

QTX_CDRPushSetting::~QTX_CDRPushSetting() {
    getInstanceManager()->remove(this);
}
