// The declarations of a MOF text as written: nothing is looked up or checked against other declarations yet.
#pragma once

#include "cimserver/schema/Lexer.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace cimserver::schema::ast {

/// A constant. A string made of several literals is one Token here.
struct Literal {
    enum class Kind { Null, Boolean, Scalar, Array };
    Kind kind = Kind::Null;
    bool boolean = false;
    Token scalar; ///< Integer, Real, String, Character or Alias
    std::vector<Literal> elements;
    Location location;
};

/// A type as written; `reference` marks "CLASS REF".
struct Type {
    std::string name;
    bool reference = false;
    bool array = false;
    int arraySize = 0; ///< 0 when open
    Location location;
};

struct QualifierUse {
    std::string name;
    std::optional<Literal> value;
    std::vector<Token> flavors;
    Location location;
};

using QualifierList = std::vector<QualifierUse>;

struct QualifierDeclaration {
    std::string name;
    Type type;
    std::optional<Literal> defaultValue;
    std::vector<Token> scopes;
    std::vector<Token> flavors;
    Location location;
};

struct Parameter {
    QualifierList qualifiers;
    Type type;
    std::string name;
    Location location;
};

/// A property, or a method when `parameters` is set.
struct Feature {
    QualifierList qualifiers;
    Type type;
    std::string name;
    std::optional<Literal> defaultValue;
    std::optional<std::vector<Parameter>> parameters;
    Location location;
};

struct ClassDeclaration {
    QualifierList qualifiers;
    std::string name;
    std::string superClass; ///< empty at the top
    std::vector<Feature> features;
    Location location;
};

struct Initializer {
    std::string name;
    Literal value;
    Location location;
};

struct InstanceDeclaration {
    std::string className;
    std::string alias; ///< empty without one
    std::vector<Initializer> initializers;
    Location location;
};

struct Pragma {
    std::string name;
    std::string argument; ///< empty when it is not a string
    Location location;
};

using Declaration = std::variant<Pragma, QualifierDeclaration, ClassDeclaration, InstanceDeclaration>;

} // namespace cimserver::schema::ast
