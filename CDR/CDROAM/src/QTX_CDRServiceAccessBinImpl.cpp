#include "QTX_CDRServiceAccessBinImpl.hpp"

using namespace cdroam;

namespace {

DigitText binDigits;
constexpr unsigned char kMostSuppressed = 16;

} // namespace

QTX_CDRServiceAccessBinImpl::QTX_CDRServiceAccessBinImpl(const std::string& key, int row)
    : QTX_CDRServiceAccessBin(key), row_(row), table_({kServiceSection, "ACCESS BIN"}) {}

const char* QTX_CDRServiceAccessBinImpl::GetBinDigit(char* row, int length) const {
    return decodeDigits(row, length, binDigits);
}

int QTX_CDRServiceAccessBinImpl::SetBinDigit(char* row, const char* text, int length) {
    return encodeDigits(row, text, length);
}

int QTX_CDRServiceAccessBinImpl::CheckAllDigits(void* text, int maximum) {
    return allDigits(static_cast<char*>(text), maximum);
}

int QTX_CDRServiceAccessBinImpl::getAccessBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    const int status = readBins("getAccessBin", table_, value);
    if (status == Success) {
        value = GetBinDigit(rowText(table_, row_), table_.kDigits);
    }
    return status;
}

int QTX_CDRServiceAccessBinImpl::setAccessBin(std::string value) {
    return setDigits("setAccessBin", *this, table_, row_, value);
}

int QTX_CDRServiceAccessBinImpl::AssignDigits(void* text, unsigned char lowest, unsigned char highest,
                                              unsigned char* destination) {
    return assignDigits(static_cast<char*>(text), lowest, highest, destination);
}

int QTX_CDRServiceAccessBinImpl::getSuppressBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    const int status = readBins("getSuppressBin", table_, value);
    if (status == Success) {
        value = std::to_string(*suppressCount());
    }
    return status;
}

int QTX_CDRServiceAccessBinImpl::setSuppressBin(std::string value) {
    reloadBins(table_);
    if (AssignDigits(value.data(), 0, kMostSuppressed, suppressCount()) != 0) {
        return refuseBin("AssignDigits error");
    }
    return writeBins("setSuppressBin", table_);
}

unsigned char* QTX_CDRServiceAccessBinImpl::suppressCount() const {
    return table_.row(row_) + table_.kDigits;
}
