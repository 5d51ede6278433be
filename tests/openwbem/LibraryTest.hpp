// What the tests of the library share: its headers as providers include them, and what a call throws as text to compare
// in a table of cases.
#pragma once

#include "OW_CppProviderIncludes.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <sstream>
#include <tuple>

const char* const nullUse = "NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced";

/// "Type: message" of the Exception that the call throws, and its error code; "nothing" if it returns.
template <class Call>
std::string thrownBy(Call call, int* code = nullptr) {
    int ignored = 0;
    try {
        call();
    } catch (const OpenWBEM::Exception& e) {
        (code ? *code : ignored) = e.getErrorCode();
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "nothing";
}

/// The String that the call returns, or what it throws.
template <class Call>
std::string resultOf(Call call) {
    std::string result;
    const std::string thrown = thrownBy([&] { result = call().c_str(); });
    return thrown == "nothing" ? result : thrown;
}

inline OpenWBEM::CIMProperty keyProperty(const char* name, const OpenWBEM::CIMValue& value) {
    return OpenWBEM::CIMProperty(name, value).addQualifier(OpenWBEM::CIMQualifier::createKeyQualifier());
}
