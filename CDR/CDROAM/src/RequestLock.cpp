#include "RequestLock.hpp"

#ifdef CDR_SERIALIZE_REQUESTS
namespace cdroam {

std::recursive_mutex& RequestLock::mutex() {
    static std::recursive_mutex one;
    return one;
}

} // namespace cdroam
#endif
