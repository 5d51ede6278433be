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

/// The key under which a name is filed: its ASCII letters in lower case.
std::string fold(std::string_view name);

bool sameName(std::string_view a, std::string_view b);

/// A namespace name without leading slashes and without blanks around it.
std::string trimmedNamespace(std::string_view name);

/// "//./root/cimv2" and "/root/cimv2" mean the namespace root/cimv2 of this server, with slashes or backslashes; empty
/// for one of another host.
std::string localNamespace(std::string written);

} // namespace cimserver::schema
