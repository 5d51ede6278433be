// A row of the prefix bins in the configuration registry.
#pragma once

#include "DigitBin.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

/// Each get and set reads the whole table; a set then changes its own row and writes the whole table back. Getters
/// return 0 or 100, setters 0, 101 or 301; failures are logged.
class QTX_CDRServicePrefixBinImpl : public QTX_CDRServicePrefixBin {
  public:
    static constexpr int MAX_PREFIX_ENTRIES_VALUE = 8;

    /// `row` is 0 to 7. The registry is not touched.
    QTX_CDRServicePrefixBinImpl(const std::string& key, int row);

    int getPrefixBin(std::string& value, QualifierArray& qualifiers) const override;
    int setPrefixBin(std::string value) override;

    // The encoding of a row, as DigitBin.hpp tells. GetBinDigit's text lives until its next call on any object.
    const char* GetBinDigit(char* row, int length) const;
    int SetBinDigit(char* row, const char* text, int length);
    int CheckAllDigits(void* text, int maximum);

  private:
    int row_;
    mutable cdroam::BinTable<MAX_PREFIX_ENTRIES_VALUE, 8, 8> table_;
};
