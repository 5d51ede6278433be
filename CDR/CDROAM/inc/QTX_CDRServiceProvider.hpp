// The CIM provider of QTX_CDRService.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRService.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRServiceProvider
    : public cdroam::ClassProvider<QTX_CDRServiceProvider, const QTX_CDRService, QTX_CDRServiceImplInstanceManager> {
  public:
    void QTX_CDRServiceToCIMInstance(const String&, Managed& from, CIMInstance& to) const { fillInstance(from, to); }
    void QTX_CDRServiceToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRServiceWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRServiceWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
