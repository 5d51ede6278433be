// The CIM provider of QTX_CDRServiceAccessBin.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRServiceAccessBin.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRServiceAccessBinProvider
    : public cdroam::ClassProvider<QTX_CDRServiceAccessBinProvider, const QTX_CDRServiceAccessBin,
                                   QTX_CDRServiceAccessBinImplInstanceManager> {
  public:
    void QTX_CDRServiceAccessBinToCIMInstance(const String&, Managed& from, CIMInstance& to) const {
        fillInstance(from, to);
    }
    void QTX_CDRServiceAccessBinToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRServiceAccessBinWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRServiceAccessBinWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
