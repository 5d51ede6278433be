// The digit bins' tables in the registry: one entry of raw bytes that holds every row of the table.
//
// A digit position is one byte with the digit's value 0 to 9; 12 marks an empty position. A row's digits are
// left-aligned:
//
//   prefix bins, "PREFIX BIN", 64 bytes: 8 rows of 8 digit positions
//   access bins, "ACCESS BIN", 30 bytes: 5 rows of 5 digit positions and a suppress count 0 to 16
#pragma once

#include "DiagnosticLog.hpp"
#include "GatheredChanges.hpp"
#include "ManagedObject.hpp"
#include "Registry.hpp"
#include "RequestLock.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace cdroam {

/// A byte at a digit position that holds no digit.
constexpr unsigned char kNoDigit = 12;

/// A decoded row: the text lives in a buffer of its class.
using DigitText = std::array<char, 20>;

/// Decodes up to `length` digit positions into `text` and returns it. Stops at a byte of 12 or more; 10 and 11 are not
/// checked and become the characters after '9'.
const char* decodeDigits(const char* row, int length, DigitText& text);

/// Fills `length` digit positions of the row with the text's digits; stops at the first non-digit and leaves the rest
/// empty. Returns the length of the text.
int encodeDigits(char* row, const char* text, int length);

/// Returns 1 when the text's first `maximum` characters are all decimal digits, else 0. A longer text is cut there, in
/// place: the caller's text must be writable.
int allDigits(char* text, int maximum);

/// Converts a text of decimal digits and stores the number's low 8 bits in `*destination`. Returns -1, with
/// `*destination` unchanged, when the text holds anything else or the byte is below `lowest` or above `highest`; else
/// 0.
int assignDigits(char* text, unsigned char lowest, unsigned char highest, unsigned char* destination);

/// A bin object over its row of the table. `Bin` is the managed class; the first `digits` of each row's `width` bytes
/// are digit positions. Each getter and setter reads the whole table; a setter then changes its own row and writes the
/// whole table back, together with the rows that other threads change at the same time. Getters return 0 or 100,
/// setters 0, 101 or 301, which are logged.
template <class Bin, std::size_t rows, std::size_t width, std::size_t digits>
class DigitBin : public Bin {
  public:
    /// `row` is below `rows`. The registry is not touched.
    DigitBin(const std::string& key, Entry entry, int row)
        : Bin(key), entry_(entry), offset_(static_cast<std::size_t>(row) * width) {}

    // The encoding of a row. GetBinDigit's text is valid until its next call on any object of the class.
    const char* GetBinDigit(char* row, int length) const { return decodeDigits(row, length, digitText); }
    int SetBinDigit(char* row, const char* text, int length) { return encodeDigits(row, text, length); }
    int CheckAllDigits(void* text, int maximum) { return allDigits(static_cast<char*>(text), maximum); }

  protected:
    static constexpr int kDigits = static_cast<int>(digits);
    using Bytes = std::array<unsigned char, width>;

    /// The getter of the row's digits.
    int getDigits(const char* accessor, std::string& value) const {
        Bytes row{};
        const int status = readRow(accessor, row, value);
        if (status == Success) {
            value = GetBinDigit(reinterpret_cast<char*>(row.data()), kDigits);
        }
        return status;
    }

    /// The setter of the row's digits.
    int setDigits(const char* accessor, std::string& value) {
        if (CheckAllDigits(value.data(), kDigits) == 0) {
            return refuse("CheckAllDigits error");
        }
        Bytes bytes{};
        (void)SetBinDigit(reinterpret_cast<char*>(bytes.data()), value.c_str(), kDigits);
        return writeRow(accessor, {offset_, digits, bytes});
    }

    /// Reads the row for a getter. A failure is logged under the accessor's name, sets the value to a single NUL and
    /// returns 100.
    int readRow(const char* accessor, Bytes& row, std::string& value) const {
        Table table{};
        const std::uint32_t status = readTable(entry_, table);
        if (status == 0) {
            std::copy_n(table.begin() + offset_, width, row.begin());
            return Success;
        }
        (void)writeError(accessor, status);
        value.assign(1, '\0');
        return ReadFailed;
    }

    /// The new content of a part of the table.
    struct Edit {
        std::size_t offset;
        std::size_t length;
        Bytes bytes;
    };

    /// Reads the table, changes a part of the row and writes the table back; a failure is logged under the accessor's
    /// name and returns 101.
    int writeRow(const char* accessor, const Edit& edit) const {
        const std::uint32_t status = writeGathered(edit);
        if (status == 0) {
            return Success;
        }
        (void)writeError(accessor, status);
        return WriteFailed;
    }

    /// Where the row begins in the table.
    std::size_t offset() const { return offset_; }

    /// Reads the table, as every change does, logs why the value was refused and returns 301.
    int refuse(const char* reason) const {
        Table table{};
        (void)readTable(entry_, table);
        (void)addLogEntry(LogError, reason);
        return ValueRefused;
    }

  private:
    using Table = std::array<unsigned char, rows * width>;

    static std::uint32_t readTable(const Entry& entry, Table& table) {
        return readBytes(entry, table.data(), static_cast<std::uint32_t>(table.size()));
    }

    std::uint32_t writeGathered(const Edit& edit) const {
        const WritePause pause;
        return changes.write(edit, [entry = entry_](const std::vector<Edit>& edits) {
            // A failed read is not logged and leaves every row empty, so that the setter creates the entry anew. That
            // is deliberate.
            Table table{};
            if (readTable(entry, table) != 0) {
                table = emptyTable();
            }
            for (const Edit& one : edits) {
                std::copy_n(one.bytes.begin(), one.length, table.begin() + one.offset);
            }
            return writeBytes(entry, table.data(), static_cast<std::uint32_t>(table.size()));
        });
    }

    /// Every digit position empty, every count 0.
    static Table emptyTable() {
        Table table{};
        for (std::size_t start = 0; start < table.size(); start += width) {
            std::fill_n(table.begin() + start, digits, kNoDigit);
        }
        return table;
    }

    inline static DigitText digitText;
    inline static GatheredChanges<Edit> changes;

    Entry entry_;
    std::size_t offset_;
};

} // namespace cdroam
