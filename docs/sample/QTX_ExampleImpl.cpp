// [define-impl]
#include "QTX_ExampleImpl.hpp"

#include "Settings.hpp"

using namespace cdroam;

namespace {

// Counter of the method; counts from 1 as long as the module is loaded.
unsigned int ResetReturn = 0;

} // namespace

QTX_ExampleImpl::QTX_ExampleImpl(const std::string& instanceId) : QTX_Example(instanceId), cache_{} {}

#define CDR_CLASS QTX_ExampleImpl
#define CDR_TABLE QTX_EXAMPLE_TABLE
#define CDR_SECTION "Example"
#include "SettingAccessors.ipp"

unsigned int QTX_ExampleImpl::Reset() {
    cache_.Count = 0;
    (void)Counter::store({"Example", "COUNT"}, cache_.Count);
    return ++ResetReturn;
}
// [define-impl]
