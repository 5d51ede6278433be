// A row of the prefix bins in the configuration registry.
#pragma once

#include "DigitBin.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

class QTX_CDRServicePrefixBinImpl : public cdroam::DigitBin<QTX_CDRServicePrefixBin, 8, 8, 8> {
  public:
    static constexpr int MAX_PREFIX_ENTRIES_VALUE = 8;

    /// `row` is 0 to 7.
    QTX_CDRServicePrefixBinImpl(const std::string& key, int row);

    int getPrefixBin(std::string& value, QualifierArray& qualifiers) const override;
    int setPrefixBin(std::string value) override;
};
