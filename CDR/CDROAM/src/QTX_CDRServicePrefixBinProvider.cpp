#include "QTX_CDRServicePrefixBinProvider.hpp"

using namespace cdroam;

const QTX_CDRServicePrefixBinProvider::Definition& QTX_CDRServicePrefixBinProvider::definition() {
    using Provider = QTX_CDRServicePrefixBinProvider;
    using Manager = QTX_CDRServicePrefixBinInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRServicePrefixBin",
        "CDR/CDROAM/src/QTX_CDRServicePrefixBinProvider",
        {
            readWrite<&QTX_CDRServicePrefixBin::getPrefixBin, &QTX_CDRServicePrefixBin::setPrefixBin>(
                "PrefixBin", Check::maxLength(8)),
            key<&QTX_CDRServicePrefixBin::getInstanceID>("InstanceID"),
        },
        {},
        {&Provider::QTX_CDRServicePrefixBinToCIMInstance, &Provider::QTX_CDRServicePrefixBinToCIMObjectPath,
         &Provider::getQTX_CDRServicePrefixBinWithCIMObjectPath, &Provider::getQTX_CDRServicePrefixBinWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRServicePrefixBin, &Manager::destroyQTX_CDRServicePrefixBin},
        ChangeLock::Sharing::Together,
    };
    return kDefinition;
}
