// What the schema tests share.
#pragma once

#include "Support.hpp"
#include "cimserver/schema/Repository.hpp"

/// Qualifier declarations, in one line so that what follows starts in line 2.
inline const std::string kQualifiers =
    "Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);"
    "Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride);"
    "Qualifier Description : string = null, Scope(any), Flavor(Translatable);"
    "Qualifier Version : string, Scope(class, association), Flavor(Restricted);"
    "Qualifier Override : string, Scope(property, method, reference), Flavor(Restricted);"
    "Qualifier Values : string[], Scope(property);"
    "Qualifier MaxLen : uint32, Scope(property, parameter);\n";

/// The message of the MofError that the call throws; empty when it succeeds.
inline std::string errorIn(const std::function<void()>& call) {
    try {
        call();
    } catch (const cimserver::schema::MofError& error) {
        return error.what();
    }
    return {};
}

/// The message that compiling the text gives.
inline std::string errorOf(const std::string& mof) {
    return errorIn([&mof] { cimserver::schema::Repository().compileText(mof, "t.mof", "root/test"); });
}
