#include "cimserver/provider/Registrations.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Log.hpp"
#include "cimserver/common/Text.hpp"
#include "cimserver/provider/Module.hpp"

#include "OW_CppAssociatorProviderIFC.hpp"
#include "OW_CppInstanceProviderIFC.hpp"
#include "OW_CppMethodProviderIFC.hpp"
#include "OW_CppSecondaryInstanceProviderIFC.hpp"

namespace cimserver::provider {

using namespace OpenWBEM;

namespace {

/// The keys that a report is stored under: the class alone, or the class in each of its namespaces.
template <class ClassInfo>
std::vector<std::string> keysOf(const ClassInfo& info) {
    std::vector<std::string> keys;
    for (const String& ns : info.namespaces) {
        keys.push_back(std::string(withoutSlashes(trimmed(ns.c_str()))) + ":" + info.className.c_str());
    }
    if (keys.empty()) {
        keys.emplace_back(info.className.c_str());
    }
    return keys;
}

} // namespace

void Registrations::put(Table& table, const std::string& key, const std::string& id) {
    const auto [place, isNew] = table.try_emplace(key, id);
    if (!isNew && place->second != id) {
        log::write(log::Level::Error, "provider",
                   "Provider " + id + " reports " + key + ", which provider " + place->second + " serves already");
    }
}

void Registrations::put(Lists& lists, const std::string& key, const std::string& id) {
    lists[key].push_back(id);
}

template <class Entries, class Provider, class Info>
void Registrations::putClasses(Entries& entries, Provider* provider, void (Provider::*report)(Info&),
                               const std::string& id) {
    if (provider == nullptr) {
        return;
    }
    Info info;
    (provider->*report)(info);
    for (const auto& reported : info.getClassInfo()) {
        for (const std::string& key : keysOf(reported)) {
            put(entries, key, id);
        }
    }
}

void Registrations::add(const std::string& id, CppProviderBaseIFC& provider) {
    putClasses(instances_, provider.getInstanceProvider(), &CppInstanceProviderIFC::getInstanceProviderInfo, id);
    putClasses(associators_, provider.getAssociatorProvider(), &CppAssociatorProviderIFC::getAssociatorProviderInfo,
               id);
    putClasses(secondaries_, provider.getSecondaryInstanceProvider(),
               &CppSecondaryInstanceProviderIFC::getSecondaryInstanceProviderInfo, id);
    if (auto* const methods = provider.getMethodProvider()) {
        MethodProviderInfo info;
        methods->getMethodProviderInfo(info);
        for (const auto& reported : info.getClassInfo()) {
            for (const std::string& key : keysOf(reported)) {
                for (const String& method : reported.methods) {
                    put(methods_, key + "/" + method.c_str(), id);
                }
                if (reported.methods.empty()) {
                    put(methods_, key, id);
                }
            }
        }
    }
}

template <class Entries>
typename Entries::mapped_type Registrations::get(const Entries& entries, std::string_view ns,
                                                 std::string_view className) {
    auto found = entries.find(className);
    if (found == entries.end()) {
        std::string key;
        key.reserve(ns.size() + 1 + className.size());
        found = entries.find(key.append(withoutSlashes(trimmed(ns))).append(":").append(className));
    }
    return found == entries.end() ? typename Entries::mapped_type() : found->second;
}

std::string Registrations::instanceProvider(const String& ns, const String& className) const {
    return get(instances_, ns.c_str(), className.c_str());
}

std::string Registrations::associatorProvider(const String& ns, const String& className) const {
    return get(associators_, ns.c_str(), className.c_str());
}

std::string Registrations::methodProvider(const String& ns, const String& className, const String& method) const {
    const std::string one = get(methods_, ns.c_str(), std::string(className.c_str()) + "/" + method.c_str());
    return one.empty() ? get(methods_, ns.c_str(), className.c_str()) : one;
}

std::vector<std::string> Registrations::secondaryProviders(const String& ns, const String& className) const {
    return secondaries_.empty() ? std::vector<std::string>() : get(secondaries_, ns.c_str(), className.c_str());
}

std::string idOfQualifier(const CIMQualifier& qualifier) {
    const CIMValue value = qualifier ? qualifier.getValue() : CIMValue(CIMNULL);
    if (!value) {
        return {};
    }
    const String whole = value.toString();
    const std::string_view text = whole.c_str();
    const std::size_t colon = text.find(':');
    const bool known = colon != std::string_view::npos && equalsIgnoringCase(text.substr(0, colon), "c++");
    std::string id(known ? text.substr(colon + (text.compare(colon, 2, "::") == 0 ? 2 : 1)) : std::string_view());
    if (!isProviderId(id)) {
        const std::string message = "Invalid provider: the Provider qualifier \"" + std::string(text.substr(0, 200)) +
                                    "\" is not of the form \"c++::ID\"";
        throw CimError(Status::Failed, message);
    }
    return id;
}

} // namespace cimserver::provider
