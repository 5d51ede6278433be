#include "QTX_CDRServiceImpl.hpp"

#include "DiagnosticLog.hpp"
#include "Qualifiers.hpp"

#include "osa.h"

#include <cstdio>

using namespace cdroam;

namespace {

constexpr std::uint32_t kNoQueue = 0xFFFFFFFF;
constexpr const char* kQueueName = "CDRService";

// Counters of the methods; each counts from 1 as long as the module is loaded.
unsigned int RefreshReturn = 0;
unsigned int ClipFileReturn = 0;

template <class Kind, class Value>
int readSetting(const char* accessor, const char* key, typename Kind::Cache& cache, Value& value) {
    const std::uint32_t status = Kind::load({kServiceSection, key}, cache);
    if (status != 0) {
        (void)writeError(accessor, status);
        Kind::zero(value);
        return ReadFailed;
    }
    Kind::decode(cache, value);
    return Success;
}

// The cache takes the value first: it holds it also when the write fails.
template <class Kind, class Value>
int writeSetting(const char* accessor, const char* key, typename Kind::Cache& cache, const Value& value) {
    cache = Kind::encode(value);
    const std::uint32_t status = Kind::store({kServiceSection, key}, cache);
    if (status != 0) {
        (void)writeError(accessor, status);
        return WriteFailed;
    }
    return Success;
}

} // namespace

QTX_CDRServiceImpl::QTX_CDRServiceImpl(const std::string& systemCreationClassName, const std::string& systemName,
                                       const std::string& creationClassName, const std::string& name)
    : QTX_CDRService(systemCreationClassName, systemName, creationClassName, name), cache_{}, queueId(kNoQueue) {
    if (osQueueGetId(kQueueName, &queueId) != 0) {
        queueId = kNoQueue;
    }
}

#define GETTER(NAME, TYPE, KIND, KEY)                                                                                  \
    int QTX_CDRServiceImpl::get##NAME(cim::TYPE::Value& value, QualifierArray& /*qualifiers*/) const {                 \
        return readSetting<KIND>("get" #NAME, KEY, cache_.NAME, value);                                                \
    }
#define SETTER(NAME, TYPE, KIND, KEY)                                                                                  \
    int QTX_CDRServiceImpl::set##NAME(cim::TYPE::Value value) {                                                        \
        return notified(writeSetting<KIND>("set" #NAME, KEY, cache_.NAME, value));                                     \
    }
// A kind "Own..." has a getter of its own, below.
#define GETTER_Byte GETTER
#define GETTER_Word GETTER
#define GETTER_Integer GETTER
#define GETTER_PackedDigits GETTER
#define GETTER_OwnByte CDR_NONE
#define ACCESSORS(NAME, TYPE, KIND, KEY, CHECK) GETTER_##KIND(NAME, TYPE, KIND, KEY) SETTER(NAME, TYPE, KIND, KEY)

QTX_CDRSERVICE_TABLE(ACCESSORS, CDR_NONE, CDR_NONE, CDR_NONE)

int QTX_CDRServiceImpl::getReportType(unsigned char& value, QualifierArray& qualifiers) const {
    // By the format last read: a provider reads it before the report type.
    appendValidValueMap(qualifiers, cache_.Format == 0 ? 1 : 3);
    return readSetting<Byte>("getReportType", "TYPE", cache_.ReportType, value);
}

int QTX_CDRServiceImpl::getAnswerSupervision(bool& value, QualifierArray& /*qualifiers*/) const {
    const std::uint32_t status = Byte::load({kServiceSection, "SUPERVISE"}, cache_.AnswerSupervision);
    if (status != 0) {
        (void)writeError("getAnswerSupervision", status);
        (void)std::printf(" get AnswerSupervision error = %i\n", static_cast<int>(status));
        value = false;
        return ReadFailed;
    }
    Byte::decode(cache_.AnswerSupervision, value);
    (void)std::printf("theAnswerSupervision = %i\n", value ? 1 : 0);
    return Success;
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
