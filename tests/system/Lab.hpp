// A device of its own for a test: its files below a temporary folder, its server, and the commands of a person.
#pragma once

#include "Support.hpp"

namespace lab {

/// A command line of the shell and what it prints, on both outputs.
struct Step {
    std::string command;
    testing::Matcher<std::string> output;
};

class Lab {
  public:
    /// Prepares the folders, the factory settings and the message queue, and tells all programs of them. No server runs
    /// yet.
    Lab();
    /// Stops the server.
    ~Lab();
    Lab(const Lab&) = delete;
    Lab& operator=(const Lab&) = delete;

    /// Starts the server on a free port with further options and waits until it is ready; the variables HOST, CIM (the
    /// URL before a class name), SERVICE, PREFIX3, PUSH, ... then name it in commands.
    void start(const std::string& options = "");
    /// The server ends orderly, with nothing reported by a sanitizer.
    void stop();

    /// What the command prints, the server's address and the quotes of wbemcli's values left out. "show OBJECT
    /// [NAME,...]" prints the properties of an instance, one a line.
    static std::string run(const std::string& command);
    /// Each step in turn.
    static void play(const std::vector<Step>& steps);

    /// The messages that the queue got since the last call, one a line.
    static std::string heard() { return run("osqueue listen CDRService --timeout 1 2>/dev/null"); }
    std::string crontab() const;
    /// What the module and the platform libraries logged.
    std::string diagnostics() const;
    std::string serverLog() const { return support::contentOf(home_ / "server.err"); }
    std::string operator/(const std::string& name) const { return home_ / name; }

  private:
    support::TempDir home_;
    pid_t server_ = -1;
};

} // namespace lab
