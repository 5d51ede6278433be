#include "cimserver/cimxml/Errors.hpp"

namespace cimserver::cimxml {

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

} // namespace cimserver::cimxml
