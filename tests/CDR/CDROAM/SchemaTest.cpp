// The schema, the providers' tables and the tests' cases say the same of each property.
#include "PropertyCases.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingProvider.hpp"
#include "QTX_CDRPushStatisticsProvider.hpp"
#include "QTX_CDRServiceAccessBinProvider.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"
#include "QTX_CDRServiceProvider.hpp"

#include "cimserver/schema/Repository.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using Lines = std::vector<std::string>; ///< "CLASS.PROPERTY TYPE" and what else is to be compared

// A property that is missing or different is named, then the order counts.
void expectSame(const Lines& found, const Lines& wanted) {
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(wanted));
    EXPECT_EQ(found, wanted);
}

std::string limit(const char* name, unsigned int value) {
    return std::string(" ") + name + "=" + std::to_string(value);
}

Lines declared(const OpenWBEM::CIMClass& cimClass) {
    const std::string className = (cimClass.getName() + ".").c_str();
    Lines lines;
    for (const OpenWBEM::CIMProperty& property : cimClass.getAllProperties()) {
        std::string line = className + (property.getName() + " " + property.getDataType().toString()).c_str();
        for (const char* name : {"Key", "Write"}) {
            line += property.hasTrueQualifier(name) ? std::string(" ") + name : "";
        }
        for (const char* name : {"MinValue", "MaxValue", "MaxLen"}) {
            const OpenWBEM::CIMQualifier found = property.getQualifier(name);
            line += found ? (OpenWBEM::String(" ") + name + "=" + found.getValue().toString()).c_str() : "";
        }
        lines.push_back(line);
    }
    for (const OpenWBEM::CIMMethod& method : cimClass.getAllMethods()) {
        lines.push_back(className + (method.getName() + "() " + method.getReturnType().toString()).c_str());
    }
    return lines;
}

// What the property's setting refuses by itself: a text longer than the longest that is taken.
std::string ownLimit(const std::string& property) {
    std::string limits;
    for (const PropertyCase& c : propertyCases()) {
        std::size_t taken = 0;
        std::size_t refused = 0;
        for (const auto& each : c.taken) {
            taken = std::max(taken, each.first.size());
        }
        for (const auto& each : c.refused) {
            refused = std::max(refused, each.first.size());
        }
        if (c.className() + "." + c.property == property && c.type == "string" && refused == taken + 1) {
            limits = limit("MaxLen", static_cast<unsigned int>(taken));
        }
    }
    return limits;
}

std::string limits(const cdroam::Check& check, const std::string& property) {
    switch (check.kind) {
    case cdroam::Check::Range:
        return limit("MinValue", check.lowest) + limit("MaxValue", check.highest);
    case cdroam::Check::MaxLength:
        return limit("MaxLen", check.highest);
    default:
        return ownLimit(property);
    }
}

struct Served {
    Lines properties; ///< but the keys, without limits, as the cases tell them
    Lines all;
};

template <class Provider>
Served served() {
    Served result;
    const std::string className = std::string(Provider::definition().className) + ".";
    for (const auto& row : Provider::definition().properties) {
        const std::string property = className + row.name;
        const std::string line = property + " " + OpenWBEM::CIMDataType(row.type).toString().c_str() +
                                 (row.isKey() ? " Key" : "") + (row.write != nullptr ? " Write" : "");
        result.all.push_back(line + limits(row.check, property));
        if (!row.isKey()) {
            result.properties.push_back(line);
        }
    }
    for (const auto& row : Provider::definition().methods) {
        result.all.push_back(className + row.name + "() uint32");
    }
    return result;
}

Lines tested(const std::string& className) {
    Lines lines;
    for (const PropertyCase& c : propertyCases()) {
        if (c.className() == className) {
            lines.push_back(className + "." + c.property + " " + c.type + (c.writable ? " Write" : ""));
        }
    }
    return lines;
}

TEST(Schema, DeclaresWhatTheProvidersServeAndTheCasesTest) {
    cimserver::schema::Repository repository;
    repository.compileFile(CDR_MOF, "root/cimv2");
    const std::pair<const char*, Served> classes[] = {
        {"QTX_CDRService", served<QTX_CDRServiceProvider>()},
        {"QTX_CDRServicePrefixBin", served<QTX_CDRServicePrefixBinProvider>()},
        {"QTX_CDRServiceAccessBin", served<QTX_CDRServiceAccessBinProvider>()},
        {"QTX_CDRPushSetting", served<QTX_CDRPushSettingProvider>()},
        {"QTX_CDRPushStatistics", served<QTX_CDRPushStatisticsProvider>()},
        {"QTX_CDRPullStatistics", served<QTX_CDRPullStatisticsProvider>()},
    };
    EXPECT_EQ(repository.subclasses("root/cimv2", "", true).size(), std::size(classes));
    for (const auto& [name, provider] : classes) {
        const OpenWBEM::CIMClass* cimClass = repository.findClass("root/cimv2", name);
        ASSERT_NE(cimClass, nullptr) << name;
        expectSame(declared(*cimClass), provider.all);
        expectSame(tested(name), provider.properties);
        EXPECT_EQ(cimClass->getQualifier("Provider").getValue().toString(), "c++::CDRProvider") << name;
    }
}

} // namespace
