// The console: the files of one folder, read at start and served as they were then.
#pragma once

#include "cimserver/http/Message.hpp"

#include <map>
#include <optional>
#include <string>

namespace cimserver::http {

class StaticFiles {
  public:
    /// Reads the .html, .css and .mjs files that lie in the folder itself; with an empty name nothing is served. Throws
    /// std::runtime_error when there is no index.html, or naming a file that cannot be read or is too large.
    explicit StaticFiles(const std::string& folder);

    /// The answer to a request for /console/ or below, which needs no authentication; nothing for any other request.
    std::optional<Response> answer(const Request& request) const;

  private:
    struct File {
        std::string mediaType;
        std::string tag; ///< the ETag, with its quotes
        std::string content;
    };

    std::map<std::string, File, std::less<>> files_; ///< by path; empty: nothing is served
};

} // namespace cimserver::http
