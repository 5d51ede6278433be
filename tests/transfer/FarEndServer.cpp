#include "FarEndServer.hpp"

#include "ZpoShared.h"

#include <arpa/inet.h>
#include <sys/prctl.h>
#include <sys/socket.h>

namespace transfer_testing {
namespace {

/// A port that nobody listens on, for 0; else the port, when somebody does.
int findPort(int wanted) {
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(wanted));
    socklen_t length = sizeof address;
    const int failed = wanted == 0 ? bind(fd, reinterpret_cast<sockaddr*>(&address), length)
                                   : connect(fd, reinterpret_cast<sockaddr*>(&address), length);
    getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length);
    close(fd);
    return failed != 0 ? 0 : (wanted == 0 ? ntohs(address.sin_port) : wanted);
}

} // namespace

PushLab::PushLab() : sftpPort_(findPort(0)), ftpsPort_(findPort(0)) {
    for (const char* const name : {"log", "crontabs", "records"}) {
        std::filesystem::create_directories(home_ / name);
    }
    use();
}

void PushLab::use() const {
    static const std::string path = std::string(PROGRAMS) + ":" + getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    setenv("ZPO_STATE_DIR", (home_ / "state").c_str(), 1);
    setenv("ZPO_LOG_DIR", (home_ / "log").c_str(), 1);
    setenv("ZPO_CRONTAB_DIR", (home_ / "crontabs").c_str(), 1);
    setenv("CDR_RECORD_DIR", (home_ / "records").c_str(), 1);
    setenv("CDR_TRANSFER_RETRY_DELAY", "0", 1);
    setenv("CDR_TRANSFER_SOCKET", (home_ / "no socket").c_str(), 1);
}

PushLab::~PushLab() {
    kill();
}

PushLab& PushLab::started() {
    static PushLab lab;
    lab.use();
    if (lab.server_ < 0) {
        lab.start();
        EXPECT_EQ(0, run("echo yes | CDRTransfer --trust " + lab.sftp()).exitCode);
        std::filesystem::copy_file(lab.home_ / "far/tls.pem", lab.state("ca.pem"),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    lab.reset();
    return lab;
}

void PushLab::start(const std::vector<std::string>& prefix) {
    std::vector<std::string> command = prefix;
    command.insert(command.end(), {FAR_END, home_ / "far", std::to_string(sftpPort_), std::to_string(ftpsPort_)});
    server_ = support::startChild([&] {
        setsid();
        prctl(PR_SET_PDEATHSIG, SIGKILL); // also when the test is killed
        return support::become(command, home_ / "server.out");
    });
    const auto answers = [this] { return findPort(sftpPort_) != 0 && findPort(ftpsPort_) != 0; };
    ASSERT_TRUE(support::waitUntil(answers, std::chrono::seconds(20))) << support::contentOf(home_ / "server.out");
}

void PushLab::kill() {
    if (server_ > 0) {
        ::kill(-server_, SIGKILL);
        support::waitForChild(server_);
        server_ = -1;
    }
}

void PushLab::reset() {
    run("cd '" + home_.path() +
        "' && find far/files records -mindepth 1 -delete; cd state/transfer && rm -f sent last-run current");
    std::filesystem::create_directories(far("in"));
    std::filesystem::remove(home_ / "log/CdrOAM.log");
    set("IpAddr", sftp());
    set("UserName", "cdr");
    set("Password", password());
    set("DestFolder", "in");
    for (const char* const flag : {"TransferType", "NumRetry", "DeleteFlag", "CompressFlag", "IncludeMetricsFlag"}) {
        setByte(flag, 0);
    }
}

void PushLab::set(const std::string& key, const std::string& value) {
    EXPECT_EQ(ZPO_OK, ZpoSetRegEntryString("CDR", "CDRPush", key.c_str(), value.c_str())) << key;
}

void PushLab::setByte(const std::string& key, int value) {
    const auto byte = static_cast<unsigned char>(value);
    EXPECT_EQ(ZPO_OK, ZpoSetRegEntryBinary("CDR", "CDRPush", key.c_str(), &byte, 1)) << key;
}

std::string PushLab::password() const {
    const std::string line = support::contentOf(home_ / "far/password");
    return line.substr(0, line.find('\n'));
}

} // namespace transfer_testing
