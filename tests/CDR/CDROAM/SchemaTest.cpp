// The schema, the providers' tables and the tests' cases say the same of each property.
#include "PropertyCases.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingProvider.hpp"
#include "QTX_CDRPushStatisticsProvider.hpp"
#include "QTX_CDRServiceAccessBinProvider.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"
#include "QTX_CDRServiceProvider.hpp"
#include "Support.hpp"

#include "cimserver/schema/Repository.hpp"

#include <set>

namespace {

using Lines = std::vector<std::string>; ///< "CLASS.PROPERTY TYPE Key Write LIMITS"

// A property that is missing or different is named; then the order counts.
void expectSame(const Lines& found, const Lines& wanted) {
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(wanted));
    EXPECT_EQ(found, wanted);
}

std::string limit(const char* name, std::size_t value) {
    return std::string(" ") + name + "=" + std::to_string(value);
}

// The limits that the case shows: the values next to those that are taken are refused.
std::string limits(const PropertyCase& c) {
    const bool isText = c.type == "string";
    const auto measure = [&](const std::string& value) { return isText ? value.size() : std::stoul(value); };
    if (c.refused.empty()) {
        return "";
    }
    std::set<std::size_t> taken = {measure(c.shown)};
    std::set<std::size_t> refused;
    for (const auto& each : c.taken) {
        taken.insert(measure(each.first));
    }
    for (const auto& each : c.refused) {
        refused.insert(measure(each.first));
    }
    EXPECT_EQ(*refused.rbegin(), *taken.rbegin() + 1) << c;
    EXPECT_TRUE(isText || *refused.begin() == *taken.begin() - 1) << c;
    return isText ? limit("MaxLen", *taken.rbegin())
                  : limit("MinValue", *taken.begin()) + limit("MaxValue", *taken.rbegin());
}

Lines tested(const std::string& className) {
    Lines lines;
    for (const PropertyCase& c : propertyCases()) {
        if (c.className() == className) {
            lines.push_back(className + "." + c.property + " " + c.type + (c.writable ? " Write" : "") + limits(c));
        }
    }
    return lines;
}

Lines declared(const OpenWBEM::CIMClass& cimClass) {
    const OpenWBEM::String className = cimClass.getName() + ".";
    Lines lines;
    for (const OpenWBEM::CIMProperty& property : cimClass.getAllProperties()) {
        OpenWBEM::String line = className + property.getName() + " " + property.getDataType().toString();
        for (const char* name : {"Key", "Write", "MinValue", "MaxValue", "MaxLen"}) {
            if (const OpenWBEM::CIMQualifier found = property.getQualifier(name)) {
                const bool isFlag = found.getValue().getType() == OpenWBEM::CIMDataType::BOOLEAN;
                line += OpenWBEM::String(" ") + name + (isFlag ? "" : "=" + found.getValue().toString());
            }
        }
        lines.emplace_back(line.c_str());
    }
    for (const OpenWBEM::CIMMethod& method : cimClass.getAllMethods()) {
        lines.emplace_back((className + method.getName() + "() " + method.getReturnType().toString()).c_str());
    }
    return lines;
}

// The limits that the provider checks; of a property that it does not check, those that its case shows.
std::string limits(const cdroam::Check& check, const std::string& property) {
    if (check.kind == cdroam::Check::Range) {
        return limit("MinValue", check.lowest) + limit("MaxValue", check.highest);
    }
    const auto found = std::find_if(propertyCases().begin(), propertyCases().end(), [&](const PropertyCase& c) {
        return check.kind == cdroam::Check::Any && c.className() + "." + c.property == property;
    });
    return check.kind == cdroam::Check::MaxLength ? limit("MaxLen", check.highest)
           : found == propertyCases().end()       ? ""
                                                  : limits(*found);
}

template <class Provider>
std::string className() {
    return Provider::definition().className.toString().c_str();
}

template <class Provider>
Lines served() {
    Lines lines;
    for (const auto& row : Provider::definition().properties) {
        const std::string property = className<Provider>() + "." + row.name.toString().c_str();
        lines.push_back(property + " " + OpenWBEM::CIMDataType(row.type).toString().c_str() +
                        (row.isKey()            ? " Key"
                         : row.write != nullptr ? " Write"
                                                : "") +
                        limits(row.check, property));
    }
    for (const auto& row : Provider::definition().methods) {
        lines.push_back(className<Provider>() + "." + row.name + "() uint32");
    }
    return lines;
}

template <class Provider>
void expectClass(const cimserver::schema::Repository& repository) {
    const std::string name = className<Provider>();
    const OpenWBEM::CIMClass* const cimClass = repository.findClass("root/cimv2", name.c_str());
    ASSERT_NE(cimClass, nullptr) << name;
    EXPECT_EQ(cimClass->getQualifier("Provider").getValue().toString(), "c++::CDRProvider") << name;
    Lines provided = served<Provider>();
    expectSame(declared(*cimClass), provided);
    const auto isOther = [](const std::string& line) {
        return line.find(" Key") != std::string::npos || line.find("()") != std::string::npos;
    };
    provided.erase(std::remove_if(provided.begin(), provided.end(), isOther), provided.end());
    expectSame(tested(name), provided);
}

template <class... Providers>
void expectClasses(const cimserver::schema::Repository& repository) {
    (expectClass<Providers>(repository), ...);
    const std::set<std::string> compared = {className<Providers>()...};
    for (const OpenWBEM::CIMClass* declared : repository.subclasses("root/cimv2", "", true)) {
        EXPECT_EQ(compared.count(declared->getName().c_str()), 1U)
            << declared->getName() << ": not in this test's list";
    }
}

TEST(Schema, DeclaresWhatTheProvidersServeAndTheCasesTest) {
    cimserver::schema::Repository repository;
    repository.compileFile(CDR_MOF, "root/cimv2");
    expectClasses<QTX_CDRServiceProvider, QTX_CDRServicePrefixBinProvider, QTX_CDRServiceAccessBinProvider,
                  QTX_CDRPushSettingProvider, QTX_CDRPushStatisticsProvider, QTX_CDRPullStatisticsProvider>(repository);
}

} // namespace
