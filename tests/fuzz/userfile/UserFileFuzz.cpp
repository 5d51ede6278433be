// Any text as a user file: refused, or every line's user is found, and saving keeps them all.
#include "../Require.hpp"

#include "cimserver/http/UserFile.hpp"

#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace {

using cimserver::http::User;
using cimserver::http::UserFile;

bool isSame(const User* x, const User* y) {
    return x == nullptr || y == nullptr ? x == y : x->hash == y->hash && x->mayWrite == y->mayWrite;
}

void use(const UserFile& users, const std::string& text, const std::string& file) {
    users.save(file);
    UserFile saved = UserFile::load(file);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t start = line.find_first_not_of(" \t");
        const std::string name = line.substr(std::min(start, line.size())).substr(0, line.find(':') - start);
        require(isSame(users.find(name), saved.find(name)), "saving keeps each user");
        saved.remove(name);
    }
    require(saved.empty(), "each user stands in a line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string file = "/dev/shm/userfile_fuzz." + std::to_string(getpid());
    const std::string text(textOf(data, size));
    UserFile users;
    try {
        users = UserFile::parse(text, "fuzz");
    } catch (const std::runtime_error&) {
        return 0;
    }
    use(users, text, file);
    unlink(file.c_str());
    return 0;
}
