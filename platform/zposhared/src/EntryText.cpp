#include "EntryText.hpp"

#include "Characters.hpp"
#include "StatusText.hpp"
#include "ZpoShared.h"

#include <charconv>
#include <fmt/format.h>
#include <set>

namespace zpo {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

bool needsQuotes(char c) {
    return isControl(c) || c == ' ' || c == '"' || c == '\\' || c == '#';
}

int hexDigit(char c) {
    int value = -1;
    std::from_chars(&c, &c + 1, value, 16);
    return value;
}

// Takes words off the front of one line.
class LineReader {
  public:
    explicit LineReader(std::string_view line) : rest_(line) { skipBlanks(); }

    bool isAtEnd() const { return rest_.empty(); }
    std::string_view rest() const { return rest_; }

    // False when there is no word or its quoting is broken.
    bool word(std::string& result) {
        result.clear();
        if (rest_.empty()) {
            return false;
        }
        const bool ok = rest_.front() == '"' ? quoted(result) : plain(result);
        const bool apart = rest_.empty() || isBlank(rest_.front());
        skipBlanks();
        return ok && apart;
    }

  private:
    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }

    char take() {
        const char c = rest_.empty() ? '\0' : rest_.front();
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        return c;
    }

    bool plain(std::string& result) {
        while (!rest_.empty() && !isBlank(rest_.front())) {
            if (needsQuotes(rest_.front())) {
                return false;
            }
            result.push_back(take());
        }
        return true;
    }

    bool quoted(std::string& result) {
        take();
        while (!rest_.empty()) {
            const char c = take();
            if (c == '"') {
                return true;
            }
            if (c != '\\') {
                result.push_back(c);
            } else if (!escape(result)) {
                return false;
            }
        }
        return false;
    }

    bool escape(std::string& result) {
        const char c = take();
        if (c == 'x') {
            const int high = hexDigit(take());
            const int low = hexDigit(take());
            result.push_back(static_cast<char>(high * 16 + low));
            return high >= 0 && low >= 0;
        }
        result.push_back(c == 'n' ? '\n' : c == 't' ? '\t' : c);
        return c == 'n' || c == 't' || c == '"' || c == '\\';
    }

    std::string_view rest_;
};

std::string formatWord(std::string_view word) {
    std::string result;
    bool plain = !word.empty();
    for (const char c : word) {
        plain = plain && !needsQuotes(c);
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (isControl(c)) {
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            result.push_back(c);
        }
    }
    return plain ? result : '"' + result + '"';
}

const char* parseTextValue(LineReader& line, Entry& entry) {
    entry.kind = EntryKind::Text;
    if (!line.word(entry.bytes)) {
        return "the text is missing or its quoting is broken";
    }
    return line.isAtEnd() ? nullptr : "something follows the text; a text with blanks stands in double quotes";
}

const char* parseValue(LineReader& line, Entry& entry) {
    std::string kind;
    if (!line.word(kind)) {
        return "the kind is missing (binary, text or int)";
    }
    if (kind == "text") {
        return parseTextValue(line, entry);
    }
    if (kind == "binary") {
        entry.kind = EntryKind::Binary;
        return parseBinary(line.rest(), entry.bytes) ? nullptr : "the value is not pairs of hexadecimal digits";
    }
    if (kind == "int") {
        entry.kind = EntryKind::Integer;
        return parseInteger(line.rest(), entry.bytes) ? nullptr : "the value is not a 32-bit number";
    }
    return "the kind is not binary, text or int";
}

// Returns what is wrong with the line, or an empty text.
std::string parseLine(std::string_view text, Entry& entry) {
    LineReader line(text);
    if (!line.word(entry.component) || !line.word(entry.section) || !line.word(entry.key)) {
        return "component, section or key is missing or its quoting is broken";
    }
    if (const char* problem = parseValue(line, entry)) {
        return problem;
    }
    const bool hasNul = (entry.component + entry.section + entry.key).find('\0') != std::string::npos;
    EntryName name;
    std::uint32_t status = name.assign(entry.component.c_str(), entry.section.c_str(), entry.key.c_str());
    if (status == ZPO_OK) {
        status = hasNul ? ZPO_REG_BAD_NAME : checkValue(entry.kind, entry.bytes);
    }
    return status == ZPO_OK ? std::string() : statusText(status);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

} // namespace

std::string formatBinary(std::string_view bytes) {
    std::string result;
    for (const char c : bytes) {
        result += fmt::format("{}{:02x}", result.empty() ? "" : " ", static_cast<unsigned char>(c));
    }
    return result;
}

bool parseBinary(std::string_view text, std::string& bytes) {
    bytes.clear();
    text = trimmed(text);
    while (!text.empty()) {
        if (isBlank(text.front())) {
            text.remove_prefix(1);
            continue;
        }
        const int high = hexDigit(text.front());
        const int low = text.size() > 1 ? hexDigit(text[1]) : -1;
        if (high < 0 || low < 0) {
            return false;
        }
        bytes.push_back(static_cast<char>(high * 16 + low));
        text.remove_prefix(2);
    }
    return !bytes.empty();
}

bool parseInteger(std::string_view text, std::string& bytes) {
    text = trimmed(text);
    const bool isHex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    text.remove_prefix(isHex ? 2 : 0);
    std::uint32_t value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value, isHex ? 16 : 10);
    bytes = encodeInteger(value);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
}

std::string formatEntryText(const Entry& entry) {
    const std::string name =
        formatWord(entry.component) + ' ' + formatWord(entry.section) + ' ' + formatWord(entry.key);
    switch (entry.kind) {
    case EntryKind::Binary:
        return name + " binary " + formatBinary(entry.bytes);
    case EntryKind::Integer:
        return name + " int " + std::to_string(entry.integer());
    case EntryKind::Text:
        break;
    }
    return name + " text " + formatWord(entry.bytes);
}

bool parseEntries(std::string_view text, std::vector<Entry>& entries, std::string& error) {
    std::set<std::string> names;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const LineReader start(line);
        if (start.isAtEnd() || start.rest().front() == '#') {
            continue;
        }
        Entry entry;
        error = parseLine(line, entry);
        if (error.empty() && !names.insert(entry.component + '\0' + entry.section + '\0' + entry.key).second) {
            error = "the entry occurs twice";
        }
        if (!error.empty()) {
            error = fmt::format("line {}: {}", number, error);
            return false;
        }
        entries.push_back(std::move(entry));
    }
    return true;
}

} // namespace zpo
