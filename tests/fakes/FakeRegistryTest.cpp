// The registry in memory keeps what the real one keeps.
#include "RegistryContract.hpp"
