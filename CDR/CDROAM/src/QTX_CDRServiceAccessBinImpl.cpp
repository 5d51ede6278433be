#include "QTX_CDRServiceAccessBinImpl.hpp"

using namespace cdroam;

namespace {

constexpr unsigned char kMostSuppressed = 16;

} // namespace

QTX_CDRServiceAccessBinImpl::QTX_CDRServiceAccessBinImpl(const std::string& key, int row)
    : DigitBin(key, {kServiceSection, "ACCESS BIN"}, row) {}

int QTX_CDRServiceAccessBinImpl::getAccessBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    return getDigits("getAccessBin", value);
}

int QTX_CDRServiceAccessBinImpl::setAccessBin(std::string value) {
    return setDigits("setAccessBin", value);
}

int QTX_CDRServiceAccessBinImpl::getSuppressBin(std::string& value, QualifierArray& /*qualifiers*/) const {
    Bytes row{};
    const int status = readRow("getSuppressBin", row, value);
    if (status == Success) {
        value = std::to_string(row.at(kDigits));
    }
    return status;
}

int QTX_CDRServiceAccessBinImpl::setSuppressBin(std::string value) {
    unsigned char count = 0;
    if (AssignDigits(value.data(), 0, kMostSuppressed, &count) != 0) {
        return refuse("AssignDigits error");
    }
    return writeRow("setSuppressBin", {offset() + kDigits, 1, {count}});
}

int QTX_CDRServiceAccessBinImpl::AssignDigits(void* text, unsigned char lowest, unsigned char highest,
                                              unsigned char* destination) {
    return assignDigits(static_cast<char*>(text), lowest, highest, destination);
}
