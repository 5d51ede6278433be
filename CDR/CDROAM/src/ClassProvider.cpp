#include "ClassProvider.hpp"

using OpenWBEM::CIMException;

namespace cdroam {

void throwFailed(const char* source, int line, int status) {
    throw CIMException(source, line, CIMException::FAILED, std::to_string(status).c_str());
}

} // namespace cdroam
