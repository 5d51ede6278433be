// What the program does to its process, and the request to the service that transfers where one is installed.
#pragma once

namespace transfer {

/// Closes what the parent process left open, so that a run in the background keeps no lock or port of it. Takes the
/// requests of the service's socket, when systemd passed one.
void closeInherited();

/// Asks cdr-transfer.service for a run, through its socket. False when there is none: no service is installed, or this
/// is not its machine.
bool requestService();

/// Goes on in a background process; the caller's process ends with status 0. What is locked stays locked. False when no
/// process can be made; the caller then goes on in the foreground.
bool continueInBackground();

} // namespace transfer
