// What is wrong with a MOF text, and where.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

namespace cimserver::schema {

/// A MOF text that cannot be compiled; what() is "FILE:LINE:COLUMN: text".
class MofError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A position in a MOF text, for messages. Lines and columns count from 1, columns in bytes.
struct Location {
    std::shared_ptr<const std::string> file;
    unsigned line = 1;
    unsigned column = 1;
};

/// Throws MofError "FILE:LINE:COLUMN: text".
[[noreturn]] void fail(const Location& location, const std::string& text);

/// A MofError whose text ends with the name of an element.
class ElementError : public MofError {
  public:
    using MofError::MofError;
};

/// Runs `work` and adds the element, a class or "CLASS.FEATURE", to a MofError from it, unless that names one already.
template <class Work>
void within(const std::string& element, Work&& work) {
    try {
        work();
    } catch (const ElementError&) {
        throw;
    } catch (const MofError& error) {
        throw ElementError(error.what() + (" (in " + element + ")"));
    }
}

} // namespace cimserver::schema
