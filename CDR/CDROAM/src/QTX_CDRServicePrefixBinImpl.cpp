#include "QTX_CDRServicePrefixBinImpl.hpp"

QTX_CDRServicePrefixBinImpl::QTX_CDRServicePrefixBinImpl(const std::string& key, int row)
    : DigitBin(key, {cdroam::kServiceSection, "PREFIX BIN"}, row) {}

int QTX_CDRServicePrefixBinImpl::getPrefixBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    return getDigits("getPrefixBin", value);
}

int QTX_CDRServicePrefixBinImpl::setPrefixBin(std::string value) {
    return setDigits("setPrefixBin", value);
}
