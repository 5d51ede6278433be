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
const std::string kNamespace =
    R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH>)";
std::atomic<unsigned> rounds{0};
std::atomic<unsigned> changes{0};
std::atomic<unsigned> refused{0};

/// The answer; empty when the server has too much to do.
std::string ask(Client& client, const std::string& method, const std::string& object, const std::string& call) {
    const http_testing::Reply reply = client.ask(http_testing::postCall(method, object, call));
    refused += reply.status == 503 ? 1 : 0;
    EXPECT_TRUE(reply.status == 200 || reply.status == 503) << reply.status;
    EXPECT_EQ(std::string::npos, reply.body.find("<ERROR")) << reply.body;
    return reply.status == 200 ? reply.body : "";
}

/// A row of digits that one client at a time changes. Restores empty it.
struct Row {
    std::string className, property, id;
    std::mutex mutex;
    std::string acknowledged;

    std::string ask(Client& client, const std::string& method, const std::string& before,
                    const std::string& after) const {
        return ::ask(client, method, "",
                     "<IMETHODCALL NAME=\"" + method + "\">" + kNamespace + "<IPARAMVALUE NAME=" + before +
                         "<INSTANCENAME CLASSNAME=\"" + className + "\"><KEYBINDING NAME=\"InstanceID\"><KEYVALUE>" +
                         id + "</KEYVALUE></KEYBINDING></INSTANCENAME>" + after + "</IPARAMVALUE></IMETHODCALL>");
    }
    void change(Client& client) {
        const std::string value = std::to_string(10000 + changes % 90000);
        const std::string answer =
            ask(client, "ModifyInstance", "\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>",
                "<INSTANCE CLASSNAME=\"" + className + "\"><PROPERTY TYPE=\"string\" NAME=\"" + property +
                    "\"><VALUE>" + value + "</VALUE></PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE>");
        changes += answer.empty() ? 0 : 1;
        acknowledged = answer.empty() ? acknowledged : value;
    }
    void expectAcknowledged(Client& client, bool orRestored = false) const {
        const std::string answer = ask(client, "GetInstance", "\"InstanceName\">", "");
        const std::size_t start = answer.find("<VALUE>", answer.find("<PROPERTY NAME=\"" + property + "\"")) + 7;
        const std::string found = answer.substr(std::min(start, answer.size()), answer.find('<', start) - start);
        EXPECT_TRUE(found == acknowledged || (orRestored && found.empty()))
            << id << " is " << found << ", not " << acknowledged;
    }
};

void readAndInvoke(Client& client) {
    ask(client, "EnumerateInstances", "",
        "<IMETHODCALL NAME=\"EnumerateInstances\">" + kNamespace +
            R"(<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="QTX_CDRPushSetting"/></IPARAMVALUE></IMETHODCALL>)");
    ask(client, "Refresh", "%3AQTX_CDRPushStatistics.Name%3D%22CDRPushStatistic%22",
        "<METHODCALL NAME=\"Refresh\"><LOCALINSTANCEPATH>" + kNamespace +
            R"(<INSTANCENAME CLASSNAME="QTX_CDRPushStatistics"><KEYBINDING NAME="Name"><KEYVALUE>CDRPushStatistic</KEYVALUE>)"
            "</KEYBINDING></INSTANCENAME></LOCALINSTANCEPATH></METHODCALL>");
}

/// All clients at once. A client that finds its row in use reads and invokes meanwhile.
void use(std::uint16_t port, std::list<Row>& rows, std::chrono::milliseconds time, bool beside) {
    const auto end = Clock::now() + time;
    std::vector<std::thread> clients;
    for (std::size_t i = 0; i < kClients; ++i) {
        clients.emplace_back([&rows, port, end, beside, i] {
            Client client(port);
            for (std::size_t round = i; Clock::now() < end && !testing::Test::HasFailure(); ++round, ++rounds) {
                Row& row = *std::next(rows.begin(), static_cast<long>(round % rows.size()));
                const std::unique_lock<std::mutex> lock(row.mutex, std::try_to_lock);
                if (lock.owns_lock()) {
                    row.change(client);
                    row.expectAcknowledged(client, beside);
                } else {
                    readAndInvoke(client);
                }
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
}

TEST(Soak, EveryAcknowledgedChangeIsThere) {
    const char* const wanted = getenv("CDR_SOAK");
    const std::chrono::milliseconds time(wanted == nullptr ? 2000 : 1000 * std::atoi(wanted));
    std::list<Row> rows;
    for (const char number : std::string("0123456701234")) {
        const std::string name = rows.size() < 8 ? "Prefix" : "Access";
        Row& row = rows.emplace_back();
        row.className = "QTX_CDRService" + name + "Bin";
        row.property = name + "Bin";
        row.id = "CDRService" + name + "Bin_" + number;
    }
    lab::Lab lab;
    lab.run("zporeg set CDR CDRService 'PREFIX BIN' --binary $(yes 0c | head -64 | tr -d '\\n')");
    lab.run("zporeg set CDR CDRService 'ACCESS BIN' --binary $(yes 0c0c0c0c0c00 | head -5 | tr -d '\\n')");
    EXPECT_THAT(lab.run("zporeg backup $LAB/empty"), testing::EndsWith(" entries saved\n"));
    lab.start("--preload CDRProvider --concurrent-provider CDRProvider");
    const auto port = [&lab] { return static_cast<std::uint16_t>(std::stoi(support::contentOf(lab / "port"))); };
    const pid_t restores = support::startChild([] {
        const char* const loop =
            "until [ -e $LAB/stop ]; do zporeg restore $LAB/empty >>$LAB/restores || exit 1; sleep 0.1; done";
        return support::become({"sh", "-c", loop});
    });
    use(port(), rows, time * 3 / 4, true);
    support::writeFile(lab / "stop", "");
    EXPECT_EQ(0, support::waitForChild(restores));
    Client one(port());
    for (Row& row : rows) {
        row.change(one);
    }
    use(port(), rows, time / 4, false);
    lab.stop();
    lab.start();
    Client after(port());
    for (const Row& row : rows) {
        row.expectAcknowledged(after);
    }
    EXPECT_GT(changes, rows.size());
    std::printf("%u rounds, %u changes acknowledged, %u requests refused for load, %zu restores\n", rounds.load(),
                changes.load(), refused.load(), support::countOf("restored", support::contentOf(lab / "restores")));
}

} // namespace
