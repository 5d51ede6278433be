// The elements of CIM-XML: what each may contain and which attributes it has, as a table, and the check of a document
// against it.
#pragma once

#include <pugixml.hpp>

#include <stdexcept>
#include <string>

namespace cimserver::cimxml {

/// What is wrong with a document as CIM-XML; what() names the element.
class GrammarError : public std::runtime_error {
  public:
    enum class Kind {
        Unknown, ///< an element that CIM-XML does not have
        Broken   ///< a known element missing or misplaced, or an attribute missing or wrong
    };
    GrammarError(Kind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}
    Kind kind() const noexcept { return kind_; }

  private:
    Kind kind_;
};

enum class Strictness {
    Loose, ///< ignores unknown attributes, takes booleans in any case: how requests are read
    Strict ///< nothing beyond the table: how replies are written
};

/// Checks the element and everything in it. Throws GrammarError for the first fault.
void checkGrammar(pugi::xml_node element, Strictness strictness);

} // namespace cimserver::cimxml
