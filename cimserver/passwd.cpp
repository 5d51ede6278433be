// cimserver-passwd: adds users to a user file of cimserverd, changes and removes them.
#include "cimserver/common/Prompt.hpp"
#include "cimserver/http/UserFile.hpp"

#include <getopt.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <optional>

namespace {

using cimserver::http::UserFile;

struct Command {
    std::string file;
    std::string user;
    std::optional<std::string> role;
    bool remove = false;
    bool fromStdin = false;
    bool certificateOnly = false;
};

std::string askPassword(bool fromStdin) {
    if (fromStdin) {
        return cimserver::readPassword(std::cin);
    }
    if (::isatty(STDIN_FILENO) == 0) {
        throw std::runtime_error("standard input is not a terminal; use --stdin to give the password there");
    }
    auto password = cimserver::promptPassword("New password: ");
    if (password != cimserver::promptPassword("The same again: ")) {
        throw std::runtime_error("the two differ");
    }
    return password;
}

std::string newHash(const Command& command) {
    if (command.certificateOnly) {
        return "*";
    }
    return cimserver::http::hashPassword(askPassword(command.fromStdin));
}

void warnIfOthersCanRead(const std::string& file) {
    using std::filesystem::perms;
    const auto mode = std::filesystem::status(file).permissions();
    if ((mode & (perms::others_read | perms::others_write)) != perms::none) {
        std::cerr << "cimserver-passwd: warning: other users of this machine can read or write " << file
                  << "; to prevent it: chmod o= " << file << "\n";
    }
}

void warnIfServiceCannotRead(const std::string& file) {
    if (cimserver::http::isHiddenFromService(file)) {
        std::cerr << "cimserver-passwd: warning: the group of its folder cannot read " << file
                  << "; to let it: chgrp --reference=\"$(dirname " << file << ")\" " << file << "; chmod g+r " << file
                  << "\n";
    }
}

void run(const Command& command) {
    const auto hash = command.remove ? std::string() : newHash(command); // before the lock: a person may be typing
    const cimserver::http::UserFileLock lock(command.file);
    auto users = std::filesystem::exists(command.file) ? UserFile::load(command.file) : UserFile();
    const auto* old = users.find(command.user);
    if (command.remove) {
        if (!users.remove(command.user)) {
            throw std::runtime_error(command.file + " has no user '" + command.user + "'");
        }
    } else {
        const bool mayWrite = command.role ? *command.role == "write" : old != nullptr && old->mayWrite;
        users.set({command.user, hash, mayWrite});
    }
    users.save(command.file);
    warnIfOthersCanRead(command.file);
    warnIfServiceCannotRead(command.file);
}

constexpr const char* kUsage = "Usage: cimserver-passwd FILE USER [OPTION...]\n"
                               "Adds a user to a user file of cimserverd, or changes or removes one. A running server "
                               "takes the change when it is\n"
                               "reloaded (SIGHUP).\n\n"
                               "  --role read|write    read is the role of a new user unless told otherwise\n"
                               "  --delete             remove the user\n"
                               "  --stdin              take the password from the first line of standard input\n"
                               "  --certificate-only   no password: the user comes with a client certificate\n";

constexpr option kOptions[] = {
    {"role", required_argument, nullptr, 'r'}, {"delete", no_argument, nullptr, 'd'},
    {"stdin", no_argument, nullptr, 's'},      {"certificate-only", no_argument, nullptr, 'c'},
    {"help", no_argument, nullptr, 'h'},       {nullptr, 0, nullptr, 0}};

/// False when the arguments are wrong, or only help was asked for.
bool parse(int argc, char** argv, Command& command, bool& help) {
    for (int given = 0; (given = ::getopt_long(argc, argv, "h", kOptions, nullptr)) != -1;) {
        command.role = given == 'r' ? std::optional<std::string>(optarg) : command.role;
        command.remove = command.remove || given == 'd';
        command.fromStdin = command.fromStdin || given == 's';
        command.certificateOnly = command.certificateOnly || given == 'c';
        help = help || given == 'h';
        if (given == '?' || help) {
            return false;
        }
    }
    const bool role = !command.role || *command.role == "read" || *command.role == "write";
    if (argc - optind != 2 || !role) {
        return false;
    }
    command.file = argv[optind];
    command.user = argv[optind + 1];
    return true;
}

} // namespace

int main(int argc, char** argv) {
    Command command;
    bool help = false;
    if (!parse(argc, argv, command, help)) {
        (help ? std::cout : std::cerr) << kUsage;
        return help ? 0 : 2;
    }
    try {
        run(command);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "cimserver-passwd: " << error.what() << "\n";
        return 1;
    }
}
