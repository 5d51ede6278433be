// The names of namespaces, classes, properties and qualifiers: compared without regard to the case of ASCII letters.
//
// The units of this folder, each above those it uses:
//
//     Associations          between classes
//     Repository            what the server asks
//     Compiler              files, includes, order of declarations
//     ClassBuilder  InstanceBuilder
//     Qualifiers            of an element of a class
//     Namespace             what is declared so far
//     QualifierTypes        qualifier declarations, the standard ones among them
//     Values  Parser        constants and types; text to declarations
//     Ast                   declarations as written
//     Lexer                 text to tokens
//     MofError  Names
#pragma once

#include <string>
#include <string_view>

namespace cimserver::schema {

/// The key that a name is stored under: its ASCII letters in lower case.
std::string fold(std::string_view name);

bool sameName(std::string_view a, std::string_view b);

/// A namespace name without leading slashes and without blanks around it.
std::string trimmedNamespace(std::string_view name);

/// The local name "root/cimv2" from "//./root/cimv2" or "/root/cimv2", with slashes or backslashes; empty for a
/// namespace on another host.
std::string localNamespace(std::string written);

} // namespace cimserver::schema
