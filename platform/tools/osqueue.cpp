// osqueue: creates, listens to, sends to and deletes the platform's message queues.

#include "CommandLine.hpp"
#include "QueueStatus.hpp"
#include "osa.h"

#include <cstdint>
#include <cstdio>
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
        throw std::runtime_error(name + ": " + zpo::queueStatusText(status));
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

void remove(const Request& request) {
    require(osQueueDelete(idOf(request.name)), request.name);
}

zpo::CommandLine::Command add(zpo::CommandLine& line, Request& request, const char* name, const char* help,
                              void (*work)(const Request&)) {
    return line.add(name, help, [&request, work] { work(request); })
        .argument("NAME", request.name, "the queue, for example CDRService");
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    zpo::CommandLine line("osqueue", "Works on the platform's message queues of ZPO_STATE_DIR (default /var/lib/zpo).");
    add(line, request, "create", "Create a queue unless it exists, and print its id", create);
    add(line, request, "listen", "Print messages as they come, one a line", listen)
        .option("--count", request.count, "stop after so many messages (default: never)")
        .option("--timeout", request.timeoutMs, "fail when no message comes for so many milliseconds");
    add(line, request, "send", "Send a message", send).argument("MESSAGE", request.message, "for example 0");
    add(line, request, "delete", "Delete a queue with its messages", remove);
    return line.run(argc, argv);
}
