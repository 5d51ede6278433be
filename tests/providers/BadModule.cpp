// One source of several modules that a host must refuse, each built with the macro of its fault.
#include "OW_CppProviderIncludes.hpp"

namespace {

class Idle : public OpenWBEM::CppProviderBaseIFC {};

} // namespace

#ifdef OTHER_VERSION
extern "C" OW_VISIBILITY_DEFAULT const char* getOWVersion() {
    return "2.0.0";
}
#elif !defined(NO_VERSION)
extern "C" OW_VISIBILITY_DEFAULT const char* getOWVersion() {
    return OW_VERSION;
}
#endif

#ifndef NO_FACTORY
// Of the id that the module's file name does not have, unless it is built under this one.
extern "C" OW_VISIBILITY_DEFAULT OpenWBEM::CppProviderBaseIFC* createProviderBad() {
#ifdef NULL_FACTORY
    return nullptr;
#else
    return new Idle;
#endif
}
#endif
