#include "Process.hpp"

#include "Files.hpp"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace transfer {
namespace {

constexpr char kServiceSocket[] = "/run/cdr-transfer.socket";
constexpr int kFirstPassed = 3; // where systemd puts what it passes

bool isPassedSocket() {
    const char* const process = std::getenv("LISTEN_PID");
    const char* const count = std::getenv("LISTEN_FDS");
    return process != nullptr && count != nullptr && std::to_string(getpid()) == process && std::atoi(count) == 1;
}

/// A request is a connection, nothing more; one run serves all that wait.
void takeRequests(int socket) {
    constexpr int kMost = 4096;
    if (fcntl(socket, F_SETFL, O_NONBLOCK) != 0) {
        return;
    }
    for (int i = 0; i < kMost; ++i) {
        const zpo::UniqueFd request(accept4(socket, nullptr, nullptr, SOCK_CLOEXEC));
        if (!request) {
            return;
        }
    }
}

} // namespace

void closeInherited() {
    if (isPassedSocket()) {
        takeRequests(kFirstPassed);
    }
    close_range(kFirstPassed, ~0U, 0);
}

bool requestService() {
    const char* const path = secure_getenv("CDR_TRANSFER_SOCKET");
    const std::string name = path == nullptr || *path == '\0' ? kServiceSocket : path;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path, name.c_str(), name.size());
    const zpo::UniqueFd fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    return fd && connect(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool continueInBackground() {
    const pid_t child = fork();
    if (child > 0) {
        _exit(0); // without destructors, which would give up the lock
    }
    if (child < 0) {
        return false;
    }
    setsid();
    const zpo::UniqueFd null = zpo::openFile("/dev/null", O_RDWR);
    for (int fd = 0; fd < kFirstPassed; ++fd) {
        dup2(null.get(), fd);
    }
    return chdir("/") == 0;
}

} // namespace transfer
