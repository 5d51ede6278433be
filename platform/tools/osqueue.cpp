// osqueue: lists, creates, listens to, sends to and deletes the platform's message queues.

#include "CommandLine.hpp"
#include "Owner.hpp"
#include "QueueFile.hpp"
#include "StatusText.hpp"
#include "osa.h"

#include <cstdint>
#include <cstdio>
#include <fmt/format.h>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

struct Request {
    std::string name, message;
    int timeoutMs = -1;
    unsigned count = 0;
};

void require(std::uint32_t status, const std::string& name) {
    if (status != OSA_OK) {
        throw std::runtime_error(name + ": " + zpo::statusText(status));
    }
}

std::uint32_t idOf(const std::string& name) {
    std::uint32_t id = 0;
    require(osQueueGetId(name.c_str(), &id), name);
    return id;
}

void create(const Request& request) {
    std::uint32_t id = 0;
    require(osQueueCreate(request.name.c_str(), &id), request.name);
    std::printf("%u\n", id);
}

void listen(const Request& request) {
    std::uint32_t id = 0;
    require(osQueueCreate(request.name.c_str(), &id), request.name);
    for (unsigned received = 0; request.count == 0 || received < request.count; ++received) {
        char buffer[OSA_MAX_MESSAGE];
        std::uint32_t length = 0;
        require(osQueueReceive(id, buffer, sizeof buffer, &length, request.timeoutMs), request.name);
        std::fwrite(buffer, 1, length, stdout);
        std::putchar('\n');
        std::fflush(stdout); // the reader of a pipe sees each message at once
    }
}

void send(const Request& request) {
    const auto length = static_cast<std::uint32_t>(request.message.size());
    require(osQueueSend(idOf(request.name), request.message.data(), length), request.name);
}

std::string userName(unsigned id) {
    const passwd* const entry = getpwuid(id);
    return entry != nullptr ? entry->pw_name : std::to_string(id);
}

std::string groupName(unsigned id) {
    const group* const entry = getgrgid(id);
    return entry != nullptr ? entry->gr_name : std::to_string(id);
}

// What the kernel shows of each queue to everybody: "MESSAGES BYTES OWNER GROUP MODE"; dashes when it shows none.
std::string kernelsView(int id) {
    std::ifstream table("/proc/sysvipc/msg");
    std::string line;
    while (std::getline(table, line)) {
        std::istringstream fields(line);
        long long key = 0;
        int queue = -1;
        std::string mode, bytes, messages;
        unsigned sender = 0, receiver = 0, user = 0, owningGroup = 0;
        if (fields >> key >> queue >> mode >> bytes >> messages >> sender >> receiver >> user >> owningGroup &&
            queue == id) {
            return fmt::format("{} {} {} {} {}", messages, bytes, userName(user), groupName(owningGroup), mode);
        }
    }
    return "- - - - -";
}

void list() {
    for (const std::string& name : zpo::queueNames()) {
        zpo::QueueIdentity identity;
        const std::uint32_t status = zpo::readQueueFile(name, identity);
        if (status == OSA_OK || status == OSA_NO_ACCESS) {
            const std::string id = identity.id < 0 ? "-" : std::to_string(identity.id);
            std::printf("%s %s %s %s\n", name.c_str(), id.c_str(), kernelsView(identity.id).c_str(),
                        status == OSA_OK ? "usable" : "no-access");
        } else {
            std::printf("%s - - - - - - gone\n", name.c_str());
        }
    }
}

void remove(const Request& request) {
    require(osQueueDelete(idOf(request.name)), request.name);
}

zpo::CommandLine::Command add(zpo::CommandLine& line, Request& request, const char* name, const char* help,
                              void (*work)(const Request&)) {
    return line
        .add(name, help,
             [&request, work] {
                 zpo::actAsOwnerOfState();
                 work(request);
             })
        .argument("NAME", request.name, "the queue, for example CDRService");
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    zpo::CommandLine line("osqueue", "Works on the platform's message queues of ZPO_STATE_DIR (default /var/lib/zpo).\n"
                                     "For root it acts as the owner of that directory.");
    line.add("list", "Print a line for each queue: NAME ID MESSAGES BYTES OWNER GROUP MODE usable|no-access|gone", [] {
        zpo::actAsOwnerOfState();
        list();
    });
    add(line, request, "create", "Create a queue unless it exists, and print its id", create);
    add(line, request, "listen", "Print messages as they come, one a line", listen)
        .option("--count", request.count, "stop after so many messages (default: never)")
        .option("--timeout", request.timeoutMs, "fail when no message comes for so many milliseconds");
    add(line, request, "send", "Send a message", send).argument("MESSAGE", request.message, "for example 0");
    add(line, request, "delete", "Delete a queue with its messages", remove);
    return line.run(argc, argv);
}
