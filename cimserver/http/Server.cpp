#include "cimserver/http/Server.hpp"

#include "cimserver/common/Log.hpp"
#include "cimserver/http/Access.hpp"
#include "cimserver/http/Connection.hpp"
#include "cimserver/http/Tls.hpp"

#include <boost/asio/post.hpp>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <future>
#include <map>
#include <thread>

namespace cimserver::http {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::size_t kRefusalSlots = 64;    ///< connections over the limit that are answered with 503
constexpr std::size_t kPeerRefusalSlots = 8; ///< the same of one address
constexpr int kSocketBuffer = 65536;
constexpr Milliseconds kAcceptPause{100};
constexpr Milliseconds kStopPoll{5};

/// Makes sure of a file descriptor for each connection, and some for the rest of the process.
void raiseDescriptorLimit(std::size_t connections) {
    rlimit limit{};
    const rlim_t wanted = connections + kRefusalSlots + 100;
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

/// Who connects: the address, or for IPv6 the network, of which a peer can use all addresses.
asio::ip::address peerOf(const asio::ip::address& address) {
    if (address.is_v4()) {
        return address;
    }
    auto bytes = address.to_v6().to_bytes();
    if (address.to_v6().is_v4_mapped()) {
        return make_address_v4(asio::ip::v4_mapped, address.to_v6());
    }
    if (!address.is_loopback()) {
        std::fill(bytes.begin() + 8, bytes.end(), std::uint8_t{0});
    }
    return asio::ip::address_v6(bytes);
}

std::size_t peerCap(const Limits& limits, const asio::ip::address& peer) {
    const auto given = peer.is_loopback() ? limits.loopbackConnections : limits.peerConnections;
    return given != 0 ? given : std::max<std::size_t>(1, limits.connections / (peer.is_loopback() ? 2 : 4));
}

} // namespace

struct Server::Core {
    struct Acceptor {
        Listener listener;
        tcp::acceptor socket;
        asio::steady_timer pause;
    };

    Core(const Settings& settings, Application application) : services(settings, std::move(application)) {
        const auto& listeners = settings.listeners;
        if (std::any_of(listeners.begin(), listeners.end(), [](const Listener& one) { return one.tls; })) {
            tls = makeTlsContext(settings.tls);
        }
        services.onClosed = [this](Connection& connection) { forget(connection); };
    }

    Listener open(const Listener& listener);
    void accept(Acceptor& acceptor);
    void take(const Acceptor& acceptor, tcp::socket socket);
    std::size_t connectionsOf(const asio::ip::address& peer) const;
    bool makeRoom(const asio::ip::address& peer);
    void forget(Connection& connection);
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
    std::vector<std::unique_ptr<Acceptor>> acceptors;
    struct Entry {
        std::shared_ptr<Connection> connection;
        asio::ip::address peer;
    };
    std::map<std::uint64_t, Entry> connections;     ///< the oldest first; I/O thread only, and so the next
    std::map<asio::ip::address, std::size_t> peers; ///< how many connections each has
    std::uint64_t accepted = 0;
    std::thread ioThread;
    std::atomic<bool> pulse{true}; ///< false: asked for, and not answered yet
    bool stopped = false;
};

Listener Server::Core::open(const Listener& listener) {
    const tcp::endpoint endpoint(asio::ip::make_address(listener.address), listener.port);
    auto acceptor =
        std::make_unique<Acceptor>(Acceptor{listener, tcp::acceptor(services.io), asio::steady_timer(services.io)});
    error_code error;
    auto& socket = acceptor->socket;
    socket.open(endpoint.protocol(), error);
    if (!error) {
        socket.set_option(tcp::acceptor::reuse_address(true), error);
        socket.bind(endpoint, error);
    }
    if (!error) {
        socket.listen(tcp::acceptor::max_listen_connections, error);
    }
    if (error) {
        throw ListenError("cannot listen on " + listener.url() + ": " + error.message(),
                          error == asio::error::address_in_use || error.value() == EADDRNOTAVAIL);
    }
    acceptor->listener.port = socket.local_endpoint().port();
    acceptors.push_back(std::move(acceptor));
    return acceptors.back()->listener;
}

void Server::Core::accept(Acceptor& acceptor) {
    acceptor.socket.async_accept([this, &acceptor](const error_code& error, tcp::socket socket) {
        if (!acceptor.socket.is_open()) {
            return;
        }
        if (!error) {
            take(acceptor, std::move(socket));
            return accept(acceptor);
        }
        // Out of descriptors or memory: other connections will end; retrying at once would only burn processor time.
        services.refusals.write("a connection: " + error.message(), Clock::now());
        acceptor.pause.expires_after(kAcceptPause);
        acceptor.pause.async_wait([this, &acceptor](const error_code& cancelled) {
            if (!cancelled && acceptor.socket.is_open()) {
                accept(acceptor);
            }
        });
    });
}

std::size_t Server::Core::connectionsOf(const asio::ip::address& peer) const {
    const auto found = peers.find(peer);
    return found == peers.end() ? 0 : found->second;
}

/// Whether one more connection of the peer is within the caps; one that no user has used yet gives way to it: one of
/// its own when the peer has its share.
bool Server::Core::makeRoom(const asio::ip::address& peer) {
    const auto& limits = services.settings.limits;
    const bool hasShare = connectionsOf(peer) >= peerCap(limits, peer);
    if (!hasShare && connections.size() < limits.connections) {
        return true;
    }
    for (const auto& [number, entry] : connections) {
        if ((!hasShare || entry.peer == peer) && entry.connection->isDispensable()) {
            entry.connection->close();
            return true;
        }
    }
    return false;
}

void Server::Core::forget(Connection& connection) {
    const auto found = connections.find(connection.number());
    if (--peers[found->second.peer] == 0) {
        peers.erase(found->second.peer);
    }
    connections.erase(found);
}

void Server::Core::take(const Acceptor& acceptor, tcp::socket socket) {
    error_code error;
    const auto end = socket.remote_endpoint(error);
    if (error) {
        return;
    }
    const auto peer = peerOf(end.address());
    const auto& limits = services.settings.limits;
    const bool over = !makeRoom(peer);
    const auto count = connectionsOf(peer);
    if (over) {
        services.counters.refusedConnection();
        services.refusals.write(end.address().to_string() + ": " + std::to_string(count) + " of " +
                                    std::to_string(connections.size()) + " connections are its",
                                Clock::now());
    }
    if (over && (connections.size() >= limits.connections + kRefusalSlots ||
                 count >= peerCap(limits, peer) + kPeerRefusalSlots)) {
        return;
    }
    services.counters.connected();
    socket.set_option(tcp::no_delay(true), error);
    // What is in the system's buffers does not count as memory of requests and answers.
    socket.set_option(tcp::socket::send_buffer_size(kSocketBuffer), error);
    socket.set_option(tcp::socket::receive_buffer_size(kSocketBuffer), error);
    auto stream = acceptor.listener.tls ? makeTlsStream(std::move(socket), tls) : makePlainStream(std::move(socket));
    const Sender sender{++accepted, end.address().to_string(), std::to_string(end.port()), peer.to_string()};
    auto connection = std::make_shared<Connection>(services, std::move(stream), sender, over);
    ++peers[peer];
    connections.emplace(accepted, Entry{connection, peer});
    connection->start();
}

void Server::Core::beginStop() {
    services.stopping = true;
    for (auto& acceptor : acceptors) {
        acceptor->socket.close();
        acceptor->pause.cancel();
    }
    const auto all = connections; // a copy, because stop() removes connections
    for (const auto& [number, entry] : all) {
        entry.connection->stop();
    }
}

Server::Server(const Settings& settings, Application application)
    : core_(std::make_shared<Core>(settings, std::move(application))) {}

Server::~Server() {
    stop(Milliseconds(0));
}

std::vector<Listener> Server::start() {
    auto& core = *core_;
    std::vector<Listener> bound;
    core.acceptors.clear(); // of an attempt that failed
    for (const auto& listener : core.services.settings.listeners) {
        bound.push_back(core.open(listener));
    }
    raiseDescriptorLimit(core.services.settings.limits.connections);
    for (auto& acceptor : core.acceptors) {
        core.accept(*acceptor);
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
        std::this_thread::sleep_for(kStopPoll);
        finished = left() == 0;
    }
    core.services.io.stop();
    core.ioThread.join();
    return finished;
}

void Server::reload() {
    auto& core = *core_;
    core.onIoThread([&core] {
        if (core.services.dump) {
            core.services.dump->reopen();
        }
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

bool Server::responds() {
    auto& core = *core_;
    if (!core.pulse.exchange(false)) {
        return false;
    }
    asio::post(core.services.io, [&core] { core.pulse = true; });
    return true;
}

std::string Server::statistics() const {
    return core_->services.counters.text();
}

} // namespace cimserver::http
