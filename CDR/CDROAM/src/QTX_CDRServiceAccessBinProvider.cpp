#include "QTX_CDRServiceAccessBinProvider.hpp"

using namespace cdroam;

const QTX_CDRServiceAccessBinProvider::Definition& QTX_CDRServiceAccessBinProvider::definition() {
    using Provider = QTX_CDRServiceAccessBinProvider;
    using Manager = QTX_CDRServiceAccessBinInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRServiceAccessBin",
        "CDR/CDROAM/src/QTX_CDRServiceAccessBinProvider",
        {
            readWrite<&QTX_CDRServiceAccessBin::getAccessBin, &QTX_CDRServiceAccessBin::setAccessBin>(
                "AccessBin", Check::maxLength(5)),
            readWrite<&QTX_CDRServiceAccessBin::getSuppressBin, &QTX_CDRServiceAccessBin::setSuppressBin>(
                "SuppressBin", Check::maxLength(2)),
            key<&QTX_CDRServiceAccessBin::getInstanceID>("InstanceID"),
        },
        {},
        {&Provider::QTX_CDRServiceAccessBinToCIMInstance, &Provider::QTX_CDRServiceAccessBinToCIMObjectPath,
         &Provider::getQTX_CDRServiceAccessBinWithCIMObjectPath, &Provider::getQTX_CDRServiceAccessBinWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRServiceAccessBin, &Manager::destroyQTX_CDRServiceAccessBin},
        ChangeLock::Sharing::Together,
    };
    return kDefinition;
}
