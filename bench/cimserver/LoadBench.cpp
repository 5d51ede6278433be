// Load on a running server: requests per second over keep-alive connections, and how long one client waits while
// hundreds of others are silent. Starts cimserverd with the module, the schema and the factory settings in a folder of
// its own, or uses the server at --port.
#include <CLI/CLI.hpp>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// A keep-alive connection. ask() waits for the answer.
class Connection {
  public:
    explicit Connection(int port) : fd_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const int on = 1;
        ::setsockopt(fd_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw std::runtime_error("cannot connect to port " + std::to_string(port));
        }
    }
    ~Connection() { ::close(fd_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void send(const std::string& bytes) {
        if (::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("the server closed the connection");
        }
    }
    void ask(const std::string& request) {
        send(request);
        readUntil([this] { return headEnd() != std::string::npos; });
        const auto end = headEnd() + 4;
        const auto length = std::stoul(answer_.substr(answer_.find("Content-Length: ") + 16));
        readUntil([&] { return answer_.size() >= end + length; });
        if (answer_.compare(0, 12, "HTTP/1.1 200") != 0 || answer_.find("<ERROR ") != std::string::npos) {
            throw std::runtime_error("unexpected answer: " + answer_);
        }
        answer_.erase(0, end + length);
    }

  private:
    std::size_t headEnd() const { return answer_.find("\r\n\r\n"); }
    void readUntil(const std::function<bool()>& complete) {
        char bytes[65536];
        while (!complete()) {
            const auto size = ::recv(fd_, bytes, sizeof bytes, 0);
            if (size <= 0) {
                throw std::runtime_error("the server closed the connection");
            }
            answer_.append(bytes, static_cast<std::size_t>(size));
        }
    }

    int fd_;
    std::string answer_;
};

std::string request(const std::string& method, const std::string& parameters) {
    const auto body =
        R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
        R"(<MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ><IMETHODCALL NAME=")" +
        method + R"("><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH>)" +
        parameters + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
    return "POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml; charset=\"utf-8\"\r\n"
           "CIMOperation: MethodCall\r\nCIMMethod: " +
           method + "\r\nCIMObject: root%2Fcimv2\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string key(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE VALUETYPE=\"string\">" + value + "</KEYVALUE></KEYBINDING>";
}

std::string serviceName() {
    return "<INSTANCENAME CLASSNAME=\"QTX_CDRService\">" + key("SystemCreationClassName", "QTX_System") +
           key("SystemName", "QTX") + key("CreationClassName", "QTX_CDRService") + key("Name", "CDRService") +
           "</INSTANCENAME>";
}

std::string getInstance() {
    return request("GetInstance", "<IPARAMVALUE NAME=\"InstanceName\">" + serviceName() + "</IPARAMVALUE>");
}

std::string enumerate(const std::string& className) {
    return request("EnumerateInstances",
                   "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"" + className + "\"/></IPARAMVALUE>");
}

std::string modify(int value) {
    return request("ModifyInstance", "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE>" + serviceName() +
                                         "<INSTANCE CLASSNAME=\"QTX_CDRService\"><PROPERTY NAME=\"DigitsLimit\" "
                                         "TYPE=\"uint16\"><VALUE>" +
                                         std::to_string(value) +
                                         "</VALUE></PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE></IPARAMVALUE>");
}

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
    const auto text = getInstance();
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

/// A server of this program's own, in a temporary folder.
class Server {
  public:
    Server() {
        std::string folder = std::filesystem::temp_directory_path() / "bench-cimserver-XXXXXX";
        folder_ = ::mkdtemp(folder.data());
        for (const char* variable : {"ZPO_STATE_DIR", "ZPO_LOG_DIR", "ZPO_CRONTAB_DIR"}) {
            ::setenv(variable, folder_.c_str(), 1);
        }
        start({ZPOREG, "load", DEFAULTS});
        ::waitpid(child_, nullptr, 0);
        start({CIMSERVERD, "--mof", SCHEMA, "--provider-dir", MODULES, "--listen", "127.0.0.1:0", "--port-file",
               folder_ + "/port", "--log-file", folder_ + "/log"});
    }
    ~Server() {
        ::kill(child_, SIGTERM);
        ::waitpid(child_, nullptr, 0);
        std::filesystem::remove_all(folder_);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    int port() const {
        int port = 0;
        for (int i = 0; i < 1000 && !(std::ifstream(folder_ + "/port") >> port); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return port;
    }
    void printMemory() const {
        std::ifstream status("/proc/" + std::to_string(child_) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.rfind("VmHWM", 0) == 0) {
                std::printf("resident at most: %s\n", line.substr(6).c_str());
            }
        }
    }

  private:
    void start(std::vector<std::string> arguments) {
        child_ = ::fork();
        if (child_ != 0) {
            return;
        }
        std::vector<char*> texts;
        texts.reserve(arguments.size() + 1);
        for (auto& argument : arguments) {
            texts.push_back(argument.data());
        }
        texts.push_back(nullptr);
        ::execv(texts[0], texts.data());
        ::_exit(127);
    }

    std::string folder_;
    pid_t child_ = -1;
};

void measure(int port, std::chrono::milliseconds time) {
    for (const unsigned connections : {1U, 4U}) {
        measureRate(port, "GetInstance, 25 properties", connections, time,
                    [text = getInstance()](int) { return text; });
        measureRate(port, "EnumerateInstances, prefix bins", connections, time,
                    [text = enumerate("QTX_CDRServicePrefixBin")](int) { return text; });
        measureRate(port, "ModifyInstance, one property", connections, time,
                    [](int number) { return modify(number % 2 + 10); });
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
            const Server server;
            measure(server.port(), std::chrono::milliseconds(milliseconds));
            server.printMemory();
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_cimserver: %s\n", error.what());
        return 1;
    }
}
