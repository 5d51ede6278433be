#include "ProcessRegistry.hpp"

#include "PerProcess.hpp"
#include "Settings.hpp"

#include <unistd.h>

namespace zpo {

RegistryStore* processRegistry() {
    const Settings& given = settings();
    if (!given.stateDirectory || !given.registryBytes || !given.lockSeconds) {
        return nullptr;
    }
    // LMDB must not be used across a fork.
    return &PerProcess<RegistryStore>::get([&] {
        return new RegistryStore(*given.stateDirectory, static_cast<std::size_t>(*given.registryBytes),
                                 std::chrono::seconds(*given.lockSeconds));
    });
}

bool registryFileExists() {
    const auto& directory = settings().stateDirectory;
    static const auto* const path = new std::string(directory ? *directory + "/registry.mdb" : "");
    return access(path->c_str(), F_OK) == 0;
}

} // namespace zpo
