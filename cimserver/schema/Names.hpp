// The names of namespaces, classes, properties and qualifiers: compared without regard to the case of ASCII letters.
//
// The units of this folder, each above those it uses:
//
//     Repository            what the server asks
//     Compiler              files, includes, order of declarations
//     ClassBuilder  InstanceBuilder
//     Qualifiers
//     Values  Namespace     constants and types; what is declared so far
//     Parser                text to declarations
//     Ast                   declarations as written
//     Lexer                 text to tokens
//     MofError  Names
#pragma once

#include <string>
#include <string_view>

namespace cimserver::schema {

/// The key under which a name is filed: its ASCII letters in lower case.
std::string fold(std::string_view name);

bool sameName(std::string_view a, std::string_view b);

/// A namespace name without leading slashes and without blanks around it.
std::string trimmedNamespace(std::string_view name);

} // namespace cimserver::schema
