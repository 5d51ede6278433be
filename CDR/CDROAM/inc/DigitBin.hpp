// The digit bins' tables in the registry: one entry of raw bytes that holds every row of the table.
//
// A digit position is one byte with the digit's value 0 to 9; 12 marks an empty position. A row's digits are
// left-aligned:
//
//   prefix bins, "PREFIX BIN", 64 bytes: 8 rows of 8 digit positions
//   access bins, "ACCESS BIN", 30 bytes: 5 rows of 5 digit positions and a suppress count 0 to 16
#pragma once

#include "DiagnosticLog.hpp"
#include "ManagedObject.hpp"
#include "Registry.hpp"

#include <algorithm>
#include <cstring>

namespace cdroam {

/// A byte at a digit position that holds no digit.
constexpr unsigned char kNoDigit = 12;

/// A copy of the whole entry, read afresh for each request. `digits` of each row's `width` bytes are digit positions.
template <std::size_t rows, std::size_t width, std::size_t digits>
class BinTable {
  public:
    static constexpr int kDigits = static_cast<int>(digits);

    explicit BinTable(Entry entry) : entry_(entry) { clear(); }

    /// Every digit position empty, every count 0.
    void clear() {
        for (std::size_t row = 0; row < rows; ++row) {
            std::fill_n(bytes_.begin() + row * width, digits, kNoDigit);
            std::fill_n(bytes_.begin() + row * width + digits, width - digits, static_cast<unsigned char>(0));
        }
    }

    std::uint32_t read() { return readBytes(entry_, bytes_.data(), static_cast<std::uint32_t>(bytes_.size())); }
    std::uint32_t write() const { return writeBytes(entry_, bytes_.data(), static_cast<std::uint32_t>(bytes_.size())); }

    /// A row's bytes; `row` is below `rows`.
    unsigned char* row(int row) { return &bytes_.at(static_cast<std::size_t>(row) * width); }

  private:
    Entry entry_;
    std::array<unsigned char, rows * width> bytes_{};
};

/// Reads the table for a getter. A failure is logged under the accessor's name, makes the value the one-character text
/// of code zero and gives 100.
template <class Table>
int readBins(const char* accessor, Table& table, std::string& value) {
    const std::uint32_t status = table.read();
    if (status == 0) {
        return Success;
    }
    (void)writeError(accessor, status);
    value.assign(1, '\0');
    return ReadFailed;
}

/// Reads the table for a setter. After a failed read, which is not logged, every row is empty: the set rebuilds the
/// entry. That is deliberate.
template <class Table>
void reloadBins(Table& table) {
    if (table.read() != 0) {
        table.clear();
    }
}

/// Writes the table back; a failure is logged under the accessor's name and gives 101.
template <class Table>
int writeBins(const char* accessor, const Table& table) {
    const std::uint32_t status = table.write();
    if (status == 0) {
        return Success;
    }
    (void)writeError(accessor, status);
    return WriteFailed;
}

/// Logs why a value was refused; gives 301.
inline int refuseBin(const char* reason) {
    (void)addLogEntry(LogError, reason);
    return ValueRefused;
}

/// A row's bytes as the encoding operations take them.
template <class Table>
char* rowText(Table& table, int row) {
    return reinterpret_cast<char*>(table.row(row));
}

/// A setter of a row's digits, over the encoding operations of the row's class.
template <class Row, class Table>
int setDigits(const char* accessor, Row& object, Table& table, int row, std::string& value) {
    reloadBins(table);
    if (object.CheckAllDigits(value.data(), Table::kDigits) == 0) {
        return refuseBin("CheckAllDigits error");
    }
    (void)object.SetBinDigit(rowText(table, row), value.c_str(), Table::kDigits);
    return writeBins(accessor, table);
}

/// A decoded row: the text lives in a buffer of its class.
using DigitText = std::array<char, 20>;

/// Decodes up to `length` digit positions into `text` and returns it. A byte of 12 or more ends it; 10 and 11 show as
/// the characters after '9'.
const char* decodeDigits(const char* row, int length, DigitText& text);

/// Fills `length` digit positions of the row with the text's digits; the first character that is none ends it. Returns
/// the length of the text.
int encodeDigits(char* row, const char* text, int length);

/// Tells with 1 or 0 whether the text's first `maximum` characters are all decimal digits. A longer text is cut there,
/// in place: the caller's text must be writable.
int allDigits(char* text, int maximum);

/// Converts a text of decimal digits and keeps the number's low 8 bits. Returns -1 and leaves the destination alone
/// when the text is none or the byte is below `lowest` or above `highest`, else 0.
int assignDigits(char* text, unsigned char lowest, unsigned char highest, unsigned char* destination);

} // namespace cdroam
