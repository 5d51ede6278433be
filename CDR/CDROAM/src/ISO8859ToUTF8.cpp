#include "ISO8859ToUTF8.hpp"

namespace OpenWBEM {
namespace UTF8Utils {

void ISO8859ToUTF8(const char* source, char* destination, std::size_t capacity) {
    if (capacity == 0) {
        return;
    }
    std::size_t used = 0;
    for (; *source != '\0'; ++source) {
        const auto byte = static_cast<unsigned char>(*source);
        const std::size_t needed = byte < 0x80 ? 1 : 2;
        if (used + needed >= capacity) {
            break;
        }
        if (needed == 2) {
            destination[used++] = static_cast<char>(0xC0U | byte >> 6U);
            destination[used++] = static_cast<char>(0x80U | (byte & 0x3FU));
        } else {
            destination[used++] = *source;
        }
    }
    destination[used] = '\0';
}

} // namespace UTF8Utils
} // namespace OpenWBEM
