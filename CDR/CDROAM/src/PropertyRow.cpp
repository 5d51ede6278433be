#include "PropertyRow.hpp"

using OpenWBEM::CIMException;
using OpenWBEM::CIMValue;
using OpenWBEM::String;

namespace cdroam {
namespace {

[[noreturn]] void throwInvalid(const char* source, const std::string& message) {
    throw CIMException(source, SourceLine::kSetter, CIMException::INVALID_PARAMETER, message.c_str());
}

} // namespace

void requireFit(const Check& check, const char* source, const char* name, const std::string& value) {
    if (check.kind == Check::MaxLength && value.size() > check.highest) {
        // The doubled words are deliberate: clients know the message like this.
        throwInvalid(source, std::string(name) + " length must be must be <= " + std::to_string(check.highest));
    }
}

void requireFit(const Check& check, const char* source, const char* name, unsigned int value) {
    if (check.kind != Check::Range) {
        return;
    }
    if (value > check.highest) {
        throwInvalid(source, std::string(name) + " must be <= " + std::to_string(check.highest));
    }
    if (value < check.lowest) {
        throwInvalid(source, std::string(name) + " must be >= " + std::to_string(check.lowest));
    }
}

CIMValue toCIMValue(unsigned char value) {
    return CIMValue(OpenWBEM::UInt8(value));
}

CIMValue toCIMValue(unsigned short value) {
    return CIMValue(OpenWBEM::UInt16(value));
}

CIMValue toCIMValue(unsigned int value) {
    return CIMValue(OpenWBEM::UInt32(value));
}

CIMValue toCIMValue(bool value) {
    return CIMValue(OpenWBEM::Bool(value));
}

CIMValue toCIMValue(const std::string& value) {
    return CIMValue(String(value.c_str()));
}

void fromCIMValue(const CIMValue& from, unsigned char& to) {
    to = from.toUInt8();
}

void fromCIMValue(const CIMValue& from, unsigned short& to) {
    to = from.toUInt16();
}

void fromCIMValue(const CIMValue& from, unsigned int& to) {
    to = from.toUInt32();
}

void fromCIMValue(const CIMValue& from, bool& to) {
    to = from.toBool();
}

void fromCIMValue(const CIMValue& from, std::string& to) {
    to = from.toString().c_str();
}

} // namespace cdroam
