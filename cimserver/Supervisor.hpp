// A parent process that starts a crashed server again at once: all that has to be done anew is the server's own start.
#pragma once

#include <functional>

namespace cimserver {

/// Runs `work` in a child process, and anew whenever a signal has ended it; returns in child and parent what `work`
/// returned. SIGTERM, SIGINT, SIGHUP, SIGUSR1 and SIGABRT are passed on. After SIGTERM, SIGINT or SIGABRT (from
/// systemd's watchdog) nothing is started again; the parent then ends by the signal that ended the child, if one did.
/// To be called before there are other threads. Throws std::runtime_error when no process can be made.
int supervise(const std::function<int()>& work);

} // namespace cimserver
