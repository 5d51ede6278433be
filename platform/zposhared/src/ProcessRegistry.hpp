#pragma once

#include "RegistryStore.hpp"

namespace zpo {

/// The process's registry. A forked child gets one of its own. Null when the settings are unusable.
RegistryStore* processRegistry();

/// Whether the store's file exists, without opening it.
bool registryFileExists();

} // namespace zpo
