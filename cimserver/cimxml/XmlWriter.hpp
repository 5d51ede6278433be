// Writes XML into a string: elements are closed by scope, texts are escaped, characters that a client's parser would
// refuse are replaced.
#pragma once

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace cimserver {
class MemoryAccount;
}

namespace cimserver::cimxml {

/// The text written so far and how many characters had to be replaced in it.
class XmlWriter {
  public:
    /// With an account, open(), element() and raw() throw CimError ServerLimitsExceeded when a long text gets too long
    /// for it.
    explicit XmlWriter(MemoryAccount* memory = nullptr) : memory_(memory) {}

    /// The text; the writer is empty afterwards.
    std::string take();

    /// Writes a part of the text, and returns false when it was the last.
    using Part = std::function<bool(XmlWriter&)>;
    /// Writes part after part. Once kPiece bytes are there, the parts that are left are kept for takeRest(). Once only
    /// for a writer.
    void inPieces(Part part);
    /// What inPieces() kept, with all that was written after it: each call returns the next piece, an empty one is the
    /// end. Null when nothing was kept. To be called before take(), which then returns what comes before them.
    std::function<std::string()> takeRest();

    /// Opens an element; the caller closes it (or lets an Element do both).
    void open(std::string_view name) {
        account(name.size());
        endTag();
        put("<", name);
        tagOpen_ = true;
    }
    /// Always writes an end tag: some clients do not accept the short form of an empty element.
    void close(std::string_view name) {
        endTag();
        put("</", name, ">");
    }
    /// Only right after open. CR, newline and tab become references, because a parser would turn them into blanks.
    void attribute(std::string_view name, std::string_view value) {
        put(" ", name, "=\"");
        escape(value, true);
        put("\"");
    }
    /// The same for a value that needs no reference, such as an identifier.
    void plainAttribute(std::string_view name, std::string_view value) { put(" ", name, "=\"", value, "\""); }
    /// An element without attributes that holds nothing but character data.
    void element(std::string_view name, std::string_view data) {
        account(name.size());
        endTag();
        put("<", name, ">");
        escape(data, false);
        put("</", name, ">");
    }
    /// Character data: & < > " and CR become references; invalid UTF-8 and characters that XML does not allow become
    /// U+FFFD.
    void characters(std::string_view data);
    /// Appends markup unchanged.
    void raw(std::string_view markup);

    /// Characters replaced since the writer was made.
    std::size_t replaced() const { return replaced_; }

  private:
    /// Puts the parts one after the other.
    template <class... Parts>
    void put(const Parts&... parts) {
        if ((std::string_view(parts).size() + ...) > block_.size() - used_) {
            (putThrough(parts), ...);
            return;
        }
        char* end = block_.data() + used_;
        ((end = copied(parts, end)), ...);
        used_ = static_cast<std::size_t>(end - block_.data());
    }
    static char* copied(std::string_view part, char* to) {
        std::memcpy(to, part.data(), part.size());
        return to + part.size();
    }
    void putThrough(std::string_view part);
    void flush();
    void endTag() {
        if (tagOpen_) {
            put(">");
            tagOpen_ = false;
        }
    }
    void account(std::size_t more) {
        if (memory_ != nullptr && text_.size() + used_ + more >= kUnaccounted) {
            accountLong(more);
        }
    }
    void accountLong(std::size_t more);
    void escape(std::string_view data, bool attribute);
    void escapeOne(std::string_view rest, std::size_t& length, bool attribute);

    static constexpr std::size_t kUnaccounted = 65536;
    static constexpr std::size_t kPiece = 262144;

    MemoryAccount* memory_;
    std::size_t accounted_ = 0;
    std::string text_;
    std::array<char, 4096> block_; ///< what comes after the text: most answers are not longer
    std::size_t used_ = 0;         ///< bytes of the block
    std::size_t replaced_ = 0;
    bool tagOpen_ = false;
    Part rest_;
    std::size_t restAt_ = 0; ///< where it belongs
};

/// An element that is open while the object lives.
class Element {
  public:
    Element(XmlWriter& writer, std::string_view name) : writer_(writer), name_(name) { writer_.open(name_); }
    ~Element() { writer_.close(name_); }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    Element& attribute(std::string_view name, std::string_view value) {
        writer_.attribute(name, value);
        return *this;
    }
    /// Written only when `condition` holds.
    Element& attributeIf(bool condition, std::string_view name, std::string_view value) {
        return condition ? attribute(name, value) : *this;
    }
    Element& plainAttribute(std::string_view name, std::string_view value) {
        writer_.plainAttribute(name, value);
        return *this;
    }
    Element& text(std::string_view data) {
        writer_.characters(data);
        return *this;
    }

  private:
    XmlWriter& writer_;
    std::string_view name_;
};

} // namespace cimserver::cimxml
