// How a request is refused before it is an operation: an HTTP status with a CIMError value.
#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace cimserver::cimxml {

/// The request is not a CIM-XML operation that this server understands (HTTP 400, 405 or 501), or there is no memory to
/// read it (503).
class HttpError : public std::exception {
  public:
    /// `cimError` is the value of the CIMError header, empty for none; `text` names the offending item.
    HttpError(unsigned status, std::string_view cimError, std::string text)
        : status_(status), cimError_(cimError), text_(std::move(text)) {}
    unsigned status() const noexcept { return status_; }
    const std::string& cimError() const noexcept { return cimError_; }
    const char* what() const noexcept override { return text_.c_str(); }

  private:
    unsigned status_;
    std::string cimError_;
    std::string text_;
};

inline HttpError notWellFormed(std::string text) {
    return {400, "request-not-well-formed", std::move(text)};
}
/// The document holds an element that CIM-XML does not know.
inline HttpError notValid(std::string text) {
    return {400, "request-not-valid", std::move(text)};
}
/// The document breaks the rules of CIM-XML although its elements are known: one is missing or misplaced.
inline HttpError notLooselyValid(std::string text) {
    return {400, "request-not-loosely-valid", std::move(text)};
}
inline HttpError headerMismatch(std::string text) {
    return {400, "header-mismatch", std::move(text)};
}

} // namespace cimserver::cimxml
