// The registry's entries that the module reads.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// The keys, as the registry's file has them, of the entries that the work reads through the platform's functions. They
/// are recorded only while this runs.
std::vector<std::string> readsOf(const std::function<void()>& work);

} // namespace bench
