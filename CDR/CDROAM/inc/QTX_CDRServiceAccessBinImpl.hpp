// A row of the access/suppress bins in the configuration registry.
#pragma once

#include "DigitBin.hpp"
#include "QTX_CDRServiceAccessBin.hpp"

/// Each get and set reads the whole table; a set then changes its own row and writes the whole table back. Getters
/// return 0 or 100, setters 0, 101 or 301; failures are logged.
class QTX_CDRServiceAccessBinImpl : public QTX_CDRServiceAccessBin {
  public:
    static constexpr int MAX_ACCESS_BIN_ENTRIES_VALUE = 5;

    /// `row` is 0 to 4. The registry is not touched.
    QTX_CDRServiceAccessBinImpl(const std::string& key, int row);

    int getAccessBin(std::string& value, QualifierArray& qualifiers) const override;
    int setAccessBin(std::string value) override;
    int getSuppressBin(std::string& value, QualifierArray& qualifiers) const override;
    int setSuppressBin(std::string value) override;

    // The encoding of a row, as DigitBin.hpp tells. GetBinDigit's text lives until its next call on any object.
    const char* GetBinDigit(char* row, int length) const;
    int SetBinDigit(char* row, const char* text, int length);
    int CheckAllDigits(void* text, int maximum);
    int AssignDigits(void* text, unsigned char lowest, unsigned char highest, unsigned char* destination);

  private:
    /// Where the row's suppress count lies in the table.
    unsigned char* suppressCount() const;

    int row_;
    mutable cdroam::BinTable<MAX_ACCESS_BIN_ENTRIES_VALUE, 6, 5> table_;
};
