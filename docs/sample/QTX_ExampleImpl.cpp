// [define-impl]
#include "QTX_ExampleImpl.hpp"

namespace {

// Counts the calls of the method while the module is loaded.
unsigned int resetCount = 0;

} // namespace

unsigned int QTX_ExampleImpl::Reset() {
    count_.set(0U);
    return ++resetCount;
}
// [define-impl]
