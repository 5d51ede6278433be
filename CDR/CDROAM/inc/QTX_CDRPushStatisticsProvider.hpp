// The CIM provider of QTX_CDRPushStatistics.
#pragma once

#include "ClassProvider.hpp"
#include "QTX_CDRPushStatistics.hpp"

/// ClassProvider.hpp documents the operations.
class QTX_CDRPushStatisticsProvider
    : public cdroam::ClassProvider<QTX_CDRPushStatisticsProvider, const QTX_CDRPushStatistics,
                                   QTX_CDRPushStatisticsImplInstanceManager> {
  public:
    void QTX_CDRPushStatisticsToCIMInstance(const String&, Managed& from, CIMInstance& to) const {
        fillInstance(from, to);
    }
    void QTX_CDRPushStatisticsToCIMObjectPath(const Object& from, CIMObjectPath& to) const { fillPath(from, to); }
    Object* getQTX_CDRPushStatisticsWithCIMObjectPath(const CIMObjectPath& path) const { return find(path); }
    Object* getQTX_CDRPushStatisticsWithCIMInstance(const CIMInstance& instance) const { return find(instance); }
    using ClassProvider::modifyInstance;
    void modifyInstance(Object& object, const CIMInstance& changes) const { apply(object, changes); }

    static const Definition& definition();
};
