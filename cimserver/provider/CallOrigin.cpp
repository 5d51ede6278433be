#include "cimserver/provider/CallOrigin.hpp"

#include "cimserver/common/Text.hpp"

namespace cimserver::provider {

std::string CallOrigin::described() const {
    return className.empty() ? what : quote(what) + " of " + className.c_str();
}

} // namespace cimserver::provider
