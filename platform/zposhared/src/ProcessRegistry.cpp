#include "ProcessRegistry.hpp"

#include "Settings.hpp"

#include <atomic>
#include <pthread.h>
#include <unistd.h>

namespace zpo {
namespace {

std::atomic<RegistryStore*> processStore{nullptr};
std::atomic<RegistryStore*> inheritedStore{nullptr}; // the parent's: kept, never used

// LMDB must not be used across a fork. The child leaves the parent's store alone, also undestroyed, and opens its own.
void forgetStoreInChild() {
    inheritedStore.store(processStore.exchange(nullptr));
}

} // namespace

RegistryStore* processRegistry() {
    RegistryStore* store = processStore.load(std::memory_order_acquire);
    if (store != nullptr || !settings().stateDirectory || !settings().registryBytes) {
        return store;
    }
    static const int hooked = pthread_atfork(nullptr, nullptr, forgetStoreInChild);
    static_cast<void>(hooked);
    // Never destroyed, like all that the library's thread and late callers may use while the process exits.
    auto* fresh = new RegistryStore(*settings().stateDirectory, static_cast<std::size_t>(*settings().registryBytes));
    if (!processStore.compare_exchange_strong(store, fresh)) {
        delete fresh;
        return store;
    }
    return fresh;
}

bool registryFileExists() {
    return settings().stateDirectory && access((*settings().stateDirectory + "/registry.mdb").c_str(), F_OK) == 0;
}

} // namespace zpo
