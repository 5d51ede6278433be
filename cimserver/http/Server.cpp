#include "cimserver/http/Server.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/http/Access.hpp"
#include "cimserver/http/Connection.hpp"
#include "cimserver/http/Tls.hpp"

#include <boost/asio/post.hpp>
#include <sys/resource.h>

#include <algorithm>
#include <future>
#include <thread>
#include <unordered_map>

namespace cimserver::http {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::size_t RefusalSlots = 64; ///< connections over the cap that are kept long enough to be told so
constexpr Milliseconds AcceptPause{100};
constexpr Milliseconds StopPoll{5};

/// A file descriptor for each connection, and some for the rest of the process.
void raiseDescriptorLimit(std::size_t connections) {
    rlimit limit{};
    const rlim_t wanted = connections + RefusalSlots + 100;
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= wanted) {
        return;
    }
    limit.rlim_cur = std::min(limit.rlim_max, wanted);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur < wanted) {
        log::write(log::Level::Warning, "http",
                   "the limit of open files (" + std::to_string(limit.rlim_cur) + ") is too low for " +
                       std::to_string(connections) + " connections");
    }
}

} // namespace

struct Server::Core {
    struct Door {
        Listener listener;
        tcp::acceptor acceptor;
        asio::steady_timer pause;
    };

    Core(const Settings& settings, Application application) : services(settings, std::move(application)) {
        const auto& listeners = settings.listeners;
        if (std::any_of(listeners.begin(), listeners.end(), [](const Listener& one) { return one.tls; })) {
            tls = makeTlsContext(settings.tls);
        }
        services.onClosed = [this](Connection& connection) { connections.erase(&connection); };
    }

    Listener open(const Listener& listener);
    void accept(Door& door);
    void take(const Door& door, tcp::socket socket);
    void beginStop();
    /// Runs on the I/O thread and waits for it.
    template <class Action>
    auto onIoThread(Action action) {
        std::packaged_task<decltype(action())()> task(std::move(action));
        auto result = task.get_future();
        asio::post(services.io, std::move(task));
        return result.get();
    }

    Services services;
    std::shared_ptr<asio::ssl::context> tls; ///< I/O thread only once started
    std::vector<std::unique_ptr<Door>> doors;
    std::unordered_map<Connection*, std::shared_ptr<Connection>> connections; ///< I/O thread only
    std::thread ioThread;
    bool stopped = false;
};

Listener Server::Core::open(const Listener& listener) {
    const tcp::endpoint endpoint(asio::ip::make_address(listener.address), listener.port);
    auto door = std::make_unique<Door>(Door{listener, tcp::acceptor(services.io), asio::steady_timer(services.io)});
    error_code error;
    auto& acceptor = door->acceptor;
    acceptor.open(endpoint.protocol(), error);
    if (!error) {
        acceptor.set_option(tcp::acceptor::reuse_address(true), error);
        acceptor.bind(endpoint, error);
    }
    if (!error) {
        acceptor.listen(tcp::acceptor::max_listen_connections, error);
    }
    if (error) {
        throw ListenError("cannot listen on " + listener.url() + ": " + error.message());
    }
    door->listener.port = acceptor.local_endpoint().port();
    doors.push_back(std::move(door));
    return doors.back()->listener;
}

void Server::Core::accept(Door& door) {
    door.acceptor.async_accept([this, &door](const error_code& error, tcp::socket socket) {
        if (!door.acceptor.is_open()) {
            return;
        }
        if (!error) {
            take(door, std::move(socket));
            return accept(door);
        }
        // Out of descriptors or memory: others will end; trying on at once would only burn time.
        log::write(log::Level::Error, "http", "cannot accept a connection: " + error.message());
        door.pause.expires_after(AcceptPause);
        door.pause.async_wait([this, &door](const error_code& cancelled) {
            if (!cancelled && door.acceptor.is_open()) {
                accept(door);
            }
        });
    });
}

void Server::Core::take(const Door& door, tcp::socket socket) {
    error_code error;
    const auto peer = socket.remote_endpoint(error);
    const auto cap = services.settings.limits.connections;
    const bool over = connections.size() >= cap;
    if (over) {
        services.counters.refusedConnection();
    }
    if (error || connections.size() >= cap + RefusalSlots) {
        return;
    }
    services.counters.connected();
    socket.set_option(tcp::no_delay(true), error);
    auto stream = door.listener.tls ? makeTlsStream(std::move(socket), tls) : makePlainStream(std::move(socket));
    auto connection = std::make_shared<Connection>(services, std::move(stream), peer.address().to_string(),
                                                   std::to_string(peer.port()), over);
    connections.emplace(connection.get(), connection);
    connection->start();
}

void Server::Core::beginStop() {
    services.stopping = true;
    for (auto& door : doors) {
        door->acceptor.close();
        door->pause.cancel();
    }
    const auto all = connections; // stop() takes connections out
    for (const auto& [key, connection] : all) {
        connection->stop();
    }
}

Server::Server(const Settings& settings, Application application)
    : core_(std::make_shared<Core>(settings, std::move(application))) {}

Server::~Server() {
    stop(Milliseconds(0));
}

std::vector<Listener> Server::start() {
    auto& core = *core_;
    raiseDescriptorLimit(core.services.settings.limits.connections);
    std::vector<Listener> bound;
    for (const auto& listener : core.services.settings.listeners) {
        bound.push_back(core.open(listener));
    }
    for (auto& door : core.doors) {
        core.accept(*door);
    }
    core.ioThread = std::thread([&core] {
        const auto work = asio::make_work_guard(core.services.io);
        core.services.io.run();
    });
    return bound;
}

bool Server::stop(Milliseconds grace) {
    auto& core = *core_;
    if (core.stopped || !core.ioThread.joinable()) {
        return true;
    }
    core.stopped = true;
    core.onIoThread([&core] { core.beginStop(); });
    const auto end = Clock::now() + grace;
    const auto left = [&core] { return core.onIoThread([&core] { return core.connections.size(); }); };
    bool finished = left() == 0;
    while (!finished && Clock::now() < end) {
        std::this_thread::sleep_for(StopPoll);
        finished = left() == 0;
    }
    core.services.io.stop();
    core.ioThread.join();
    return finished;
}

void Server::reload() {
    auto& core = *core_;
    core.onIoThread([&core] {
        const auto attempt = [](const char* what, auto action) {
            try {
                action();
                log::write(log::Level::Info, "http", std::string("reloaded ") + what);
            } catch (const std::exception& error) {
                log::write(log::Level::Error, "http", std::string("kept the old ") + what + ": " + error.what());
            }
        };
        if (core.tls) {
            attempt("TLS certificate and key", [&core] { core.tls = makeTlsContext(core.services.settings.tls); });
        }
        if (core.services.access.enabled()) {
            attempt("users", [&core] { core.services.access.reload(); });
        }
    });
}

std::string Server::statistics() const {
    return core_->services.counters.text();
}

} // namespace cimserver::http
