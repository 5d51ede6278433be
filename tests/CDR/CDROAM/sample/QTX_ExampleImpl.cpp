// [define-impl]
#include "QTX_ExampleImpl.hpp"

#include "DiagnosticLog.hpp"
#include "Statistics.hpp"

using namespace cdroam;

namespace {

constexpr Entry kLimit{"Example", "LIMIT"};
constexpr Entry kCount{"Example", "COUNT"};

// Counter of the method; counts from 1 as long as the module is loaded.
unsigned int ResetReturn = 0;

} // namespace

QTX_ExampleImpl::QTX_ExampleImpl(const std::string& instanceId) : QTX_Example(instanceId), cache_{} {}

int QTX_ExampleImpl::getLimit(unsigned short& value, QualifierArray& /*qualifiers*/) const {
    return readStatistic<Word>(kLimit, "getLimit", cache_.Limit, value);
}

int QTX_ExampleImpl::setLimit(unsigned short value) {
    cache_.Limit = Word::encode(value);
    const std::uint32_t status = Word::store(kLimit, cache_.Limit);
    if (status != 0) {
        (void)writeError("setLimit", status);
        return WriteFailed;
    }
    return Success;
}

int QTX_ExampleImpl::getCount(unsigned int& value, QualifierArray& /*qualifiers*/) const {
    return readStatistic<Counter>(kCount, "getCount", cache_.Count, value);
}

unsigned int QTX_ExampleImpl::Reset() {
    cache_.Count = 0;
    (void)Counter::store(kCount, cache_.Count);
    return ++ResetReturn;
}
// [define-impl]
