// The CIM provider of QTX_Example.
// [declare-provider]
#pragma once

#include "ClassProvider.hpp"
#include "QTX_Example.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_ExampleProvider
    : public cdroam::ClassProvider<QTX_ExampleProvider, const QTX_Example, QTX_ExampleImplInstanceManager> {
  public:
    void QTX_ExampleToCIMInstance(const String&, Managed& from, CIMInstance& to) const { fillInstance(from, to); }
    void QTX_ExampleToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_ExampleWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_ExampleWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
// [declare-provider]
