// What the server tells systemd, when systemd has started it as a service of Type=notify. Otherwise nothing happens.
#pragma once

#include <chrono>
#include <string>

namespace cimserver::service {

/// The server serves; `status` is a line for people.
void ready(const std::string& status);
void stopping();
/// The server is alive. Without this call for WatchdogSec systemd ends the server and starts it again.
void alive();
/// How often alive() is to be called: a fraction of WatchdogSec, at most `longest`.
std::chrono::milliseconds interval(std::chrono::milliseconds longest);
/// To be called in a child of the process that systemd started, which serves in its place: the notices are its own from
/// now on (NotifyAccess=all).
void replaceParent();

} // namespace cimserver::service
