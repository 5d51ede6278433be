#include "cimserver/Supervisor.hpp"

#include "cimserver/ProcessMemory.hpp"
#include "cimserver/ServiceManager.hpp"
#include "cimserver/common/Log.hpp"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <stdexcept>
#include <string>

namespace cimserver {
namespace {

/// Zero in the child.
pid_t startChild(const sigset_t& signalMask) {
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::runtime_error(std::string("cannot start a process: ") + std::strerror(errno));
    }
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) { // it has ended before
            ::raise(SIGTERM);
        }
        service::replaceParent();
        ::sigprocmask(SIG_SETMASK, &signalMask, nullptr);
    }
    return child;
}

[[noreturn]] void endBy(int number, const sigset_t& signalMask) {
    ::sigprocmask(SIG_SETMASK, &signalMask, nullptr);
    std::signal(number, SIG_DFL);
    ::raise(number);
    ::_exit(128 + number); // its default is to be ignored
}

} // namespace

int supervise(const std::function<int()>& work) {
    sigset_t awaited;
    sigset_t before;
    ::sigemptyset(&awaited);
    for (const int number : {SIGCHLD, SIGTERM, SIGINT, SIGHUP, SIGUSR1, SIGABRT}) {
        ::sigaddset(&awaited, number);
    }
    ::sigprocmask(SIG_BLOCK, &awaited, &before);
    bool ending = false;
    pid_t child = startChild(before);
    if (child != 0) {
        giveBackStart();
    }
    while (child != 0) {
        int number = 0;
        int status = 0;
        ::sigwait(&awaited, &number);
        if (number != SIGCHLD) {
            ending = ending || (number != SIGHUP && number != SIGUSR1);
            ::kill(child, number);
        } else if (::waitpid(child, &status, WNOHANG) == child) {
            if (WIFEXITED(status)) {
                return WEXITSTATUS(status);
            }
            if (ending) {
                endBy(WTERMSIG(status), before);
            }
            std::cerr << (log::isJournal() ? "<3>" : "") << "cimserverd: ended by signal " << WTERMSIG(status)
                      << ", and started again\n";
            child = startChild(before);
        }
    }
    return work();
}

} // namespace cimserver
