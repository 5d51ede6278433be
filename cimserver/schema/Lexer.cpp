#include "cimserver/schema/Lexer.hpp"

#include "cimserver/common/Utf8.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace cimserver::schema {

namespace {

constexpr std::size_t kLongestNumber = 400;
constexpr std::size_t kLongestIdentifier = 256;
constexpr std::uint32_t kReplacement = 0xfffd;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsIdentifier(char c) {
    return c == '_' || std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool continuesIdentifier(char c) {
    return startsIdentifier(c) || isDigit(c);
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

/// In a string: stands for itself.
bool isPlain(char c) {
    return c >= 0x20 && c < 0x7f && c != '"' && c != '\\';
}

std::string shown(char c) {
    if (isControl(c) || static_cast<unsigned char>(c) >= 0x80) {
        return "byte " + std::to_string(static_cast<unsigned char>(c));
    }
    return std::string("'") + c + "'";
}

/// The base of an integer as written without its sign, and its digits.
std::pair<int, std::string_view> baseOf(std::string_view digits) {
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        return {16, digits.substr(2)};
    }
    if (digits.size() > 1 && (digits.back() == 'b' || digits.back() == 'B')) {
        return {2, digits.substr(0, digits.size() - 1)};
    }
    if (digits.size() > 1 && digits[0] == '0') {
        return {8, digits};
    }
    return {10, digits};
}

} // namespace

Lexer::Lexer(std::string_view text, std::string file) : text_(text) {
    location_.file = std::make_shared<const std::string>(std::move(file));
    if (text_.substr(0, 3) == "\xef\xbb\xbf") {
        at_ = 3;
    }
}

char Lexer::peek(std::size_t ahead) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
}

char Lexer::take() {
    const char c = text_[at_++];
    if (c == '\n') {
        ++location_.line;
        location_.column = 1;
    } else {
        ++location_.column;
    }
    return c;
}

template <class Belongs>
std::string_view Lexer::takeRun(Belongs belongs) {
    const std::string_view rest = text_.substr(at_);
    const auto length = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), belongs) - rest.begin());
    at_ += length;
    location_.column += static_cast<unsigned>(length);
    return rest.substr(0, length);
}

void Lexer::skipBlanksAndComments() {
    while (at_ < text_.size()) {
        if (std::isspace(static_cast<unsigned char>(peek())) != 0) {
            take();
        } else if (peek() == '/' && (peek(1) == '/' || peek(1) == '*')) {
            skipComment();
        } else {
            return;
        }
    }
}

void Lexer::skipComment() {
    const Location opening = location_;
    take();
    if (take() == '/') {
        while (at_ < text_.size() && peek() != '\n') {
            take();
        }
        return;
    }
    while (!(peek() == '*' && peek(1) == '/')) {
        if (at_ >= text_.size()) {
            fail(opening, "the comment is not closed");
        }
        take();
    }
    take();
    take();
}

Token Lexer::start() const {
    Token token;
    token.location = location_;
    return token;
}

Token Lexer::next() {
    skipBlanksAndComments();
    Token token = start();
    if (at_ >= text_.size()) {
        return token;
    }
    const char c = peek();
    if (startsIdentifier(c)) {
        return identifier();
    }
    if (isDigit(c) || ((c == '+' || c == '-' || c == '.') && (isDigit(peek(1)) || peek(1) == '.'))) {
        return number();
    }
    if (c == '"') {
        return string();
    }
    if (c == '\'') {
        return character();
    }
    if (c == '$' || c == '#') {
        take();
        Token name = identifier();
        name.kind = c == '$' ? TokenKind::Alias : TokenKind::Pragma;
        name.location = token.location;
        return name;
    }
    if (std::string_view("[](){}:;,=").find(c) == std::string_view::npos) {
        fail(location_, "unexpected " + shown(c));
    }
    token.kind = TokenKind::Punctuation;
    token.text = std::string(1, take());
    return token;
}

Token Lexer::identifier() {
    Token token = start();
    token.kind = TokenKind::Identifier;
    token.text = takeRun(continuesIdentifier);
    if (token.text.empty()) {
        fail(token.location, "a name is missing");
    }
    if (token.text.size() > kLongestIdentifier) {
        fail(token.location, "a name is longer than " + std::to_string(kLongestIdentifier) + " characters");
    }
    return token;
}

Token Lexer::number() {
    Token token = start();
    const std::size_t begin = at_;
    bool real = false;
    char previous = '\0';
    for (char c = peek(); at_ < text_.size(); c = peek()) {
        const bool exponentSign = (c == '+' || c == '-') && real && (previous == 'e' || previous == 'E');
        if (!(continuesIdentifier(c) || c == '.' || exponentSign || (at_ == begin && (c == '+' || c == '-')))) {
            break;
        }
        real = real || c == '.';
        previous = take();
    }
    token.text = std::string(text_.substr(begin, at_ - begin));
    if (token.text.size() > kLongestNumber) {
        fail(token.location, "a number is longer than " + std::to_string(kLongestNumber) + " characters");
    }
    if (!real) {
        return integer(std::move(token));
    }
    char* end = nullptr;
    token.kind = TokenKind::Real;
    token.real = std::strtod(token.text.c_str(), &end);
    const bool hex = token.text.find_first_of("xX") != std::string::npos;
    if (*end != '\0' || hex || !isDigit(token.text.back()) || !std::isfinite(token.real)) {
        fail(token.location, "\"" + token.text + "\" is not a real number");
    }
    return token;
}

Token Lexer::integer(Token token) {
    token.kind = TokenKind::Integer;
    std::string_view digits = token.text;
    token.negative = digits[0] == '-';
    if (digits[0] == '-' || digits[0] == '+') {
        digits.remove_prefix(1);
    }
    const auto [base, body] = baseOf(digits);
    const char* const end = body.data() + body.size();
    const auto result = std::from_chars(body.data(), end, token.size, base);
    if (result.ec == std::errc::result_out_of_range) {
        fail(token.location, "\"" + token.text + "\" does not fit into 64 bits");
    }
    if (result.ec != std::errc() || result.ptr != end) {
        fail(token.location, "\"" + token.text + "\" is not a number");
    }
    return token;
}

Token Lexer::string() {
    Token token = start();
    token.kind = TokenKind::String;
    take();
    appendPlain(token.text);
    while (peek() != '"' || at_ >= text_.size()) {
        appendCharacter(token.text, token.location);
        appendPlain(token.text);
    }
    take();
    return token;
}

/// Doubles the room as it is needed: what such texts leave free fits the arrays of the classes that are made later, so
/// that 1,500 classes take 6 MB less.
void Lexer::appendPlain(std::string& out) {
    const std::string_view run = takeRun(isPlain);
    std::size_t room = out.capacity();
    while (room < out.size() + run.size()) {
        room *= 2;
    }
    out.reserve(room);
    out += run;
}

void Lexer::appendCharacter(std::string& out, const Location& opening) {
    const char c = peek();
    if (at_ >= text_.size() || c == '\n' || c == '\r') {
        fail(opening, "the string is not closed on its line");
    }
    if (c == '\\') {
        appendUtf8(out, escape());
        return;
    }
    if (isControl(c) && c != '\t') {
        fail(location_, "unexpected " + shown(c) + " in a string");
    }
    const Character character = decodeUtf8(text_.substr(at_));
    if (!character.valid) { // early schemas are in Latin-1, with some marks that have no place in it
        const auto byte = static_cast<unsigned char>(take());
        appendUtf8(out, byte < 0xa0 ? kReplacement : byte);
        return;
    }
    for (std::size_t i = 0; i < character.length; ++i) {
        out += take();
    }
}

std::uint32_t Lexer::escape() {
    static constexpr std::string_view kLetters = "btnfr\"'\\";
    static constexpr std::string_view kMeanings = "\b\t\n\f\r\"'\\";
    const Location location = location_;
    take();
    const char c = peek();
    if (c == 'x' || c == 'X') {
        return hexEscape();
    }
    const std::size_t which = at_ < text_.size() ? kLetters.find(c) : std::string_view::npos;
    if (which == std::string_view::npos) {
        fail(location, "unknown escape sequence in a text");
    }
    take();
    return static_cast<unsigned char>(kMeanings[which]);
}

std::uint32_t Lexer::hexEscape() {
    const Location location = location_;
    take();
    std::uint32_t code = 0;
    unsigned digits = 0;
    for (; digits < 4 && std::isxdigit(static_cast<unsigned char>(peek())) != 0; ++digits) {
        const char c = take();
        code = code * 16 + static_cast<std::uint32_t>(isDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
    }
    if (digits == 0 || code == 0 || (code >= 0xd800 && code <= 0xdfff)) {
        fail(location, "\\x needs one to four hexadecimal digits of a character other than 0");
    }
    return code;
}

Token Lexer::character() {
    Token token = start();
    token.kind = TokenKind::Character;
    take();
    if (peek() == '\\') {
        token.size = escape();
    } else if (at_ < text_.size() && !isControl(peek()) && static_cast<unsigned char>(peek()) < 0x80 &&
               peek() != '\'') {
        token.size = static_cast<unsigned char>(take());
    } else {
        fail(token.location, "a character is missing between single quotes (one beyond ASCII is written \\xHHHH)");
    }
    if (peek() != '\'' || at_ >= text_.size()) {
        fail(token.location, "the character is not closed");
    }
    take();
    return token;
}

} // namespace cimserver::schema
