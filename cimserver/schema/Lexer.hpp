// Splits a MOF text into tokens.
#pragma once

#include "cimserver/schema/MofError.hpp"

#include <cstdint>
#include <string>
#include <string_view>

namespace cimserver::schema {

enum class TokenKind { Identifier, Integer, Real, String, Character, Alias, Pragma, Punctuation, End };

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;       ///< the identifier, the unescaped string, the number as written, the punctuation character
    std::uint64_t size = 0; ///< magnitude of an Integer, code of a Character
    bool negative = false;  ///< sign of an Integer
    double real = 0;        ///< value of a Real
    Location location;
};

/// Yields the tokens of a text; throws MofError for an invalid one. The text must outlive the lexer.
class Lexer {
  public:
    Lexer(std::string_view text, std::string file);

    Token next();

  private:
    char peek(std::size_t ahead = 0) const;
    char take();
    /// The characters from here on that belong together; none is a line's end.
    template <class Belongs>
    std::string_view takeRun(Belongs belongs);
    void skipBlanksAndComments();
    void skipComment();
    Token identifier();
    Token number();
    static Token integer(Token written);
    Token string();
    Token character();
    void appendPlain(std::string& out);
    void appendCharacter(std::string& out, const Location& opening);
    std::uint32_t escape();
    std::uint32_t hexEscape();
    Token start() const;

    std::string_view text_;
    std::size_t at_ = 0;
    Location location_;
};

} // namespace cimserver::schema
