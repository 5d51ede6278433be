#include "cimserver/cimxml/XmlWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/common/Memory.hpp"
#include "cimserver/common/Utf8.hpp"

#include <algorithm>
#include <array>

namespace cimserver::cimxml {
namespace {

/// Whether a byte needs no check: printable ASCII without the characters of markup.
constexpr std::array<bool, 256> makePlain() {
    std::array<bool, 256> plain{};
    for (std::size_t c = 0x20; c < 0x7F; ++c) {
        plain[c] = c != '&' && c != '<' && c != '>' && c != '"';
    }
    return plain;
}

constexpr std::array<bool, 256> kPlain = makePlain();

/// The reference for a character; empty when it needs none.
std::string_view reference(char c, bool attribute) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\r':
        return "&#13;";
    case '\n':
        return attribute ? "&#10;" : "";
    case '\t':
        return attribute ? "&#9;" : "";
    default:
        return "";
    }
}

constexpr std::size_t kUnaccounted = 65536;
constexpr std::size_t kMargin = 4096; // for what is written between two elements

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

} // namespace

void XmlWriter::endTag() {
    if (tagOpen_) {
        text_ += '>';
        tagOpen_ = false;
    }
}

/// Lets a long text grow only by what the account has, with old and new copy counted.
void XmlWriter::account(std::size_t more) {
    const auto size = text_.size() + more;
    const bool fits = size + kMargin < text_.capacity() && text_.capacity() <= accounted_;
    if (memory_ == nullptr || size < kUnaccounted || fits) {
        return;
    }
    const auto wanted = 2 * std::max(size, text_.capacity());
    if (!memory_->grow(wanted)) {
        throw CimError(Status::ServerLimitsExceeded, "the answer is too long");
    }
    text_.reserve(wanted);
    memory_->shrink(accounted_);
    accounted_ = wanted;
}

void XmlWriter::open(std::string_view name) {
    account(name.size());
    endTag();
    text_ += '<';
    text_ += name;
    tagOpen_ = true;
}

void XmlWriter::close(std::string_view name) {
    endTag();
    text_ += "</";
    text_ += name;
    text_ += '>';
}

void XmlWriter::attribute(std::string_view name, std::string_view value) {
    text_ += ' ';
    text_ += name;
    text_ += "=\"";
    escape(value, true);
    text_ += '"';
}

void XmlWriter::characters(std::string_view data) {
    endTag();
    escape(data, false);
}

void XmlWriter::raw(std::string_view markup) {
    account(markup.size());
    endTag();
    text_ += markup;
}

void XmlWriter::escape(std::string_view data, bool attribute) {
    while (!data.empty()) {
        std::size_t length = 0;
        while (length < data.size() && kPlain[static_cast<unsigned char>(data[length])]) {
            ++length;
        }
        text_.append(data.data(), length);
        data.remove_prefix(length);
        if (!data.empty()) {
            escapeOne(data, length, attribute);
            data.remove_prefix(length);
        }
    }
}

void XmlWriter::escapeOne(std::string_view rest, std::size_t& length, bool attribute) {
    length = 1;
    if (const std::string_view known = reference(rest.front(), attribute); !known.empty()) {
        text_ += known;
        return;
    }
    const Character character = decodeUtf8(rest);
    length = character.length;
    if (character.valid && isXmlCharacter(character.code)) {
        text_.append(rest.data(), length);
    } else {
        text_ += kReplacement;
        ++replaced_;
    }
}

} // namespace cimserver::cimxml
