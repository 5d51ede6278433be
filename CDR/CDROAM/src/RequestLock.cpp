#include "RequestLock.hpp"

#ifdef CDR_SERIALIZE_REQUESTS
namespace cdroam {

std::mutex& RequestLock::mutex() {
    static std::mutex one;
    return one;
}

} // namespace cdroam
#endif
