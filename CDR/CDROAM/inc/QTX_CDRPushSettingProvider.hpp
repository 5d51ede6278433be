// The CIM provider of QTX_CDRPushSetting.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPushSetting.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRPushSettingProvider : public cdroam::ClassProvider<QTX_CDRPushSettingProvider, QTX_CDRPushSetting,
                                                                QTX_CDRPushSettingImplInstanceManager> {
  public:
    void QTX_CDRPushSettingToCIMInstance(const String&, Managed& from, CIMInstance& to) const {
        fillInstance(from, to);
    }
    void QTX_CDRPushSettingToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRPushSettingWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRPushSettingWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
