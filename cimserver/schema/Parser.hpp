// Reads MOF declarations by recursive descent. Nothing in the accepted grammar nests without bound: lists do not
// contain lists of their own kind, and an include is returned to the caller as a declaration.
#pragma once

#include "cimserver/schema/Ast.hpp"

#include <string_view>

namespace cimserver::schema {

class Parser {
  public:
    /// `text` must outlive the parser; `file` stands for it in messages.
    Parser(std::string_view text, std::string file);

    /// The next declaration, empty at the end. Throws MofError.
    std::optional<ast::Declaration> next();

  private:
    Token take();
    bool isPunctuation(char c) const;
    bool isKeyword(std::string_view word) const;
    bool skip(char c);
    bool skipKeyword(std::string_view word);
    void expect(char c);
    std::string name(const char* what);
    [[noreturn]] void unexpected(const std::string& wanted) const;

    ast::Pragma pragma();
    ast::QualifierDeclaration qualifierDeclaration();
    std::vector<Token> nameList();
    ast::ClassDeclaration classDeclaration(ast::QualifierList qualifiers);
    std::string alias();
    ast::InstanceDeclaration instanceDeclaration();
    ast::Feature feature();
    std::vector<ast::Parameter> parameters();
    ast::QualifierList qualifierList();
    ast::QualifierUse qualifierUse();
    ast::Type type();
    void arrayMark(ast::Type& type);
    ast::Literal literal();
    ast::Literal array();
    ast::Literal scalar();

    Lexer lexer_;
    Token token_;
};

} // namespace cimserver::schema
