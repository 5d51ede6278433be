// The umbrella provider: which class's provider gets a request, and what becomes of what that throws.
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPullStatistics.hpp"

#include "OW_ResultHandlers.hpp"

using namespace OpenWBEM;
using testing::ElementsAre;
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
        int readError;
        int writeError;
        int stdException;
        int otherThrow;
        int unknownClass;
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

    static std::string line(int number, const std::string& message = "") {
        return "1 " + std::to_string(number) + " CDRProvider " + message;
    }

    ThrowingManager manager;
};

TEST_F(UmbrellaTest, TranslatesWhatAProviderThrows) {
    for (const Request& r : requests) {
        const std::string fragment = " while performing " + r.operation + " operation on QTX_CDRPullStatistics\n";
        const std::string stdText = "Unknown std::exception caught in CDRProvider\n" + fragment;
        const std::string otherText = "Unknown throw caught in CDRProvider\n" + fragment;
        const std::string unnamed = stdText + "std::exception\n";

        const bool readKnown = r.readError != r.stdException;
        const bool writeKnown = r.writeError != r.stdException;
        EXPECT_EQ(with([] { throw CFG_ReadError(); }, r).text(), line(r.readError, readKnown ? "" : unnamed));
        EXPECT_EQ(logger->entries.empty(), readKnown) << r.operation;
        EXPECT_EQ(with([] { throw CFG_WriteError(); }, r).text(), line(r.writeError, writeKnown ? "" : unnamed));
        EXPECT_EQ(logger->entries.empty(), writeKnown) << r.operation;

        EXPECT_EQ(with([] { throw CIMException("here", 3, CIMException::ACCESS_DENIED, "no"); }, r).text(),
                  "2 3 here no");
        EXPECT_THAT(logger->entries, IsEmpty());
        EXPECT_EQ(with([] { throw std::runtime_error("x"); }, r).text(), line(r.stdException, stdText + "x\n"));
        EXPECT_THAT(logger->entries, ElementsAre("ERROR: " + stdText + "x\n"));
        EXPECT_EQ(with([] { throw 5; }, r).text(), line(r.otherThrow, otherText));
        EXPECT_THAT(logger->entries, ElementsAre("ERROR: " + otherText));
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
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {"5 787 CDRProvider ",
         [&] {
             provider->associators(environment, toInstances, "", name, "", "", "", "", qualifiers, origin, nullptr);
         }},
        {"5 845 CDRProvider ", [&] { provider->associatorNames(environment, toPaths, "", name, "", "", "", ""); }},
        {"5 905 CDRProvider ",
         [&] { provider->references(environment, toInstances, "", name, "", "", qualifiers, origin, nullptr); }},
        {"5 959 CDRProvider ", [&] { provider->referenceNames(environment, toPaths, "", name, "", ""); }},
    };
    for (const auto& [ended, request] : cases) {
        EXPECT_EQ(failure(request).text(), ended);
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
