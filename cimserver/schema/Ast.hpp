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
    Place place;
};

/// A type as written; `reference` marks "CLASS REF".
struct Type {
    std::string name;
    bool reference = false;
    bool array = false;
    int arraySize = 0; ///< 0 when open
    Place place;
};

struct QualifierUse {
    std::string name;
    std::optional<Literal> value;
    std::vector<Token> flavors;
    Place place;
};

using QualifierList = std::vector<QualifierUse>;

struct QualifierDeclaration {
    std::string name;
    Type type;
    std::optional<Literal> defaultValue;
    std::vector<Token> scopes;
    std::vector<Token> flavors;
    Place place;
};

struct Parameter {
    QualifierList qualifiers;
    Type type;
    std::string name;
    Place place;
};

/// A property, or a method when `parameters` is set.
struct Feature {
    QualifierList qualifiers;
    Type type;
    std::string name;
    std::optional<Literal> defaultValue;
    std::optional<std::vector<Parameter>> parameters;
    Place place;
};

struct ClassDeclaration {
    QualifierList qualifiers;
    std::string name;
    std::string superClass; ///< empty at the top
    std::vector<Feature> features;
    Place place;
};

struct Initializer {
    std::string name;
    Literal value;
    Place place;
};

struct InstanceDeclaration {
    std::string className;
    std::string alias; ///< empty without one
    std::vector<Initializer> initializers;
    Place place;
};

struct Pragma {
    std::string name;
    std::string argument; ///< empty when it is not a string
    Place place;
};

using Declaration = std::variant<Pragma, QualifierDeclaration, ClassDeclaration, InstanceDeclaration>;

} // namespace cimserver::schema::ast
