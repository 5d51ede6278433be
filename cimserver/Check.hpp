// What --check finds out without starting the server.
#pragma once

#include "cimserver/Options.hpp"

#include <string>
#include <vector>

namespace cimserver {

/// What is wrong with the files and folders that the options name, as the process's user sees them, a line each.
/// Creates nothing.
std::vector<std::string> fileProblems(const Options& options);

/// A warning when root runs the server on another user's state; empty otherwise.
std::string foreignState(const std::string& stateDir);

/// Becomes the user, with its groups. Throws OptionsError when there is no such user, or the process may not.
void becomeUser(const std::string& name);

} // namespace cimserver
