#include "QTX_CDRPullStatisticsImpl.hpp"

#include "Qualifiers.hpp"
#include "Settings.hpp"
#include "Statistics.hpp"

using namespace cdroam;

namespace {

constexpr Entry kIncludeMetricsFlag{kPullSection, "Pull-IncludeMetricsFlag"};

// Counter of the method; counts from 1 as long as the module is loaded.
unsigned int RefreshReturn = 0;

void clearStatistic(const char* key, Text& cache) {
    cache.clear();
    (void)writeText({kPullSection, key}, "");
}

void clearStatistic(const char* key, Counter::Cache& cache) {
    cache = 0;
    (void)Counter::store({kPullSection, key}, cache);
}

} // namespace

QTX_CDRPullStatisticsImpl::QTX_CDRPullStatisticsImpl(const std::string& name) : QTX_CDRPullStatistics(name), cache_{} {}

int QTX_CDRPullStatisticsImpl::setQulifier(QualifierArray& qualifiers) const {
    unsigned char type = 0;
    const bool unused = Byte::load(kTransferType, type) == 0 && type != Pull;
    return appendApplicable(qualifiers, !unused) ? 1 : 0;
}

#define READ_Latin1Text(NAME, KEY)                                                                                     \
    readStatistic({{kPullSection, KEY}, "get" #NAME, KEY, std::string()}, cache_.NAME, value)
#define READ_Counter(NAME, KEY) readStatistic<Counter>({kPullSection, KEY}, "get" #NAME, cache_.NAME, value)
#define GETTER(NAME, TYPE, KIND, KEY)                                                                                  \
    int QTX_CDRPullStatisticsImpl::get##NAME(cim::TYPE::Value& value, QualifierArray& qualifiers) const {              \
        return setQulifier(qualifiers) == 0 ? Success : READ_##KIND(NAME, KEY);                                        \
    }

QTX_CDRPULLSTATISTICS_TABLE(CDR_NONE, GETTER, CDR_NONE, CDR_NONE)

int QTX_CDRPullStatisticsImpl::getIncludeMetricsFlag(bool& value, QualifierArray& qualifiers) const {
    if (setQulifier(qualifiers) == 0) {
        return Success;
    }
    const std::uint32_t status = Byte::load(kIncludeMetricsFlag, cache_.IncludeMetricsFlag);
    if (status == ZPO_REG_ENTRY_NOT_FOUND) {
        // Other than the counts, the flag is created when it is absent.
        cache_.IncludeMetricsFlag = 0;
        (void)Byte::store(kIncludeMetricsFlag, cache_.IncludeMetricsFlag);
    } else if (status != 0) {
        (void)writeError("getIncludeMetricsFlag", status);
        value = false;
        return ReadFailed;
    }
    Byte::decode(cache_.IncludeMetricsFlag, value);
    return Success;
}

int QTX_CDRPullStatisticsImpl::setIncludeMetricsFlag(bool value) {
    return writeSetting<Byte>("setIncludeMetricsFlag", kIncludeMetricsFlag, cache_.IncludeMetricsFlag, value);
}

unsigned int QTX_CDRPullStatisticsImpl::Refresh() {
#define CLEAR(NAME, TYPE, KIND, KEY) clearStatistic(KEY, cache_.NAME);
    QTX_CDRPULLSTATISTICS_TABLE(CDR_NONE, CLEAR, CDR_NONE, CDR_NONE)
#undef CLEAR
    return ++RefreshReturn;
}
