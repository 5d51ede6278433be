#pragma once

#include <string>

namespace zpo {

/// What becomes of root's rights in a process that acts as another user.
enum class RootRights {
    Kept,   ///< the effective user changes: the process can act as root again
    Dropped ///< for good
};

/// Makes a process of root one of the directory's owner, with that user's groups; an owner without a passwd entry has
/// the directory's group alone. Nothing changes when the process is not root's, or the directory is missing or root's.
/// Returns 0 or an errno.
int becomeOwnerOf(const std::string& directory, RootRights rights);

} // namespace zpo
