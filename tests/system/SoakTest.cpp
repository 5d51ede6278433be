// Many clients at once beside restores: no acknowledged change is lost. CDR_SOAK says for how many seconds.
#include "../cimserver/http/Client.hpp"
#include "Lab.hpp"

#include <atomic>
#include <list>
#include <mutex>

namespace {

using http_testing::Client;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kClients = 64;

std::string instanceName(const std::string& className, const std::string& id, const std::string& key = "InstanceID") {
    return "<INSTANCENAME CLASSNAME=\"QTX_" + className + "\"><KEYBINDING NAME=\"" + key + "\"><KEYVALUE>" + id +
           "</KEYVALUE></KEYBINDING></INSTANCENAME>";
}

/// A row of digits that is changed by one client at a time. Restores empty it.
struct Row {
    Row(const std::string& name, const std::string& digits, int number)
        : className(name), property(digits), id(name + "_" + std::to_string(number)) {}

    std::string className, property, id;
    std::mutex mutex;
    unsigned changes = 0;
    std::string acknowledged;
};

class Soak {
  public:
    explicit Soak(std::uint16_t at) : port(at) {
        for (int i = 0; i < 8; ++i) {
            rows_.emplace_back("CDRServicePrefixBin", "PrefixBin", i);
        }
        for (int i = 0; i < 5; ++i) {
            rows_.emplace_back("CDRServiceAccessBin", "AccessBin", i);
        }
    }

    /// Reads, changes and invokes with all clients; a row may have been restored meanwhile when `restored`.
    void run(std::chrono::milliseconds time, bool restored) {
        const auto end = Clock::now() + time;
        std::vector<std::thread> clients;
        for (std::size_t i = 0; i < kClients; ++i) {
            clients.emplace_back([this, end, restored, i] {
                Client client(port);
                for (std::size_t round = 0; Clock::now() < end && !testing::Test::HasFailure(); ++round) {
                    use(client, *std::next(rows_.begin(), static_cast<long>((round + i) % rows_.size())), restored);
                    ++rounds;
                }
            });
        }
        for (std::thread& client : clients) {
            client.join();
        }
    }
    void changeAll() {
        Client client(port);
        for (Row& row : rows_) {
            use(client, row, false);
        }
    }
    void expectAcknowledged() {
        Client client(port);
        for (const Row& row : rows_) {
            expectRow(client, row, false);
        }
    }

    std::uint16_t port;
    std::atomic<unsigned> rounds{0}, changes{0}, refused{0};

  private:
    /// The answer's content; "" when the server has too much to do.
    std::string ask(Client& client, const std::string& method, const std::string& object, const std::string& call) {
        const std::string name = "NAME=\"" + method + "\">";
        const http_testing::Reply reply = client.ask(http_testing::post(
            "<?xml version=\"1.0\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
            "PROTOCOLVERSION=\"1.0\">"
            "<SIMPLEREQ>" +
                call + "</SIMPLEREQ></MESSAGE></CIM>",
            "CIMOperation: MethodCall\r\nCIMMethod: " + method + "\r\nCIMObject: " + object + "\r\n"));
        if (reply.status == 503) {
            ++refused;
            client = Client(port);
            return "";
        }
        EXPECT_EQ(200U, reply.status) << method;
        EXPECT_EQ(std::string::npos, reply.body.find("<ERROR")) << reply.body;
        return reply.body;
    }
    std::string intrinsic(Client& client, const std::string& method, const std::string& parameter) {
        return ask(client, method, "root%2Fcimv2",
                   "<IMETHODCALL NAME=\"" + method +
                       "\"><LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE "
                       "NAME=\"cimv2\"/></LOCALNAMESPACEPATH><IPARAMVALUE NAME=" +
                       parameter + "</IPARAMVALUE></IMETHODCALL>");
    }

    void use(Client& client, Row& row, bool restored) {
        const std::unique_lock<std::mutex> lock(row.mutex, std::try_to_lock);
        if (lock.owns_lock()) {
            const std::string value = std::to_string(10000 + row.changes++ % 90000);
            const std::string answer = intrinsic(
                client, "ModifyInstance",
                "\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>" + instanceName(row.className, row.id) +
                    "<INSTANCE CLASSNAME=\"QTX_" + row.className + "\"><PROPERTY NAME=\"" + row.property +
                    "\" TYPE=\"string\"><VALUE>" + value + "</VALUE></PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE>");
            if (!answer.empty()) {
                row.acknowledged = value;
                ++changes;
            }
            expectRow(client, row, restored);
        } else {
            intrinsic(client, "EnumerateInstances", "\"ClassName\"><CLASSNAME NAME=\"QTX_CDRPushSetting\"/>");
            ask(client, "Refresh", "root%2Fcimv2%3AQTX_CDRPushStatistics.Name%3D%22CDRPushStatistic%22",
                "<METHODCALL NAME=\"Refresh\"><LOCALINSTANCEPATH><LOCALNAMESPACEPATH><NAMESPACE "
                "NAME=\"root\"/><NAMESPACE "
                "NAME=\"cimv2\"/></LOCALNAMESPACEPATH>" +
                    instanceName("CDRPushStatistics", "CDRPushStatistic", "Name") +
                    "</LOCALINSTANCEPATH></METHODCALL>");
        }
    }
    void expectRow(Client& client, const Row& row, bool restored) {
        const std::string answer =
            intrinsic(client, "GetInstance", "\"InstanceName\">" + instanceName(row.className, row.id));
        if (answer.empty()) {
            return;
        }
        const std::size_t value = answer.find("<VALUE>", answer.find("<PROPERTY NAME=\"" + row.property + "\"")) + 7;
        const std::string found = answer.substr(value, answer.find('<', value) - value);
        EXPECT_TRUE(found == row.acknowledged || (restored && found.empty()))
            << row.id << " is " << found << ", not " << row.acknowledged;
    }

    std::list<Row> rows_;
};

TEST(Soak, EveryAcknowledgedChangeIsThere) {
    const char* const wanted = getenv("CDR_SOAK");
    const std::chrono::milliseconds time(wanted == nullptr ? 2000 : 1000 * std::atoi(wanted));
    lab::Lab lab;
    const auto port = [&lab] { return static_cast<std::uint16_t>(std::stoi(support::contentOf(lab / "port"))); };
    lab.run("zporeg set CDR CDRService 'PREFIX BIN' --binary $(yes 0c | head -64 | tr -d '\\n')");
    lab.run("zporeg set CDR CDRService 'ACCESS BIN' --binary $(yes 0c0c0c0c0c00 | head -5 | tr -d '\\n')");
    EXPECT_THAT(lab.run("zporeg backup $LAB/empty"), testing::EndsWith(" entries saved\n"));
    lab.start("--preload CDRProvider --concurrent-provider CDRProvider");
    Soak soak(port());
    const pid_t restoring = support::startChild([] {
        return execlp(
            "sh", "sh", "-c",
            "while ! [ -e $LAB/stop ]; do zporeg restore $LAB/empty >>$LAB/restores || exit 1; sleep 0.1; done",
            nullptr);
    });
    soak.run(time * 3 / 4, true);
    support::writeFile(lab / "stop", "");
    EXPECT_EQ(0, support::waitForChild(restoring));
    soak.changeAll();
    soak.run(time / 4, false);
    soak.expectAcknowledged();
    lab.stop();
    lab.start();
    soak.port = port();
    soak.expectAcknowledged();
    std::printf("%zu clients: %u rounds, %u changes acknowledged, %u requests refused for load, %zu restores\n",
                kClients, soak.rounds.load(), soak.changes.load(), soak.refused.load(),
                support::countOf("restored", support::contentOf(lab / "restores")));
    EXPECT_GT(soak.changes, 0U);
}

} // namespace
