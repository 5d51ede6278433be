#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace zpo {

/// A tool's command line: `TOOL COMMAND ARGUMENTS`, with --help for the tool and for each command, and --version. The
/// parser's headers are slow to compile, so one unit alone includes them.
class CommandLine {
  public:
    /// One command. The variables given here must outlive run(), which fills them before the command's work begins.
    class Command {
      public:
        explicit Command(CLI::App& app) : app_(app) {}

        /// The next argument by position, which must be given.
        Command& argument(const char* name, std::string& value, const char* help);
        /// An option `--name VALUE`, or without the dashes an argument that may be left out.
        Command& option(const char* name, std::string& value, const char* help);
        Command& option(const char* name, int& value, const char* help);
        Command& option(const char* name, unsigned& value, const char* help);
        Command& flag(const char* name, bool& value, const char* help);

        struct Choice {
            const char* name;
            std::optional<std::string>& value;
            const char* help;
        };
        /// Options exactly one of which must be given.
        Command& oneOf(std::initializer_list<Choice> choices);

      private:
        CLI::App& app_;
    };

    CommandLine(const char* tool, const char* help);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    /// Adds a command; `work` throws when it fails.
    Command add(const char* name, const char* help, std::function<void()> work);

    /// Runs the command that is given. Returns the program's exit code: 0, 1 on failure, 2 on wrong usage; a failure is
    /// one line on standard error.
    int run(int argc, char** argv);

  private:
    const std::string tool_;
    std::unique_ptr<CLI::App> app_;
};

} // namespace zpo
