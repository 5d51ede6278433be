#include "QTX_CDRServiceProvider.hpp"

using namespace cdroam;

const QTX_CDRServiceProvider::Definition& QTX_CDRServiceProvider::definition() {
    using Provider = QTX_CDRServiceProvider;
    using Manager = QTX_CDRServiceInstanceManager;
    static const Definition kDefinition{
        "QTX_CDRService",
        "CDR/CDROAM/src/QTX_CDRServiceProvider",
        {
            readWrite<&QTX_CDRService::getFormat, &QTX_CDRService::setFormat>("Format"),
            readWrite<&QTX_CDRService::getReportType, &QTX_CDRService::setReportType>("ReportType"),
            readWrite<&QTX_CDRService::getLanguage, &QTX_CDRService::setLanguage>("Language"),
            readWrite<&QTX_CDRService::getReportFilter, &QTX_CDRService::setReportFilter>("ReportFilter"),
            readWrite<&QTX_CDRService::getFeatureCode, &QTX_CDRService::setFeatureCode>("FeatureCode",
                                                                                        Check::maxLength(3)),
            readWrite<&QTX_CDRService::getDateFormat, &QTX_CDRService::setDateFormat>("DateFormat"),
            readWrite<&QTX_CDRService::getHeaderFormat, &QTX_CDRService::setHeaderFormat>("HeaderFormat"),
            readWrite<&QTX_CDRService::getDNISInfo, &QTX_CDRService::setDNISInfo>("DNISInfo"),
            readWrite<&QTX_CDRService::getConnectChar, &QTX_CDRService::setConnectChar>("ConnectChar"),
            readWrite<&QTX_CDRService::getDigitsSuppress, &QTX_CDRService::setDigitsSuppress>("DigitsSuppress"),
            readWrite<&QTX_CDRService::getDigitsLimit, &QTX_CDRService::setDigitsLimit>("DigitsLimit",
                                                                                        Check::range(3, 24)),
            readWrite<&QTX_CDRService::getClipFileSchedule, &QTX_CDRService::setClipFileSchedule>("ClipFileSchedule"),
            readWrite<&QTX_CDRService::getClipFileSize_100K, &QTX_CDRService::setClipFileSize_100K>(
                "ClipFileSize_100K"),
            readWrite<&QTX_CDRService::getCDRDiskSpaceLimit_MB, &QTX_CDRService::setCDRDiskSpaceLimit_MB>(
                "CDRDiskSpaceLimit_MB"),
            readWrite<&QTX_CDRService::getCLIDWithName, &QTX_CDRService::setCLIDWithName>("CLIDWithName"),
            readWrite<&QTX_CDRService::getLongCLIDSupport, &QTX_CDRService::setLongCLIDSupport>("LongCLIDSupport"),
            readWrite<&QTX_CDRService::getCLIDWithCallType, &QTX_CDRService::setCLIDWithCallType>("CLIDWithCallType"),
            readWrite<&QTX_CDRService::getSupportCallCharge, &QTX_CDRService::setSupportCallCharge>(
                "SupportCallCharge"),
            readWrite<&QTX_CDRService::getAnswerSupervision, &QTX_CDRService::setAnswerSupervision>(
                "AnswerSupervision"),
            readWrite<&QTX_CDRService::getCallFilterDuration, &QTX_CDRService::setCallFilterDuration>(
                "CallFilterDuration"),
            readWrite<&QTX_CDRService::getHospitalityRecords, &QTX_CDRService::setHospitalityRecords>(
                "HospitalityRecords"),
            key<&QTX_CDRService::getSystemCreationClassName>("SystemCreationClassName"),
            key<&QTX_CDRService::getSystemName>("SystemName"),
            key<&QTX_CDRService::getCreationClassName>("CreationClassName"),
            key<&QTX_CDRService::getName>("Name"),
        },
        {{"Refresh", &QTX_CDRService::Refresh}, {"ClipFile", &QTX_CDRService::ClipFile}},
        {&Provider::QTX_CDRServiceToCIMInstance, &Provider::QTX_CDRServiceToCIMObjectPath,
         &Provider::getQTX_CDRServiceWithCIMObjectPath, &Provider::getQTX_CDRServiceWithCIMInstance,
         &Provider::modifyInstance, &Manager::createQTX_CDRService, &Manager::destroyQTX_CDRService},
        ChangeLock::Sharing::Together,
    };
    return kDefinition;
}
