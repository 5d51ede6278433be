// Load on a running server: requests per second over keep-alive connections, and how long one client waits while
// hundreds of others are silent. Starts cimserverd with the module, the schema and the factory settings in a folder of
// its own, or uses the server at --port.
#include "Client.hpp"
#include "LabServer.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace bench;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// Sends requests on `connections` connections for `time` and prints the rate. `make` builds a request from its number.
void measureRate(int port, const char* name, unsigned connections, std::chrono::milliseconds time,
                 const std::function<std::string(int)>& make) {
    std::atomic<std::uint64_t> done{0};
    const auto end = Clock::now() + time;
    std::vector<std::thread> clients;
    for (unsigned i = 0; i < connections; ++i) {
        clients.emplace_back([&] {
            Connection connection(port);
            for (int number = 0; Clock::now() < end; ++number, ++done) {
                connection.ask(make(number));
            }
        });
    }
    for (auto& client : clients) {
        client.join();
    }
    std::printf("%-42s %u connections  %8.0f requests/s\n", name, connections,
                static_cast<double>(done) / std::chrono::duration<double>(time).count());
}

/// Sends one request after the other and prints how long they took.
void measureLatency(int port, const char* name, int requests) {
    Connection connection(port);
    const auto text = getInstance(serviceName());
    std::vector<double> times;
    for (int i = 0; i < requests; ++i) {
        const auto begin = Clock::now();
        connection.ask(text);
        times.push_back(Microseconds(Clock::now() - begin).count());
    }
    std::sort(times.begin(), times.end());
    const auto at = [&times](double part) {
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    };
    std::printf("%-42s median %6.0f us  99%% %6.0f us  longest %6.0f us\n", name, at(0.5), at(0.99), at(1));
}

void measureBesideSilentClients(int port) {
    measureLatency(port, "GetInstance, alone", 2000);
    std::vector<std::unique_ptr<Connection>> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(std::make_unique<Connection>(port));
        others.push_back(std::make_unique<Connection>(port));
        others.back()->send("POST /cimom HTTP/1.1\r\nContent-Le");
    }
    measureLatency(port, "GetInstance, beside 200 idle, 200 half-sent", 2000);
}

void measure(int port, std::chrono::milliseconds time) {
    for (const unsigned connections : {1U, 4U}) {
        measureRate(port, "GetInstance, 25 properties", connections, time,
                    [text = getInstance(serviceName())](int) { return text; });
        measureRate(port, "EnumerateInstances, prefix bins", connections, time,
                    [text = enumerate("QTX_CDRServicePrefixBin")](int) { return text; });
        measureRate(port, "ModifyInstance, one property", connections, time, [](int number) {
            return modifyInstance("QTX_CDRService", serviceName(), "DigitsLimit", "uint16",
                                  std::to_string(number % 2 + 10));
        });
    }
    measureBesideSilentClients(port);
}

} // namespace

int main(int argc, char** argv) {
    int port = 0;
    int milliseconds = 2000;
    CLI::App app("Measures a CIM server under load.");
    app.add_option("--port", port, "a running server on 127.0.0.1; without: one of its own");
    app.add_option("--time", milliseconds, "milliseconds a measurement")->capture_default_str();
    app.allow_extras(); // options of other benchmarks
    CLI11_PARSE(app, argc, argv);
    try {
        if (port != 0) {
            measure(port, std::chrono::milliseconds(milliseconds));
        } else {
            const LabServer server;
            measure(server.port(), std::chrono::milliseconds(milliseconds));
            std::printf("resident at most: %zu KiB\n", server.memory("VmHWM"));
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_cimserver: %s\n", error.what());
        return 1;
    }
}
