// A row of the access/suppress bins in the configuration registry.
#pragma once

#include "DigitBin.hpp"
#include "QTX_CDRServiceAccessBin.hpp"

class QTX_CDRServiceAccessBinImpl : public cdroam::DigitBin<QTX_CDRServiceAccessBin, 5, 6, 5> {
  public:
    static constexpr int MAX_ACCESS_BIN_ENTRIES_VALUE = 5;

    /// `row` is 0 to 4.
    QTX_CDRServiceAccessBinImpl(const std::string& key, int row);

    int getAccessBin(std::string& value, QualifierArray& qualifiers) const override;
    int setAccessBin(std::string value) override;
    int getSuppressBin(std::string& value, QualifierArray& qualifiers) const override;
    int setSuppressBin(std::string value) override;

    int AssignDigits(void* text, unsigned char lowest, unsigned char highest, unsigned char* destination);
};
