#include "cimserver/cimxml/XmlWriter.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimxml/Characters.hpp"
#include "cimserver/common/Memory.hpp"
#include "cimserver/common/Utf8.hpp"

#include <algorithm>
#include <array>
#include <utility>

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

constexpr std::size_t kMargin = 4096; // for what is written between two elements

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

} // namespace

std::string XmlWriter::take() {
    flush();
    return std::move(text_);
}

void XmlWriter::inPieces(Part part) {
    while (part(*this)) {
        if (text_.size() >= kPiece) {
            flush();
            rest_ = std::move(part);
            restAt_ = text_.size();
            return;
        }
    }
}

std::function<std::string()> XmlWriter::takeRest() {
    if (!rest_) {
        return nullptr;
    }
    flush();
    std::string after = text_.substr(restAt_);
    text_.resize(restAt_);
    return [part = std::exchange(rest_, nullptr), after = std::move(after)]() mutable {
        XmlWriter writer;
        if (part) {
            writer.inPieces(std::exchange(part, nullptr));
            part = std::move(writer.rest_);
        }
        return part ? writer.take() : writer.take() + std::exchange(after, "");
    };
}

void XmlWriter::flush() {
    text_.append(block_.data(), used_);
    used_ = 0;
}

/// Puts what may not fit into the block.
void XmlWriter::putThrough(std::string_view part) {
    flush();
    if (part.size() > block_.size()) {
        text_ += part;
    } else {
        put(part);
    }
}

/// Lets a long text grow only by what the account has, with old and new copy counted.
void XmlWriter::accountLong(std::size_t more) {
    const auto size = text_.size() + used_ + more;
    if (size + kMargin < text_.capacity() && text_.capacity() <= accounted_) {
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

void XmlWriter::characters(std::string_view data) {
    endTag();
    escape(data, false);
}

void XmlWriter::raw(std::string_view markup) {
    account(markup.size());
    endTag();
    put(markup);
}

void XmlWriter::escape(std::string_view data, bool attribute) {
    const auto isSpecial = [](char c) { return !kPlain[static_cast<unsigned char>(c)]; };
    for (;;) {
        const auto special = std::find_if(data.begin(), data.end(), isSpecial);
        auto length = static_cast<std::size_t>(special - data.begin());
        put(data.substr(0, length));
        data.remove_prefix(length);
        if (data.empty()) {
            return;
        }
        escapeOne(data, length, attribute);
        data.remove_prefix(length);
    }
}

void XmlWriter::escapeOne(std::string_view rest, std::size_t& length, bool attribute) {
    length = 1;
    if (const std::string_view known = reference(rest.front(), attribute); !known.empty()) {
        put(known);
        return;
    }
    const Character character = decodeUtf8(rest);
    length = character.length;
    if (character.valid && isXmlCharacter(character.code)) {
        put(rest.substr(0, length));
    } else {
        put(kReplacement);
        ++replaced_;
    }
}

} // namespace cimserver::cimxml
