// The schema and the classes' tables say the same.
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingProvider.hpp"
#include "QTX_CDRPushStatisticsProvider.hpp"
#include "QTX_CDRServiceAccessBinProvider.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"
#include "QTX_CDRServiceProvider.hpp"

#include "cimserver/schema/Repository.hpp"

#include <gmock/gmock.h>

namespace {

using Lines = std::vector<std::string>;

std::string line(const std::string& type, const std::string& name, bool key, bool write) {
    return type + " " + name + (key ? " key" : "") + (write ? " write" : "");
}

Lines declared(const OpenWBEM::CIMClass& cimClass) {
    Lines lines;
    for (const OpenWBEM::CIMProperty& property : cimClass.getAllProperties()) {
        lines.push_back(line(property.getDataType().toString().c_str(), property.getName().c_str(), property.isKey(),
                             property.hasTrueQualifier("Write")));
    }
    for (const OpenWBEM::CIMMethod& method : cimClass.getAllMethods()) {
        lines.push_back(line(method.getReturnType().toString().c_str(), method.getName().c_str(), false, false) + "()");
    }
    return lines;
}

template <class Provider>
Lines served() {
    Lines lines;
    for (const auto& row : Provider::definition().properties) {
        const std::string type = OpenWBEM::CIMDataType(row.type).toString().c_str();
        lines.push_back(line(type, row.name, row.isKey(), row.write != nullptr));
    }
    for (const auto& row : Provider::definition().methods) {
        lines.push_back(line("uint32", row.name, false, false) + "()");
    }
    return lines;
}

TEST(Schema, DeclaresWhatTheProvidersServe) {
    cimserver::schema::Repository repository;
    repository.compileFile(CDR_MOF, "root/cimv2");
    const std::pair<const char*, Lines> classes[] = {
        {"QTX_CDRService", served<QTX_CDRServiceProvider>()},
        {"QTX_CDRServicePrefixBin", served<QTX_CDRServicePrefixBinProvider>()},
        {"QTX_CDRServiceAccessBin", served<QTX_CDRServiceAccessBinProvider>()},
        {"QTX_CDRPushSetting", served<QTX_CDRPushSettingProvider>()},
        {"QTX_CDRPushStatistics", served<QTX_CDRPushStatisticsProvider>()},
        {"QTX_CDRPullStatistics", served<QTX_CDRPullStatisticsProvider>()},
    };
    EXPECT_EQ(repository.subclasses("root/cimv2", "", true).size(), std::size(classes));
    for (const auto& [name, lines] : classes) {
        const OpenWBEM::CIMClass* cimClass = repository.findClass("root/cimv2", name);
        ASSERT_NE(cimClass, nullptr) << name;
        EXPECT_EQ(declared(*cimClass), lines) << name;
        EXPECT_EQ(cimClass->getQualifier("Provider").getValue().toString(), "c++::CDRProvider") << name;
    }
}

} // namespace
