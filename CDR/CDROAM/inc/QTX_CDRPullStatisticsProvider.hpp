// The CIM provider of QTX_CDRPullStatistics.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPullStatistics.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRPullStatisticsProvider
    : public cdroam::ClassProvider<QTX_CDRPullStatisticsProvider, const QTX_CDRPullStatistics,
                                   QTX_CDRPullStatisticsImplInstanceManager> {
  public:
    void QTX_CDRPullStatisticsToCIMInstance(const String&, Managed& from, CIMInstance& to) const {
        fillInstance(from, to);
    }
    void QTX_CDRPullStatisticsToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRPullStatisticsWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRPullStatisticsWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
