#include "cimserver/schema/Parser.hpp"

#include "cimserver/common/Text.hpp"

namespace cimserver::schema {

using namespace ast;

namespace {

constexpr std::uint64_t kLargestArray = 1000000;
constexpr std::size_t kLongestString = std::size_t{1} << 20;

std::string describe(const Token& token) {
    switch (token.kind) {
    case TokenKind::End:
        return "the end of the text";
    case TokenKind::String:
        return "a string";
    case TokenKind::Character:
        return "a character";
    case TokenKind::Pragma:
        return "\"#" + token.text + "\"";
    case TokenKind::Alias:
        return "\"$" + token.text + "\"";
    default:
        return "\"" + token.text + "\"";
    }
}

} // namespace

Parser::Parser(std::string_view text, std::string file) : lexer_(text, std::move(file)), token_(lexer_.next()) {}

Token Parser::take() {
    Token taken = std::move(token_);
    token_ = lexer_.next();
    return taken;
}

bool Parser::isPunctuation(char c) const {
    return token_.kind == TokenKind::Punctuation && token_.text[0] == c;
}

bool Parser::isKeyword(std::string_view word) const {
    return token_.kind == TokenKind::Identifier && equalsIgnoringCase(token_.text, word);
}

bool Parser::skip(char c) {
    const bool there = isPunctuation(c);
    if (there) {
        take();
    }
    return there;
}

bool Parser::skipKeyword(std::string_view word) {
    const bool there = isKeyword(word);
    if (there) {
        take();
    }
    return there;
}

void Parser::unexpected(const std::string& wanted) const {
    fail(token_.location, wanted + " is expected instead of " + describe(token_));
}

void Parser::expect(char c) {
    if (!skip(c)) {
        unexpected(std::string("\"") + c + "\"");
    }
}

std::string Parser::name(const char* what) {
    if (token_.kind != TokenKind::Identifier) {
        unexpected(what);
    }
    return take().text;
}

std::optional<Declaration> Parser::next() {
    if (token_.kind == TokenKind::End) {
        return std::nullopt;
    }
    if (token_.kind == TokenKind::Pragma) {
        return pragma();
    }
    if (isKeyword("qualifier")) {
        return qualifierDeclaration();
    }
    QualifierList qualifiers = qualifierList();
    if (skipKeyword("instance")) {
        return instanceDeclaration();
    }
    if (!isKeyword("class")) {
        unexpected("a declaration of a qualifier, class or instance or #pragma");
    }
    return classDeclaration(std::move(qualifiers));
}

Pragma Parser::pragma() {
    Pragma pragma;
    pragma.location = token_.location;
    if (!equalsIgnoringCase(token_.text, "pragma")) {
        unexpected("#pragma");
    }
    take();
    pragma.name = name("the name of a pragma");
    const bool known = equalsIgnoringCase(pragma.name, "include") || equalsIgnoringCase(pragma.name, "namespace");
    if (!known && !isPunctuation('(')) {
        return pragma;
    }
    expect('(');
    if (token_.kind == TokenKind::String) {
        pragma.argument = scalar().scalar.text;
    } else if (known) {
        unexpected("a string");
    }
    while (!known && !isPunctuation(')') && token_.kind != TokenKind::End) {
        take(); // pragmas of other compilers have any arguments
    }
    expect(')');
    return pragma;
}

QualifierDeclaration Parser::qualifierDeclaration() {
    QualifierDeclaration declaration;
    take();
    declaration.location = token_.location;
    declaration.name = name("the name of a qualifier");
    expect(':');
    declaration.type = type();
    arrayMark(declaration.type);
    if (skip('=')) {
        declaration.defaultValue = literal();
    }
    while (skip(',')) {
        if (skipKeyword("scope")) {
            declaration.scopes = nameList();
        } else if (skipKeyword("flavor")) {
            declaration.flavors = nameList();
        } else {
            unexpected("Scope or Flavor");
        }
    }
    expect(';');
    return declaration;
}

std::vector<Token> Parser::nameList() {
    std::vector<Token> names;
    expect('(');
    do {
        if (token_.kind != TokenKind::Identifier) {
            unexpected("a name");
        }
        names.push_back(take());
    } while (skip(','));
    expect(')');
    return names;
}

ClassDeclaration Parser::classDeclaration(QualifierList qualifiers) {
    ClassDeclaration declaration;
    declaration.qualifiers = std::move(qualifiers);
    take();
    declaration.location = token_.location;
    declaration.name = name("the name of a class");
    within(declaration.name, [&] {
        alias(); // ignored: nothing can refer to a class by it
        if (skip(':')) {
            declaration.superClass = name("the name of the superclass");
        }
        expect('{');
        while (!skip('}')) {
            declaration.features.push_back(feature());
        }
        expect(';');
    });
    return declaration;
}

/// "as $NAME", empty when there is none.
std::string Parser::alias() {
    if (!skipKeyword("as")) {
        return {};
    }
    if (token_.kind != TokenKind::Alias) {
        unexpected("an alias");
    }
    return take().text;
}

InstanceDeclaration Parser::instanceDeclaration() {
    InstanceDeclaration declaration;
    if (!skipKeyword("of")) {
        unexpected("\"of\"");
    }
    declaration.location = token_.location;
    declaration.className = name("the name of a class");
    declaration.alias = alias();
    expect('{');
    while (!skip('}')) {
        qualifierList(); // ignored: the class's qualifiers are served
        Initializer initializer;
        initializer.location = token_.location;
        initializer.name = name("the name of a property");
        expect('=');
        initializer.value = literal();
        expect(';');
        declaration.initializers.push_back(std::move(initializer));
    }
    expect(';');
    return declaration;
}

Feature Parser::feature() {
    Feature feature;
    feature.qualifiers = qualifierList();
    feature.type = type();
    feature.location = token_.location;
    feature.name = name("the name of a property or method");
    if (isPunctuation('(')) {
        feature.parameters = parameters();
    } else {
        arrayMark(feature.type);
        if (skip('=')) {
            feature.defaultValue = literal();
        }
    }
    expect(';');
    return feature;
}

std::vector<Parameter> Parser::parameters() {
    std::vector<Parameter> parameters;
    expect('(');
    while (!isPunctuation(')')) {
        if (!parameters.empty()) {
            expect(',');
        }
        Parameter parameter;
        parameter.qualifiers = qualifierList();
        parameter.type = type();
        parameter.location = token_.location;
        parameter.name = name("the name of a parameter");
        arrayMark(parameter.type);
        parameters.push_back(std::move(parameter));
    }
    expect(')');
    return parameters;
}

QualifierList Parser::qualifierList() {
    QualifierList list;
    if (!skip('[')) {
        return list;
    }
    do {
        list.push_back(qualifierUse());
    } while (skip(','));
    expect(']');
    return list;
}

QualifierUse Parser::qualifierUse() {
    QualifierUse use;
    use.location = token_.location;
    use.name = name("the name of a qualifier");
    if (skip('(')) {
        use.value = isPunctuation('{') ? array() : scalar();
        expect(')');
    } else if (isPunctuation('{')) {
        use.value = array();
    }
    if (skip(':')) {
        while (token_.kind == TokenKind::Identifier) {
            use.flavors.push_back(take());
        }
        if (use.flavors.empty()) {
            unexpected("a flavor");
        }
    }
    return use;
}

Type Parser::type() {
    Type type;
    type.location = token_.location;
    type.name = name("a type");
    type.reference = skipKeyword("ref");
    return type;
}

void Parser::arrayMark(Type& type) {
    if (!skip('[')) {
        return;
    }
    type.array = true;
    if (token_.kind == TokenKind::Integer) {
        if (token_.negative || token_.size == 0 || token_.size > kLargestArray) {
            fail(token_.location, "the size of an array must be 1 to " + std::to_string(kLargestArray));
        }
        type.arraySize = static_cast<int>(take().size);
    }
    expect(']');
}

Literal Parser::literal() {
    return isPunctuation('{') ? array() : scalar();
}

Literal Parser::array() {
    Literal literal;
    literal.kind = Literal::Kind::Array;
    literal.location = token_.location;
    expect('{');
    while (!isPunctuation('}')) {
        if (!literal.elements.empty()) {
            expect(',');
        }
        literal.elements.push_back(scalar());
    }
    expect('}');
    return literal;
}

Literal Parser::scalar() {
    Literal literal;
    literal.location = token_.location;
    if (skipKeyword("null")) {
        return literal;
    }
    if (isKeyword("true") || isKeyword("false")) {
        literal.kind = Literal::Kind::Boolean;
        literal.boolean = equalsIgnoringCase(take().text, "true");
        return literal;
    }
    if (token_.kind != TokenKind::Integer && token_.kind != TokenKind::Real && token_.kind != TokenKind::String &&
        token_.kind != TokenKind::Character && token_.kind != TokenKind::Alias) {
        unexpected("a value");
    }
    literal.kind = Literal::Kind::Scalar;
    literal.scalar = take();
    while (literal.scalar.kind == TokenKind::String && token_.kind == TokenKind::String) {
        literal.scalar.text += take().text;
    }
    if (literal.scalar.text.size() > kLongestString) {
        fail(literal.location, "a string is longer than " + std::to_string(kLongestString) + " bytes");
    }
    return literal;
}

} // namespace cimserver::schema
