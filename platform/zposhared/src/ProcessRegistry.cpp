#include "ProcessRegistry.hpp"

#include "PerProcess.hpp"
#include "Settings.hpp"

#include <unistd.h>

namespace zpo {

RegistryStore* processRegistry() {
    if (!settings().stateDirectory || !settings().registryBytes) {
        return nullptr;
    }
    // LMDB must not be used across a fork.
    return &PerProcess<RegistryStore>::get([] {
        return new RegistryStore(*settings().stateDirectory, static_cast<std::size_t>(*settings().registryBytes));
    });
}

bool registryFileExists() {
    return settings().stateDirectory && access((*settings().stateDirectory + "/registry.mdb").c_str(), F_OK) == 0;
}

} // namespace zpo
