#include "cimserver/http/Dump.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace cimserver::http {
namespace {

Descriptor open(const std::string& file) {
    return Descriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
}

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

Dump::Dump(const std::string& file) : path_(file), fd_(open(file)) {
    if (fd_.get() < 0) {
        throw std::runtime_error("cannot write the dump file " + file + ": " + std::strerror(errno));
    }
}

void Dump::reopen() {
    Descriptor fresh = open(path_);
    const std::string why = std::strerror(errno);
    const std::lock_guard lock(mutex_);
    if (fresh.get() < 0) {
        log::write(log::Level::Error, "http", "kept the old dump file: " + path_ + ": " + why);
    } else {
        fd_ = std::move(fresh);
    }
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
        const bool failed = ::write(fd_.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size());
        if (failed && !failed_) {
            log::write(log::Level::Warning, "http", std::string("the dump is incomplete: ") + std::strerror(errno));
        }
        failed_ = failed;
    } catch (...) { // out of memory: the entry is lost, the request is not
    }
}

} // namespace cimserver::http
