// A conversation with the server as a file has it: requests and the answers they must get.
//
// A line ">>> METHOD" opens a request; header lines may follow, then a blank line and the body. A body that is an
// IMETHODCALL or METHODCALL is wrapped into a message, and gets the header fields that belong to it; a header line
// replaces its field, one without value takes it away, and "@user", "@role" set who asks. In bodies \xNN is a byte,
// {ns} the LOCALNAMESPACEPATH of root/cimv2 and {context} what the last answer gave as EnumerationContext. A line "<<<
// STATUS CIMERROR" opens the answer: what is in SIMPLERSP, or the whole CIM, where * stands for any text; "+++ TEXT"
// wants TEXT in the log and "--- TEXT" wants it kept out.
#pragma once

#include "cimserver/http/Message.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace wire {

struct Step {
    std::string method = "POST";
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    std::string status;
    std::string cimError;
    std::string answer;
    std::vector<std::string> logged;
    std::vector<std::string> notLogged;
};

std::vector<Step> readCase(const std::filesystem::path& file);

/// The request of a step; `context` is the id of the open enumeration.
cimserver::http::Request requestOf(const Step& step, const std::string& context);

} // namespace wire
