#include "cimserver/http/Dump.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace cimserver::http {
namespace {

std::string now() {
    return utcNow("%Y-%m-%dT%H:%M:%SZ");
}

void appendFields(std::string& text, const Fields& fields) {
    for (const auto& [name, value] : fields.all()) {
        const bool secret = containsIgnoringCase(name, "authorization") || containsIgnoringCase(name, "cookie") ||
                            containsIgnoringCase(name, "token");
        text.append(name).append(": ").append(secret ? "***" : value).append("\n");
    }
    text += '\n';
}

} // namespace

Dump::Dump(const std::string& file) : fd_(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {
    if (fd_ < 0) {
        throw std::runtime_error("cannot write the dump file " + file + ": " + std::strerror(errno));
    }
}

Dump::~Dump() {
    ::close(fd_);
}

void Dump::write(const Request& request, const Response& response, const Mask& mask) noexcept {
    try {
        const auto bodies = mask ? mask(request, response) : ShownBodies();
        std::string text = "==== " + now() + " request from " + request.peer;
        text += request.identity.user.empty() ? "\n" : " user " + request.identity.user + "\n";
        text += request.method + " " + request.target + (request.version == 10 ? " HTTP/1.0\n" : " HTTP/1.1\n");
        appendFields(text, request.fields);
        text += bodies.request + "\n---- " + now() + " answer " + std::to_string(response.status) + "\n";
        appendFields(text, response.fields);
        text = withoutUserInfo(text + bodies.response + "\n");
        const std::lock_guard lock(mutex_);
        const bool failed = ::write(fd_, text.data(), text.size()) != static_cast<ssize_t>(text.size());
        if (failed && !failed_) {
            log::write(log::Level::Warning, "http", std::string("the dump is incomplete: ") + std::strerror(errno));
        }
        failed_ = failed;
    } catch (...) { // out of memory: the entry is lost, the request is not
    }
}

} // namespace cimserver::http
