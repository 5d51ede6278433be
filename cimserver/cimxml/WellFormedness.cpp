#include "cimserver/cimxml/WellFormedness.hpp"

#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/cimxml/Errors.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/common/Utf8.hpp"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>

namespace cimserver::cimxml {
namespace {

enum CharacterClass : std::uint8_t {
    Illegal = 1,
    Blank = 2,
    NameStart = 4,
    NameOnly = 8,
    BeyondAscii = 16,
    Markup = 32 ///< may end a run of characters
};

/// What each byte may be. The bytes beyond ASCII are looked at as characters.
constexpr std::array<std::uint8_t, 256> makeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool letter = (byte | 0x20U) >= 'a' && (byte | 0x20U) <= 'z';
        const bool digit = byte >= '0' && byte <= '9';
        unsigned known = 0;
        if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r') {
            known = Blank;
        } else if (byte < 0x20) {
            known = Illegal;
        } else if (byte >= 0x80) {
            known = BeyondAscii;
        } else if (letter || byte == '_' || byte == ':') {
            known = NameStart;
        } else if (digit || byte == '-' || byte == '.') {
            known = NameOnly;
        }
        for (const char mark : std::string_view("<&]\"'?-")) {
            known |= static_cast<unsigned char>(mark) == byte ? unsigned(Markup) : 0U;
        }
        classes[byte] = static_cast<std::uint8_t>(known);
    }
    return classes;
}

constexpr std::array<std::uint8_t, 256> kClasses = makeClasses();

class Scanner {
  public:
    Scanner(std::string_view text, const XmlLimits& limits) : text_(text), limits_(limits) {}

    void run() {
        skip("\xEF\xBB\xBF");
        if (startsWith("<?xml") && classOf(at_ + 5) == Blank) {
            declaration();
        }
        bool doctypeSeen = false;
        while (miscellany() && startsWith("<!DOCTYPE")) {
            if (doctypeSeen) {
                fail("a second document type");
            }
            doctypeSeen = true;
            doctype();
        }
        rootElement();
        if (miscellany()) {
            fail("something after the document's element");
        }
    }

  private:
    [[noreturn]] void fail(const std::string& what) const { failAt(at_, what); }
    [[noreturn]] void failAt(std::size_t where, const std::string& what) const {
        const std::string_view before = text_.substr(0, std::min(where, text_.size()));
        const auto line = 1 + std::count(before.begin(), before.end(), '\n');
        const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
        throw notWellFormed("line " + std::to_string(line) + ", column " +
                            std::to_string(before.size() - lineStart + 1) + ": " + what);
    }

    bool atEnd() const { return at_ >= text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[at_]; }
    std::uint8_t classOf(std::size_t position) const {
        return position < text_.size() ? kClasses[static_cast<unsigned char>(text_[position])] : std::uint8_t(Illegal);
    }
    bool startsWith(std::string_view expected) const { return text_.substr(at_, expected.size()) == expected; }
    bool skip(std::string_view expected) {
        const bool there = startsWith(expected);
        at_ += there ? expected.size() : 0;
        return there;
    }
    void require(char expected) {
        if (peek() != expected || atEnd()) {
            fail(quote(std::string_view(&expected, 1)) + " is missing");
        }
        ++at_;
    }
    void require(std::string_view expected) {
        if (!skip(expected)) {
            fail(quote(expected) + " is missing");
        }
    }
    bool skipBlanks() {
        const std::size_t from = at_;
        while (classOf(at_) == Blank) {
            ++at_;
        }
        return at_ > from;
    }
    void requireBlanks() {
        if (!skipBlanks()) {
            fail("a blank is missing");
        }
    }

    /// Moves over one character beyond ASCII, which must be legal.
    void wideCharacter() {
        const Character character = decodeUtf8(text_.substr(at_, 4));
        if (!character.valid || !isXmlCharacter(character.code)) {
            fail("not a character in utf-8");
        }
        at_ += character.length;
    }

    /// Moves over characters up to one of `stops`, which are markup and of which one must come.
    void charactersUpTo(std::string_view stops) {
        for (;; ++at_) {
            while ((classOf(at_) & (Illegal | BeyondAscii | Markup)) == 0) {
                ++at_;
            }
            const std::uint8_t known = classOf(at_);
            if (known == Illegal) {
                fail(atEnd() ? "the document ends here" : "a control character");
            } else if (known == BeyondAscii) {
                wideCharacter();
                --at_;
            } else if (std::find(stops.begin(), stops.end(), text_[at_]) != stops.end()) {
                return;
            }
        }
    }

    /// Moves over characters and over `end`.
    void charactersThrough(std::string_view end) {
        while (!skip(end)) {
            charactersUpTo(end.substr(0, 1));
            if (!startsWith(end)) {
                ++at_;
            }
        }
    }

    std::string_view name() {
        const std::size_t from = at_;
        if ((classOf(at_) & NameStart) != 0) {
            while ((classOf(at_) & (NameStart | NameOnly)) != 0) {
                ++at_;
            }
        }
        if (classOf(at_) == BeyondAscii) {
            fail("a name beyond ASCII, which no document of CIM has, is not supported");
        }
        if (at_ == from) {
            fail("a name is missing");
        }
        return text_.substr(from, at_ - from);
    }

    std::string_view quoted() {
        const char mark = peek();
        if (mark != '"' && mark != '\'') {
            fail("a quotation mark is missing");
        }
        const std::size_t from = ++at_;
        charactersUpTo(std::string_view(&mark, 1));
        return text_.substr(from, at_++ - from);
    }

    void declaration() {
        at_ += 5;
        requireBlanks();
        require("version");
        equals();
        const std::string_view version = quoted();
        if (version.size() < 3 || version.substr(0, 2) != "1." ||
            version.find_first_not_of("0123456789", 2) != std::string_view::npos) {
            fail("version " + quote(version) + " is not supported");
        }
        bool blanks = skipBlanks();
        if (blanks && skip("encoding")) {
            equals();
            const std::string_view encoding = quoted();
            if (!equalsIgnoringCase(encoding, "utf-8") && !equalsIgnoringCase(encoding, "us-ascii")) {
                fail("encoding " + quote(encoding) + " is not supported, only utf-8");
            }
            blanks = skipBlanks();
        }
        if (blanks && skip("standalone")) {
            equals();
            const std::string_view standalone = quoted();
            if (standalone != "yes" && standalone != "no") {
                fail("standalone is yes or no");
            }
            skipBlanks();
        }
        require("?>");
    }

    void equals() {
        skipBlanks();
        require('=');
        skipBlanks();
    }

    void doctype() {
        at_ += 9;
        requireBlanks();
        name();
        const bool blanks = skipBlanks();
        if (blanks && skip("PUBLIC")) {
            requireBlanks();
            publicIdentifier();
            requireBlanks();
            quoted();
        } else if (blanks && skip("SYSTEM")) {
            requireBlanks();
            quoted();
        }
        skipBlanks();
        if (peek() == '[') {
            fail("a document type with declarations is not supported");
        }
        require('>');
    }

    void publicIdentifier() {
        const std::size_t from = at_;
        for (const char c : quoted()) {
            const auto known = kClasses[static_cast<unsigned char>(c)];
            const bool plain = (known & (NameStart | NameOnly)) != 0;
            if (!plain && c != ' ' && c != '\r' && c != '\n' &&
                std::string_view("'()+,/=?;!*#@$%").find(c) == std::string_view::npos) {
                failAt(from, "a public identifier with a character that is not allowed there");
            }
        }
    }

    /// Moves over blanks, comments and processing instructions; false at the end of the text.
    bool miscellany() {
        for (;;) {
            skipBlanks();
            if (!commentOrInstruction()) {
                return !atEnd();
            }
        }
    }

    bool commentOrInstruction() {
        if (skip("<!--")) {
            charactersThrough("--");
            require('>');
            return true;
        }
        if (!skip("<?")) {
            return false;
        }
        const std::size_t from = at_;
        if (equalsIgnoringCase(name(), "xml")) {
            failAt(from, "an XML declaration is only allowed at the beginning");
        }
        if (!startsWith("?>")) {
            requireBlanks();
        }
        charactersThrough("?>");
        return true;
    }

    void rootElement() {
        if (peek() != '<') {
            fail("an element is missing");
        }
        startTag();
        while (!open_.empty()) {
            content();
        }
    }

    /// Moves over character data and what ends it.
    void content() {
        charactersUpTo("<&]");
        const char next = text_[at_];
        if (next == '<' && (classOf(at_ + 1) & NameStart) != 0) {
            startTag();
            return;
        }
        if (next == '&') {
            reference();
        } else if (next == ']') {
            if (startsWith("]]>")) {
                fail("\"]]>\" is not allowed here");
            }
            ++at_;
        } else if (text_.substr(at_ + 1, 1) == "/") {
            endTag();
        } else if (skip("<![CDATA[")) {
            charactersThrough("]]>");
        } else if (!commentOrInstruction()) {
            startTag();
        }
    }

    void startTag() {
        ++at_;
        const std::string_view element = name();
        attributes_.clear();
        bool blanks = skipBlanks();
        while (peek() != '>' && peek() != '/') {
            if (!blanks) {
                fail("a blank is missing");
            }
            attribute(element);
            blanks = skipBlanks();
        }
        if (++elements_ > limits_.elements) {
            fail("more than " + std::to_string(limits_.elements) + " elements");
        }
        if (open_.size() >= limits_.depth) {
            fail("elements are nested more than " + std::to_string(limits_.depth) + " deep");
        }
        if (!skip("/>")) {
            require('>');
            open_.push_back(element);
        }
    }

    void attribute(std::string_view element) {
        const std::size_t from = at_;
        const std::string_view attributeName = name();
        if (std::find(attributes_.begin(), attributes_.end(), attributeName) != attributes_.end()) {
            failAt(from, "attribute " + quote(attributeName) + " occurs twice");
        }
        if (attributes_.size() >= limits_.attributes) {
            fail("more than " + std::to_string(limits_.attributes) + " attributes in " + quote(element));
        }
        attributes_.push_back(attributeName);
        equals();
        const char mark = peek();
        if (mark != '"' && mark != '\'') {
            fail("a quotation mark is missing");
        }
        const char stops[] = {mark, '<', '&'};
        for (++at_;;) {
            charactersUpTo(std::string_view(stops, sizeof stops));
            if (text_[at_] == '<') {
                fail("\"<\" is not allowed in an attribute");
            }
            if (text_[at_] == mark) {
                ++at_;
                return;
            }
            reference();
        }
    }

    void endTag() {
        const std::size_t from = at_;
        at_ += 2;
        if (!skip(open_.back()) || (classOf(at_) & (NameStart | NameOnly | BeyondAscii)) != 0) {
            at_ = from + 2;
            name(); // for its own complaints
            failAt(from, "the end of " + quote(open_.back()) + " is missing");
        }
        skipBlanks();
        require('>');
        open_.pop_back();
    }

    void reference() {
        constexpr std::string_view kPredefined[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
        if (std::any_of(std::begin(kPredefined), std::end(kPredefined), [this](auto known) { return skip(known); })) {
            return;
        }
        const std::size_t from = at_;
        if (!skip("&#")) {
            fail("an entity that is not defined");
        }
        const bool hexadecimal = skip("x");
        char32_t code = 0;
        std::size_t digits = 0;
        for (; !atEnd() && text_[at_] != ';' && code <= 0x10FFFF; ++at_, ++digits) {
            code = code * (hexadecimal ? 16 : 10) + digit(text_[at_], hexadecimal);
        }
        require(';');
        if (digits == 0 || !isXmlCharacter(code)) {
            failAt(from, "a reference to no character");
        }
    }

    char32_t digit(char c, bool hexadecimal) const {
        if (c >= '0' && c <= '9') {
            return static_cast<char32_t>(c - '0');
        }
        const char lower = static_cast<char>(c | 0x20);
        if (!hexadecimal || lower < 'a' || lower > 'f') {
            fail("not a digit");
        }
        return static_cast<char32_t>(lower - 'a' + 10);
    }

    const std::string_view text_;
    const XmlLimits& limits_;
    std::size_t at_ = 0;
    std::size_t elements_ = 0;
    using Names = boost::container::small_vector<std::string_view, 16>;
    Names open_;       ///< of the elements that the position is in
    Names attributes_; ///< of the present start tag
};

} // namespace

void requireWellFormed(std::string_view text, const XmlLimits& limits) {
    Scanner(text, limits).run();
}

} // namespace cimserver::cimxml
