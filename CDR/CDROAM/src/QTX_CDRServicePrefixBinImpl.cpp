#include "QTX_CDRServicePrefixBinImpl.hpp"

using namespace cdroam;

namespace {

DigitText binDigits;

} // namespace

QTX_CDRServicePrefixBinImpl::QTX_CDRServicePrefixBinImpl(const std::string& key, int row)
    : QTX_CDRServicePrefixBin(key), row_(row), table_({kServiceSection, "PREFIX BIN"}) {}

const char* QTX_CDRServicePrefixBinImpl::GetBinDigit(char* row, int length) const {
    return decodeDigits(row, length, binDigits);
}

int QTX_CDRServicePrefixBinImpl::SetBinDigit(char* row, const char* text, int length) {
    return encodeDigits(row, text, length);
}

int QTX_CDRServicePrefixBinImpl::CheckAllDigits(void* text, int maximum) {
    return allDigits(static_cast<char*>(text), maximum);
}

int QTX_CDRServicePrefixBinImpl::getPrefixBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    const int status = readBins("getPrefixBin", table_, value);
    if (status == Success) {
        value = GetBinDigit(rowText(table_, row_), table_.kDigits);
    }
    return status;
}

int QTX_CDRServicePrefixBinImpl::setPrefixBin(std::string value) {
    return setDigits("setPrefixBin", *this, table_, row_, value);
}
