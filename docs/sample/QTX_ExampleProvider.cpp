// [define-provider]
#include "QTX_ExampleProvider.hpp"

using namespace cdroam;

const QTX_ExampleProvider::Definition& QTX_ExampleProvider::definition() {
    using Provider = QTX_ExampleProvider;
    using Manager = QTX_ExampleInstanceManager;
    static const Definition kDefinition{
        "QTX_Example",
        "CDR/CDROAM/src/QTX_ExampleProvider",
        {
            readWrite<&QTX_Example::getLimit, &QTX_Example::setLimit>("Limit", Check::range(3, 24)),
            readWrite<&QTX_Example::getOwner, &QTX_Example::setOwner>("Owner", Check::maxLength(40)),
            readOnly<&QTX_Example::getCount>("Count"),
            key<&QTX_Example::getInstanceID>("InstanceID"),
        },
        {{"Reset", &QTX_Example::Reset}},
        {&Provider::QTX_ExampleToCIMInstance, &Provider::QTX_ExampleToCIMObjectPath,
         &Provider::getQTX_ExampleWithCIMObjectPath, &Provider::getQTX_ExampleWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_Example, &Manager::destroyQTX_Example},
    };
    return kDefinition;
}
// [define-provider]
