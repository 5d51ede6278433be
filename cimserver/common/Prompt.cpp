#include "cimserver/common/Prompt.hpp"

#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <iostream>
#include <stdexcept>

namespace cimserver {
namespace {

constexpr std::size_t kLongestLine = 4096;

/// Turns echo off. Blocks signals meanwhile, so that echo is always turned on again.
class SilentTerminal {
  public:
    SilentTerminal() {
        sigset_t all;
        ::sigfillset(&all);
        ::sigprocmask(SIG_BLOCK, &all, &signals_);
        ::tcgetattr(STDIN_FILENO, &terminal_);
        auto silent = terminal_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() {
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminal_);
        ::sigprocmask(SIG_SETMASK, &signals_, nullptr);
        std::cerr << "\n";
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

  private:
    termios terminal_{};
    sigset_t signals_{};
};

} // namespace

std::string readPassword(std::istream& input) {
    std::string line;
    int next = input.get();
    if (next == EOF) {
        throw std::runtime_error("no password was given");
    }
    for (; next != EOF && next != '\n' && line.size() <= kLongestLine; next = input.get()) {
        line += static_cast<char>(next);
    }
    return line;
}

std::string promptPassword(const char* text) {
    const SilentTerminal silent; // first, so that nothing typed after the question is lost or shown
    std::cerr << text << std::flush;
    return readPassword(std::cin);
}

} // namespace cimserver
