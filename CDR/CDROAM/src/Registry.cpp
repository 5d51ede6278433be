#include "Registry.hpp"

#include "RequestLock.hpp"

#include "OW_UTF8Utils.hpp"
#ifdef CDR_SUPPLY_ISO8859_TO_UTF8
#include "ISO8859ToUTF8.hpp"
#endif

#include <atomic>
#include <cctype>
#include <cstring>

namespace {

constexpr const char* kComponent = "CDR";

// Status of the latest access, for a debugger; no code reads it.
std::atomic<std::uint32_t> ret{0};

std::uint32_t remembered(std::uint32_t status) {
    ret.store(status, std::memory_order_relaxed);
    return status;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The digit's value; a missing character, and one that is not a digit, counts as 0.
unsigned digitAt(const std::string& text, std::size_t position) {
    return position < text.size() && isDigit(text[position]) ? static_cast<unsigned>(text[position] - '0') : 0U;
}

} // namespace

int isControlCharacter(char* text) {
    if (text == nullptr || *text == '\0') {
        return -1;
    }
    for (; *text != '\0'; ++text) {
        if (std::iscntrl(static_cast<unsigned char>(*text)) != 0) {
            return -1;
        }
    }
    return 0;
}

namespace cdroam {

void Text::assign(const char* text) {
    const std::size_t length = strnlen(text, bytes_.size() - 1);
    std::memmove(bytes_.data(), text, length);
    bytes_[length] = '\0';
}

std::uint32_t readBytes(const Entry& entry, void* buffer, std::uint32_t length) {
    return remembered(ZpoGetRegEntryBinary(kComponent, entry.section, entry.key, buffer, length));
}

std::uint32_t writeBytes(const Entry& entry, const void* buffer, std::uint32_t length) {
    const WritePause pause;
    return remembered(ZpoSetRegEntryBinary(kComponent, entry.section, entry.key, buffer, length));
}

std::uint32_t readInteger(const Entry& entry, std::uint32_t& value) {
    return remembered(ZpoGetRegEntryInt(kComponent, entry.section, entry.key, &value));
}

std::uint32_t writeInteger(const Entry& entry, std::uint32_t value) {
    const WritePause pause;
    return remembered(ZpoSetRegEntryInt(kComponent, entry.section, entry.key, value));
}

std::uint32_t readText(const Entry& entry, Text& text) {
    std::array<char, kTextCapacity> stored{};
    const std::uint32_t status =
        remembered(ZpoGetRegEntryString(kComponent, entry.section, entry.key, stored.data(), stored.size()));
    stored.back() = '\0';
    if (status != 0) {
        stored.front() = '\0';
    }
    OpenWBEM::UTF8Utils::ISO8859ToUTF8(stored.data(), text.data(), kTextCapacity);
    return status;
}

std::uint32_t writeText(const Entry& entry, const char* text) {
    const WritePause pause;
    return remembered(ZpoSetRegEntryString(kComponent, entry.section, entry.key, text));
}

unsigned char storedTransferType(unsigned char unread) {
    unsigned char type = unread;
    return Byte::load(kTransferType, type) == 0 ? type : unread;
}

std::uint32_t Word::write(const Entry& entry, Cache& cache, unsigned short value) {
    Cache content{};
    setLiteral(content, value);
    return storeAndCache<Word>(entry, cache, content);
}

void Word::decode(const Cache& cache, unsigned short& value) {
    value = static_cast<unsigned short>(static_cast<unsigned>(cache[0]) << 8U | cache[1]);
}

void Word::setLiteral(Cache& cache, Literal literal) {
    cache = {static_cast<unsigned char>(literal >> 8U), static_cast<unsigned char>(literal & 0xFFU)};
}

std::uint32_t PackedDigits::write(const Entry& entry, Cache& cache, const std::string& value) {
    Cache content{};
    setLiteral(content, static_cast<Literal>(digitAt(value, 0) << 4U | digitAt(value, 1)));
    return storeAndCache<PackedDigits>(entry, cache, content);
}

void PackedDigits::decode(const Cache& cache, std::string& value) {
    value.assign({static_cast<char>('0' + (cache[1] >> 4U)), static_cast<char>('0' + (cache[1] & 0x0FU))});
}

std::uint32_t Latin1Text::write(const Entry& entry, Cache& cache, const std::string& value) {
    const std::uint32_t status = writeText(entry, value.c_str());
    if (status == 0) {
        cache.assign(value.c_str());
    }
    return status;
}

} // namespace cdroam
