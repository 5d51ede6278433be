// Names of namespaces as they are written.
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

namespace cimserver::schema {

/// "//./root/cimv2" and "/root/cimv2" mean the namespace root/cimv2 of this server, with slashes or backslashes; empty
/// for one of another host.
std::string localNamespace(std::string written);

} // namespace cimserver::schema
