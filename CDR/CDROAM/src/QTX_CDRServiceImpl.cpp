#include "QTX_CDRServiceImpl.hpp"

#include "Qualifiers.hpp"

#include "osa.h"

#include <cstdio>

using namespace cdroam;

namespace {

constexpr std::uint32_t kNoQueue = 0xFFFFFFFF;
constexpr const char* kQueueName = "CDRService";

// Count the calls of each method while the module is loaded.
unsigned int RefreshReturn = 0;
unsigned int ClipFileReturn = 0;

} // namespace

QTX_CDRServiceImpl::QTX_CDRServiceImpl(const std::string& systemCreationClassName, const std::string& systemName,
                                       const std::string& creationClassName, const std::string& name)
    : QTX_CDRService(systemCreationClassName, systemName, creationClassName, name), queueId(kNoQueue) {
    if (osQueueGetId(kQueueName, &queueId) != 0) {
        queueId = kNoQueue;
    }
}

int QTX_CDRServiceImpl::getReportType(unsigned char& value, QualifierArray& qualifiers) const {
    // Depends on the format last read or written: a provider reads it before the report type.
    appendValidValueMap(qualifiers, format_.cached() == 0 ? 1 : 3);
    return reportType_.get(value);
}

// The traces on standard output are fixed: support staff searches for them.
int QTX_CDRServiceImpl::getAnswerSupervision(bool& value, QualifierArray& /*qualifiers*/) const {
    const std::uint32_t status = answerSupervision_.load();
    const int result = answerSupervision_.finishGet(status, value);
    if (status != 0) {
        (void)std::printf(" get AnswerSupervision error = %i\n", static_cast<int>(status));
    } else {
        (void)std::printf("theAnswerSupervision = %i\n", value ? 1 : 0);
    }
    return result;
}

int QTX_CDRServiceImpl::notified(int status) {
    if (status == Success) {
        (void)notifyCDRService("0");
    }
    return status;
}

int QTX_CDRServiceImpl::notifyCDRService(const char* message) {
    std::uint32_t id = kNoQueue;
    if (osQueueGetId(kQueueName, &id) == 0) {
        queueId = id;
    }
    if (queueId == kNoQueue) {
        return 0;
    }
    const std::uint32_t status = osQueueSend(queueId, message, 1);
    if (status != 0) {
        (void)logFormatted(LogNotice, "Notifying CDRService QueueSend failed rc =%x", status);
        return -1;
    }
    (void)std::printf("After notifyCDRService()############################## \n");
    return 0;
}

unsigned int QTX_CDRServiceImpl::Refresh() {
    return ++RefreshReturn;
}

unsigned int QTX_CDRServiceImpl::ClipFile() {
    (void)notifyCDRService("1");
    return ++ClipFileReturn;
}
