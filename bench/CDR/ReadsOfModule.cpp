// This program's own ZpoGetRegEntry functions stand before the library's, which they call.
#include "ReadsOfModule.hpp"

#include "ZpoShared.h"

#include <dlfcn.h>

namespace {

std::vector<std::string>* recorded = nullptr;

void record(const char* component, const char* section, const char* key) {
    if (recorded != nullptr) {
        recorded->push_back(std::string(component) + '\0' + section + '\0' + key);
    }
}

template <class Function>
Function* next(Function* /*like*/, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

uint32_t ZpoGetRegEntryBinary(const char* component, const char* section, const char* key, void* buffer,
                              uint32_t length) {
    static const auto real = next(&ZpoGetRegEntryBinary, "ZpoGetRegEntryBinary");
    record(component, section, key);
    return real(component, section, key, buffer, length);
}

uint32_t ZpoGetRegEntryString(const char* component, const char* section, const char* key, char* buffer,
                              uint32_t size) {
    static const auto real = next(&ZpoGetRegEntryString, "ZpoGetRegEntryString");
    record(component, section, key);
    return real(component, section, key, buffer, size);
}

uint32_t ZpoGetRegEntryInt(const char* component, const char* section, const char* key, uint32_t* value) {
    static const auto real = next(&ZpoGetRegEntryInt, "ZpoGetRegEntryInt");
    record(component, section, key);
    return real(component, section, key, value);
}

namespace bench {

std::vector<std::string> readsOf(const std::function<void()>& work) {
    std::vector<std::string> keys;
    recorded = &keys;
    work();
    recorded = nullptr;
    return keys;
}

} // namespace bench
