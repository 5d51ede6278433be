// Any text as a user file: refused, or saving keeps each user.
#include "../Require.hpp"

#include "cimserver/http/UserFile.hpp"

#include <sstream>
#include <stdexcept>
#include <unistd.h>

using cimserver::http::User;
using cimserver::http::UserFile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string file = "/dev/shm/userfile_fuzz." + std::to_string(getpid());
    const std::string text(textOf(data, size));
    UserFile users;
    try {
        users = UserFile::parse(text, "fuzz");
    } catch (const std::runtime_error&) {
        return 0;
    }
    users.save(file);
    UserFile saved = UserFile::load(file);
    unlink(file.c_str());
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of(" \t"));
        const std::string name = line.substr(0, line.find(':'));
        const User* const user = name == line ? nullptr : users.find(name);
        const User* const same = user == nullptr ? nullptr : saved.find(name);
        require(user == nullptr || (same != nullptr && same->hash == user->hash && same->mayWrite == user->mayWrite),
                "saving keeps each user");
        saved.remove(same == nullptr ? "" : name);
    }
    require(saved.empty(), "each user stands in a line");
    return 0;
}
