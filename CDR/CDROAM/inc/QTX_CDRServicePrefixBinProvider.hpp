// The CIM provider of QTX_CDRServicePrefixBin.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRServicePrefixBinProvider
    : public cdroam::ClassProvider<QTX_CDRServicePrefixBinProvider, const QTX_CDRServicePrefixBin,
                                   QTX_CDRServicePrefixBinImplInstanceManager> {
  public:
    void QTX_CDRServicePrefixBinToCIMInstance(const String&, Managed& from, CIMInstance& to) const {
        fillInstance(from, to);
    }
    void QTX_CDRServicePrefixBinToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRServicePrefixBinWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRServicePrefixBinWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
