// The rules of XML 1.0 that the tree's parser does not enforce.
#pragma once

#include <cstddef>
#include <string_view>

namespace cimserver::cimxml {

/// Limits of a document; a larger one is refused as not well-formed.
struct XmlLimits {
    std::size_t depth = 64;       ///< elements inside one another
    std::size_t elements = 50000; ///< elements in all
    std::size_t attributes = 32;  ///< attributes of one element
};

constexpr XmlLimits kUnlimited{1000, static_cast<std::size_t>(-1), static_cast<std::size_t>(-1)};

/// Goes through the text once and keeps nothing of it. Throws HttpError request-not-well-formed, with line and column
/// of the fault, unless the text is a well-formed document in UTF-8, within the limits and without declarations of its
/// own, so that only XML's five predefined entities can occur. A text that passes means the same to every XML parser.
void requireWellFormed(std::string_view text, const XmlLimits& limits);

} // namespace cimserver::cimxml
