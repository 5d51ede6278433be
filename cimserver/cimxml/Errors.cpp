#include "Errors.hpp"

namespace cimserver::cimxml {
namespace {

constexpr std::size_t longestQuote = 120;

} // namespace

HttpError notWellFormed(std::string text) {
    return {400, "request-not-well-formed", std::move(text)};
}

HttpError notValid(std::string text) {
    return {400, "request-not-valid", std::move(text)};
}

HttpError notLooselyValid(std::string text) {
    return {400, "request-not-loosely-valid", std::move(text)};
}

HttpError headerMismatch(std::string text) {
    return {400, "header-mismatch", std::move(text)};
}

std::string quote(std::string_view text) {
    if (text.size() <= longestQuote) {
        return "\"" + std::string(text) + "\"";
    }
    return "\"" + std::string(text.substr(0, longestQuote)) + "...\"";
}

} // namespace cimserver::cimxml
