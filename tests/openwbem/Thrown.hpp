// What a call throws, as text to compare in a table of cases.

#pragma once

#include "OW_Exception.hpp"

#include <string>

const char* const nullUse = "NULLCOWIntrusiveReferenceException: NULL COWReference dereferenced";

/// "Type: message" of the Exception that the call throws, "nothing" if it returns.
template <class Call>
std::string thrownBy(Call call) {
    try {
        call();
    } catch (const OpenWBEM::Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    }
    return "nothing";
}
