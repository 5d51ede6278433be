// The umbrella provider: which class's provider gets a request, and what becomes of what that throws.
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "QTX_CDRPullStatistics.hpp"

#include "OW_ResultHandlers.hpp"

using namespace OpenWBEM;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class UmbrellaTest : public ModuleTest {
  protected:
    // Throws whatever a request asks of it.
    struct ThrowingManager : QTX_CDRPullStatisticsInstanceManager {
        std::function<void()> fault;
        QTX_CDRPullStatistics* createQTX_CDRPullStatistics(const std::string& /*name*/) override { return raise(); }
        QTX_CDRPullStatistics* get(const std::string& /*name*/) override { return raise(); }
        void startIteration() override { raise(); }
        QTX_CDRPullStatistics* raise() { return fault(), nullptr; }
    } manager;

    using Text = const std::string&;
    struct Request {
        std::string operation;
        std::function<void(Text className)> send;
        int readError, writeError, stdException, otherThrow, unknownClass; ///< lines
    };
    // An exception of the framework that an operation does not know is a std::exception to it.
    // clang-format off
    const std::vector<Request> requests = {
        {"enumInstanceNames", [&](Text c) { names(c); }, 142, 157, 157, 165, 170},
        {"enumInstances", [&](Text c) { instances(c); }, 245, 260, 260, 268, 273},
        {"getInstance", [&](Text c) { get(c + ".Name=\"x\""); }, 342, 357, 357, 365, 369},
        {"createInstance", [&](Text c) { create(changed(c + ".Name=\"x\"", {})); }, 444, 429, 444, 452, 457},
        {"deleteInstance", [&](Text c) { remove(path(c + ".Name=\"x\"")); }, 529, 514, 529, 537, 542},
        {"modifyInstance", [&](Text c) { modify(changed(c + ".Name=\"x\"", {})); }, 622, 607, 622, 630, 635},
        {"invokeMethod", [&](Text c) { invoke(path(c + ".Name=\"x\""), "Refresh"); }, 692, 696, 711, 719, 722},
    };
    // clang-format on

    // The failure of the request when its class's manager throws so.
    std::string with(const std::function<void()>& fault, const Request& request) {
        manager.fault = fault;
        QTX_CDRPullStatisticsInstanceManager* const before = QTX_CDRPullStatistics::getInstanceManager();
        QTX_CDRPullStatistics::SetInstanceManager(&manager);
        logged.clear();
        const std::string ended = failure([&] { request.send("QTX_CDRPullStatistics"); });
        QTX_CDRPullStatistics::SetInstanceManager(before);
        return ended;
    }
};

TEST_F(UmbrellaTest, TranslatesWhatAProviderThrows) {
    for (const Request& r : requests) {
        const std::string operation = "\n while performing " + r.operation + " operation on QTX_CDRPullStatistics\n";
        const std::string stdText = "Unknown std::exception caught in CDRProvider" + operation;
        const auto expect = [&](const std::function<void()>& fault, int line, const std::string& message) {
            EXPECT_EQ(with(fault, r), "1 " + std::to_string(line) + " CDRProvider " + message);
            EXPECT_EQ(logged, std::vector<std::string>(message.empty() ? 0 : 1, "ERROR: " + message));
        };
        const auto framework = [&](int line) { return line == r.stdException ? stdText + "std::exception\n" : ""; };
        expect([] { throw CFG_ReadError(); }, r.readError, framework(r.readError));
        expect([] { throw CFG_WriteError(); }, r.writeError, framework(r.writeError));
        expect([] { throw std::runtime_error("x"); }, r.stdException, stdText + "x\n");
        expect([] { throw 5; }, r.otherThrow, "Unknown throw caught in CDRProvider" + operation);
        EXPECT_EQ(with([] { throw CIMException("here", 3, CIMException::ACCESS_DENIED, "no"); }, r), "2 3 here no");
        EXPECT_THAT(logged, IsEmpty());
        for (const char* name : {"qtx_cdrpullstatistics", "QTX_CDR", "QTX_CDRServiceX"}) {
            EXPECT_EQ(failure([&] { r.send(name); }), "5 " + std::to_string(r.unknownClass) + " CDRProvider ");
        }
        EXPECT_THAT(logged, IsEmpty());
    }
}

TEST_F(UmbrellaTest, SurvivesBrokenRequests) {
    EXPECT_THAT(failure([&] { get(CIMObjectPath(CIMNULL)); }), StartsWith("1 357 CDRProvider "));
    EXPECT_THAT(set(kService, "Format", "1"), StartsWith("1 622 CDRProvider ")) << "a text for a number";
    EXPECT_EQ(logged.size(), 2U);
    EXPECT_THAT(platform.entries, IsEmpty());
    environment = ProviderEnvironmentIFCRef(); // without a logger
    EXPECT_THAT(with([] { throw 5; }, requests.front()), StartsWith("1 165 CDRProvider "));
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
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"787",
         [&] { p.associators(environment, toInstances, "", name, "", "", "", "", qualifiers, origin, nullptr); }},
        {"845", [&] { p.associatorNames(environment, toPaths, "", name, "", "", "", ""); }},
        {"905", [&] { p.references(environment, toInstances, "", name, "", "", qualifiers, origin, nullptr); }},
        {"959", [&] { p.referenceNames(environment, toPaths, "", name, "", ""); }},
    };
    for (const auto& [line, request] : cases) {
        EXPECT_EQ(failure(request), std::string("5 ") + line + " CDRProvider ");
    }
}

TEST_F(UmbrellaTest, KeepsItsObjectsAfterCleanup) {
    provider->cleanup();
    EXPECT_EQ(names("QTX_CDRServicePrefixBin").size(), 8U);
}

} // namespace
