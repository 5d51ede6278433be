// The indications that an indication provider sends.

#pragma once

#include "OW_ProviderInfoBase.hpp"
#include "OW_config.h"

namespace OpenWBEM {

/// An indication class, in the given namespaces (none given: all) and about the given classes (none given: all).
struct OW_PROVIFC_API IndicationProviderInfoEntry {
    explicit IndicationProviderInfoEntry(const String& name) : indicationName(name) {}
    IndicationProviderInfoEntry(const String& name, const StringArray& inNamespaces,
                                const StringArray& aboutClasses = StringArray())
        : indicationName(name), namespaces(inNamespaces), classes(aboutClasses) {}

    String indicationName;
    StringArray namespaces;
    StringArray classes;
};

class OW_PROVIFC_API IndicationProviderInfo : public ProviderInfoBase<IndicationProviderInfoEntry> {};

typedef Array<IndicationProviderInfo> IndicationProviderInfoArray;

} // namespace OpenWBEM
