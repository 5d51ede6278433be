#include "Lab.hpp"

namespace lab {
namespace {

std::string without(std::string text, const std::string& part) {
    for (auto at = text.find(part); !part.empty() && at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
    }
    return text;
}

/// The address from the server's first line, such as "127.0.0.1:40001"; empty when it is not there yet.
std::string addressIn(const std::string& output) {
    const auto start = output.find("://");
    return start == std::string::npos || output.back() != '\n'
               ? ""
               : output.substr(start + 3, output.find('\n') - start - 3);
}

void nameObjects(const std::string& cim) {
    const auto name = [&cim](const char* variable, const std::string& path) {
        setenv(variable, (cim + path).c_str(), 1);
    };
    setenv("CIM", cim.c_str(), 1);
    name("SERVICE", "QTX_CDRService.SystemCreationClassName=\"QTX_System\",SystemName=\"QTX\","
                    "CreationClassName=\"QTX_CDRService\",Name=\"CDRService\"");
    name("PREFIX3", "QTX_CDRServicePrefixBin.InstanceID=\"CDRServicePrefixBin_3\"");
    name("PUSH", "QTX_CDRPushSetting.InstanceID=\"CDRPushSetting\"");
    name("PUSHED", "QTX_CDRPushStatistics.Name=\"CDRPushStatistic\"");
}

} // namespace

Lab::Lab() {
    static const std::string path = std::string(PROGRAMS) + ":" + getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    setenv("LAB", home_.path().c_str(), 1);
    setenv("ZPO_STATE_DIR", (home_ / "state").c_str(), 1);
    setenv("ZPO_LOG_DIR", (home_ / "log").c_str(), 1);
    setenv("ZPO_CRONTAB_DIR", (home_ / "crontabs").c_str(), 1);
    unsetenv("ZPO_CRONTAB_SUNDAY");
    std::filesystem::create_directories(home_ / "crontabs");
    run("osqueue create CDRService");
    EXPECT_THAT(run("zporeg load " DEFAULTS), testing::EndsWith(" entries loaded\n"));
}

Lab::~Lab() {
    if (server_ > 0) {
        stop();
    }
    run("osqueue delete CDRService");
}

void Lab::start(const std::string& options) {
    std::filesystem::remove(home_ / "server.out"); // of the server before
    const std::string command = "cd $LAB && exec cimserverd --mof " SCHEMA " --provider-dir " MODULE_FOLDER
                                " --provider-stdout $LAB/provider.out "
                                "--listen 127.0.0.1:0 --port-file $LAB/port --state-dir $LAB/server " +
                                options + " >$LAB/server.out 2>$LAB/server.err";
    server_ = support::startChild([&] { return support::become({"sh", "-c", command}); });
    const auto address = [this] { return addressIn(support::contentOf(home_ / "server.out")); };
    ASSERT_TRUE(support::waitUntil([&] { return !address().empty(); }, std::chrono::seconds(20))) << serverLog();
    const std::string port = support::contentOf(home_ / "port");
    ASSERT_EQ("127.0.0.1:" + port, address() + "\n");
    setenv("HOST", address().c_str(), 1);
    nameObjects("http://" + address() + "/root/cimv2:");
}

void Lab::stop() {
    kill(server_, SIGTERM);
    EXPECT_EQ(0, support::waitForChild(server_)) << serverLog();
    EXPECT_THAT(serverLog(), testing::Not(testing::HasSubstr("anitizer")));
    server_ = -1;
}

std::string Lab::run(const std::string& command) {
    static const std::string show = "show() { wbemcli -nl gi \"$@\" | sed '1d;/^$/d'; }; ";
    const char* const host = getenv("HOST");
    const std::string output = support::run({"/bin/sh", "-c", show + command}).output;
    return without(without(output, host == nullptr ? "" : std::string(host) + "/"), "\"");
}

void Lab::play(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        EXPECT_THAT(run(step.command), step.output) << step.command;
    }
}

std::string Lab::crontab() const {
    return support::contentOf(home_ / ("crontabs/" + support::userName()));
}

std::string Lab::diagnostics() const {
    return support::contentOf(home_ / "log/CdrOAM.log") + support::contentOf(home_ / "log/ZpoShared.log");
}

} // namespace lab
