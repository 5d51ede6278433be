#include "CommandLine.hpp"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace zpo {
namespace {

constexpr int kFailureCode = 1;
constexpr int kUsageCode = 2;

// As the parser takes them. It would miss the value of `--text=`.
std::vector<std::string> argumentsBackwards(int argc, char** argv) {
    std::vector<std::string> result;
    for (int i = argc; --i > 0;) {
        std::string argument = argv[i];
        if (argument.rfind("--", 0) == 0 && argument.find('=') + 1 == argument.size()) {
            result.emplace_back();
            argument.pop_back();
        }
        result.push_back(std::move(argument));
    }
    return result;
}

} // namespace

using Command = CommandLine::Command;

Command& Command::argument(const char* name, std::string& value, const char* help) {
    app_.add_option(name, value, help)->required();
    return *this;
}

Command& Command::option(const char* name, std::string& value, const char* help) {
    app_.add_option(name, value, help);
    return *this;
}

Command& Command::option(const char* name, int& value, const char* help) {
    app_.add_option(name, value, help);
    return *this;
}

Command& Command::option(const char* name, unsigned& value, const char* help) {
    app_.add_option(name, value, help);
    return *this;
}

Command& Command::flag(const char* name, bool& value, const char* help) {
    app_.add_flag(name, value, help);
    return *this;
}

Command& Command::oneOf(std::initializer_list<Choice> choices) {
    CLI::Option_group* group = app_.add_option_group("value");
    for (const Choice& choice : choices) {
        group->add_option(choice.name, choice.value, choice.help);
    }
    group->require_option(1);
    return *this;
}

CommandLine::CommandLine(const char* tool, const char* help)
    : tool_(tool), app_(std::make_unique<CLI::App>(help, tool)) {
    app_->require_subcommand(1);
    app_->set_version_flag("--version", tool_ + " " ZPO_VERSION);
}

CommandLine::~CommandLine() = default;

Command CommandLine::add(const char* name, const char* help, std::function<void()> work) {
    CLI::App* command = app_->add_subcommand(name, help);
    command->callback(std::move(work));
    return Command(*command);
}

int CommandLine::run(int argc, char** argv) {
    try {
        const std::string command = argc > 1 ? argv[1] : "-";
        const auto isCommand = [&command](const CLI::App* one) { return one->get_name() == command; };
        if (command[0] != '-' && std::as_const(*app_).get_subcommands(isCommand).empty()) {
            throw CLI::ParseError("there is no command '" + command + "'", kUsageCode);
        }
        app_->parse(argumentsBackwards(argc, argv));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app_->exit(error); // help was asked for
        }
        std::fprintf(stderr, "%s: %s (%s --help tells the usage)\n", tool_.c_str(), error.what(), tool_.c_str());
        return kUsageCode;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", tool_.c_str(), error.what());
        return kFailureCode;
    }
    if (std::fflush(stdout) != 0) {
        std::perror((tool_ + ": standard output").c_str());
        return kFailureCode;
    }
    return 0;
}

} // namespace zpo
