#include "cimserver/provider/Module.hpp"

#include "OW_config.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <dlfcn.h>

namespace cimserver::provider {

namespace fs = std::filesystem;

namespace {

std::string lastLoadError() {
    const char* const text = dlerror();
    return text != nullptr ? text : "unknown error";
}

template <class Function>
Function functionOf(void* symbol) {
    Function function = nullptr;
    static_assert(sizeof(function) == sizeof(symbol), "POSIX keeps functions and objects alike");
    std::memcpy(&function, &symbol, sizeof(function));
    return function;
}

} // namespace

bool isProviderId(const std::string& id) {
    const auto allowed = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_' || c == '-' || c == '.'; };
    return !id.empty() && id.size() <= 128 && id[0] != '.' && std::all_of(id.begin(), id.end(), allowed);
}

fs::path findModule(const std::vector<fs::path>& folders, const std::string& id) {
    for (const fs::path& folder : folders) {
        for (const std::string& name : {"lib" + id + ".so", id + ".so"}) {
            std::error_code error;
            if (fs::exists(folder / name, error)) {
                return folder / name;
            }
        }
    }
    return {};
}

void Module::Close::operator()(void* library) const {
    dlclose(library);
}

Module::Module(const fs::path& file, const std::string& id) : file_(file) {
    // Global, as an OpenWBEM object manager loads them: modules may rely on one another's symbols.
    library_.reset(dlopen(fs::absolute(file).c_str(), RTLD_NOW | RTLD_GLOBAL));
    if (!library_) {
        throw ModuleError("its file cannot be loaded", lastLoadError());
    }
    checkVersion();
    const std::string name = "createProvider" + id;
    factory_ = functionOf<decltype(factory_)>(symbol(name));
}

void* Module::symbol(const std::string& name) const {
    void* const found = dlsym(library_.get(), name.c_str());
    if (found == nullptr) {
        throw ModuleError("it has no symbol " + name, file_.string() + ": " + lastLoadError());
    }
    return found;
}

void Module::checkVersion() const {
    void* const found = dlsym(library_.get(), "getOWVersion");
    if (found == nullptr) {
        throw NoProviderModule("it has no symbol getOWVersion", file_.string() + ": " + lastLoadError());
    }
    const char* const theirs = functionOf<const char* (*)()>(found)();
    if (theirs == nullptr || std::strcmp(theirs, OW_VERSION) != 0) {
        const std::string text = theirs != nullptr ? std::string(theirs, strnlen(theirs, 64)) : "unknown";
        throw ModuleError("it is made for OpenWBEM " + text + ", this server offers " OW_VERSION, file_.string());
    }
}

OpenWBEM::CppProviderBaseIFC* Module::create() const {
    OpenWBEM::CppProviderBaseIFC* const made = factory_();
    if (made == nullptr) {
        throw ModuleError("its factory gave no provider", file_.string());
    }
    return made;
}

} // namespace cimserver::provider
