// The umbrella provider: which class's provider gets a request, and what becomes of what that throws.
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPullStatistics.hpp"

#include "OW_ResultHandlers.hpp"

using namespace OpenWBEM;
using testing::IsEmpty;

namespace {

class UmbrellaTest : public ModuleTest {
  protected:
    // Does all that a request makes of a manager by throwing.
    struct ThrowingManager : QTX_CDRPullStatisticsInstanceManager {
        std::function<void()> fault;
        QTX_CDRPullStatistics* createQTX_CDRPullStatistics(const std::string& /*name*/) override { return raise(); }
        QTX_CDRPullStatistics* get(const std::string& /*name*/) override { return raise(); }
        void startIteration() override { raise(); }
        QTX_CDRPullStatistics* raise() {
            fault();
            return nullptr;
        }
    };

    struct Request {
        std::string operation;
        std::function<void(const std::string& className)> send;
        int readError, writeError, stdException, otherThrow, unknownClass; ///< lines
    };

    static CIMObjectPath named(const std::string& className) { return path(className + ".Name=\"x\""); }
    static CIMInstance instanceOf(const std::string& className) { return changed(className + ".Name=\"x\"", {}); }

    // An exception of the framework that an operation does not know is a std::exception to it.
    const std::vector<Request> requests = {
        {"enumInstanceNames", [&](const std::string& c) { names(c); }, 142, 157, 157, 165, 170},
        {"enumInstances", [&](const std::string& c) { instances(c); }, 245, 260, 260, 268, 273},
        {"getInstance", [&](const std::string& c) { get(named(c)); }, 342, 357, 357, 365, 369},
        {"createInstance", [&](const std::string& c) { create(instanceOf(c)); }, 444, 429, 444, 452, 457},
        {"deleteInstance", [&](const std::string& c) { remove(named(c)); }, 529, 514, 529, 537, 542},
        {"modifyInstance", [&](const std::string& c) { modify(instanceOf(c)); }, 622, 607, 622, 630, 635},
        {"invokeMethod", [&](const std::string& c) { invoke(named(c), "Refresh"); }, 692, 696, 711, 719, 722},
    };

    // The failure of the request when its class's manager throws so.
    Failure with(const std::function<void()>& fault, const Request& request) {
        manager.fault = fault;
        QTX_CDRPullStatisticsInstanceManager* const before = QTX_CDRPullStatistics::getInstanceManager();
        QTX_CDRPullStatistics::SetInstanceManager(&manager);
        logger->entries.clear();
        const Failure ended = failure([&] { request.send("QTX_CDRPullStatistics"); });
        QTX_CDRPullStatistics::SetInstanceManager(before);
        return ended;
    }

    ThrowingManager manager;
};

TEST_F(UmbrellaTest, TranslatesWhatAProviderThrows) {
    for (const Request& r : requests) {
        const std::string fragment = "\n while performing " + r.operation + " operation on QTX_CDRPullStatistics\n";
        const std::string stdText = "Unknown std::exception caught in CDRProvider" + fragment;
        const std::string otherText = "Unknown throw caught in CDRProvider" + fragment;
        const std::string unknown = stdText + "std::exception\n";
        struct {
            std::function<void()> fault;
            int line;
            std::string message; ///< which is logged, too
        } const cases[] = {
            {[] { throw CFG_ReadError(); }, r.readError, r.readError == r.stdException ? unknown : ""},
            {[] { throw CFG_WriteError(); }, r.writeError, r.writeError == r.stdException ? unknown : ""},
            {[] { throw std::runtime_error("x"); }, r.stdException, stdText + "x\n"},
            {[] { throw 5; }, r.otherThrow, otherText},
        };
        for (const auto& c : cases) {
            EXPECT_EQ(with(c.fault, r).text(), "1 " + std::to_string(c.line) + " CDRProvider " + c.message);
            const std::vector<std::string> logged(c.message.empty() ? 0 : 1, "ERROR: " + c.message);
            EXPECT_EQ(logger->entries, logged);
        }
        EXPECT_EQ(with([] { throw CIMException("here", 3, CIMException::ACCESS_DENIED, "no"); }, r).text(),
                  "2 3 here no");
        EXPECT_THAT(logger->entries, IsEmpty());
    }
}

TEST_F(UmbrellaTest, KnowsClassesByTheirExactNames) {
    for (const Request& r : requests) {
        for (const char* name : {"qtx_cdrpullstatistics", "QTX_CDR", "QTX_CDRServiceX", "CIM_System"}) {
            EXPECT_EQ(failure([&] { r.send(name); }).text(), "5 " + std::to_string(r.unknownClass) + " CDRProvider ")
                << r.operation << name;
        }
    }
    EXPECT_THAT(logger->entries, IsEmpty());
}

TEST_F(UmbrellaTest, SurvivesARequestWithoutANameOrALogger) {
    EXPECT_EQ(failure([&] { (void)get(CIMObjectPath(CIMNULL)); }).line, 357);
    environment = ProviderEnvironmentIFCRef();
    EXPECT_EQ(with([] { throw 5; }, requests.front()).line, 165);
}

TEST_F(UmbrellaTest, ServesNoAssociations) {
    const CIMObjectPath name = path(kService);
    CIMInstanceArray instances;
    CIMInstanceArrayBuilder toInstances(instances);
    CIMObjectPathArray paths;
    CIMObjectPathArrayBuilder toPaths(paths);
    const auto qualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS;
    const auto origin = WBEMFlags::E_INCLUDE_CLASS_ORIGIN;
    CDRProvider& p = *provider;
    const std::pair<int, std::function<void()>> cases[] = {
        {787, [&] { p.associators(environment, toInstances, "", name, "", "", "", "", qualifiers, origin, nullptr); }},
        {845, [&] { p.associatorNames(environment, toPaths, "", name, "", "", "", ""); }},
        {905, [&] { p.references(environment, toInstances, "", name, "", "", qualifiers, origin, nullptr); }},
        {959, [&] { p.referenceNames(environment, toPaths, "", name, "", ""); }},
    };
    for (const auto& [line, request] : cases) {
        EXPECT_EQ(failure(request).text(), "5 " + std::to_string(line) + " CDRProvider ");
    }
}

TEST_F(UmbrellaTest, PassesATypeMismatchOnAsAFailure) {
    EXPECT_EQ(set(kService, "Format", "1").line, 622);
    EXPECT_EQ(set(kPushSetting, "DeleteFlag", value("uint8", "1")).line, 622);
    EXPECT_EQ(logger->entries.size(), 2U);
    EXPECT_THAT(platform.calls("ZpoSetRegEntry"), IsEmpty());
}

TEST_F(UmbrellaTest, KeepsItsObjectsAfterCleanup) {
    provider->cleanup();
    EXPECT_EQ(names("QTX_CDRServicePrefixBin").size(), 8U);
    EXPECT_THAT(platform.calls("ZpoDiagDeregisterModule"), IsEmpty());
}

} // namespace
