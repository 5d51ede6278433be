// The indications that an indication provider sends.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// An indication class, in the given namespaces (all without any) and about the given classes (all without any).
struct OW_PROVIFC_API IndicationProviderInfoEntry {
    explicit IndicationProviderInfoEntry(const String& className_) : className(className_) {}
    IndicationProviderInfoEntry(const String& className_, const StringArray& namespaces_,
                                const StringArray& classes_ = StringArray())
        : className(className_), namespaces(namespaces_), classes(classes_) {}

    String className;
    StringArray namespaces;
    StringArray classes;
};

class OW_PROVIFC_API IndicationProviderInfo : public ProviderInfoBase<IndicationProviderInfoEntry> {};

} // namespace OpenWBEM
