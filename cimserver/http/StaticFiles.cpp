#include "cimserver/http/StaticFiles.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/http/Policy.hpp"

#include <openssl/sha.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace cimserver::http {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kConsoleRoot = "/console/";
constexpr std::size_t kConsoleFileBytes = std::size_t{256} * 1024;
constexpr std::size_t kConsoleFiles = 32;

/// Only what these files need: nothing from elsewhere, nothing inline, no frame around the page, and texts that become
/// documents only through the page's one policy.
constexpr const char* kConsolePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src data:; connect-src 'self'; base-uri 'none'; "
    "form-action 'none'; frame-ancestors 'none'; require-trusted-types-for 'script'; trusted-types cim-xml";

/// Empty for files that are not served.
std::string_view consoleTypeOf(const fs::path& file) {
    constexpr std::pair<std::string_view, std::string_view> kTypes[] = {{".html", "text/html; charset=utf-8"},
                                                                        {".css", "text/css; charset=utf-8"},
                                                                        {".mjs", "text/javascript; charset=utf-8"}};
    const auto extension = file.extension().string();
    for (const auto& [name, type] : kTypes) {
        if (name == extension) {
            return type;
        }
    }
    return {};
}

std::string consoleContentOf(const fs::path& file) {
    std::string content(kConsoleFileBytes + 1, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream.is_open() || stream.bad()) {
        throw std::runtime_error("cannot read " + file.string() + " of the console");
    }
    content.resize(static_cast<std::size_t>(stream.gcount()));
    if (content.size() > kConsoleFileBytes) {
        throw std::runtime_error(file.string() + " is too large for a file of the console");
    }
    return content;
}

std::string tagOf(const std::string& content) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::array<unsigned char, SHA256_DIGEST_LENGTH> hash{};
    SHA256(reinterpret_cast<const unsigned char*>(content.data()), content.size(), hash.data());
    std::string tag = "\"";
    for (std::size_t i = 0; i < 8; ++i) {
        tag += kDigits[hash[i] >> 4U];
        tag += kDigits[hash[i] & 15U];
    }
    return tag + "\"";
}

/// Whether the client has this version of the file.
bool isKnownTag(const Request& request, std::string_view tag) {
    const auto* known = request.fields.find("If-None-Match");
    const auto tags = split(known == nullptr ? std::string_view() : *known, ',');
    return std::any_of(tags.begin(), tags.end(), [tag](std::string_view one) {
        return one == "*" || one.substr(one.substr(0, 2) == "W/" ? 2 : 0) == tag;
    });
}

Response movedToRoot() {
    auto response = textResponse(308, "the console is at /console/");
    response.fields.add("Location", std::string(kConsoleRoot));
    return response;
}

void addProtection(Response& response) {
    response.fields.add("Cache-Control", "no-cache");
    response.fields.add("Content-Security-Policy", kConsolePolicy);
    response.fields.add("X-Content-Type-Options", "nosniff");
    response.fields.add("Referrer-Policy", "no-referrer");
    response.fields.add("Cross-Origin-Resource-Policy", "same-origin");
}

} // namespace

StaticFiles::StaticFiles(const std::string& folder) {
    if (folder.empty()) {
        return;
    }
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const auto type = consoleTypeOf(entry.path());
        if (type.empty()) {
            continue;
        }
        if (files_.size() == kConsoleFiles) {
            throw std::runtime_error(folder + " holds more than " + std::to_string(kConsoleFiles) +
                                     " files of a console");
        }
        const auto content = consoleContentOf(entry.path());
        const auto name = entry.path().filename().string();
        files_[std::string(kConsoleRoot) + (name == "index.html" ? "" : name)] = {std::string(type), tagOf(content),
                                                                                  content};
    }
    if (error || files_.count(kConsoleRoot) == 0) {
        throw std::runtime_error("there is no console in " + folder + ": it has no index.html");
    }
}

std::optional<Response> StaticFiles::answer(const Request& request) const {
    if (files_.empty()) {
        return std::nullopt;
    }
    const auto path = pathOf(request.target);
    if (path != kConsoleRoot.substr(0, kConsoleRoot.size() - 1) &&
        path.substr(0, kConsoleRoot.size()) != kConsoleRoot) {
        return std::nullopt;
    }
    if (request.method != "GET" && request.method != "HEAD") {
        return refuseMethod(request.method, "GET, HEAD");
    }
    if (path.size() < kConsoleRoot.size()) {
        return movedToRoot();
    }
    const auto found = files_.find(path);
    if (found == files_.end()) {
        return textResponse(404, "the console has no such file");
    }
    const auto& file = found->second;
    Response response;
    response.status = isKnownTag(request, file.tag) ? 304 : 200;
    response.fields.add("Content-Type", file.mediaType);
    response.fields.add("ETag", file.tag);
    addProtection(response);
    response.body = file.content;
    return response;
}

} // namespace cimserver::http
