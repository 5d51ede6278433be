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
    return settings().stateDirectory && access((*settings().stateDirectory + "/registry.mdb").c_str(), F_OK) == 0;
}

} // namespace zpo
