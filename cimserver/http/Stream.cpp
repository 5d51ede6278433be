#include "cimserver/http/Stream.hpp"

#include "cimserver/http/Tls.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>

#include <array>

namespace cimserver::http {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

/// What both kinds share; `Next` is the layer that bytes go through.
template <class Next>
class SocketStream : public Stream {
  public:
    void read(char* to, std::size_t size, Done done) override {
        next().async_read_some(asio::buffer(to, size), std::move(done));
    }
    void write(const std::string& first, const std::string& second, Done done) override {
        const std::array<asio::const_buffer, 2> both{asio::buffer(first), asio::buffer(second)};
        asio::async_write(next(), both, std::move(done));
    }
    void close() override {
        error_code ignored;
        socket().close(ignored);
    }

  protected:
    void finishSocket(Done done) {
        error_code ignored;
        socket().shutdown(tcp::socket::shutdown_send, ignored);
        drop(std::move(done));
    }

  private:
    virtual Next& next() = 0;
    virtual tcp::socket& socket() = 0;

    void drop(Done done) {
        socket().async_read_some(asio::buffer(dropped_),
                                 [this, done = std::move(done)](const error_code& error, std::size_t) mutable {
                                     if (error) {
                                         done(error, 0);
                                     } else {
                                         drop(std::move(done));
                                     }
                                 });
    }

    std::array<char, 1024> dropped_{};
};

class PlainStream final : public SocketStream<tcp::socket> {
  public:
    explicit PlainStream(tcp::socket socket) : socket_(std::move(socket)) {}

    void handshake(Done done) override { done({}, 0); }
    void finish(Done done) override { finishSocket(std::move(done)); }
    std::string certificateUser() override { return {}; }

  private:
    tcp::socket& next() override { return socket_; }
    tcp::socket& socket() override { return socket_; }

    tcp::socket socket_;
};

class TlsStream final : public SocketStream<asio::ssl::stream<tcp::socket>> {
  public:
    TlsStream(tcp::socket socket, std::shared_ptr<asio::ssl::context> context)
        : context_(std::move(context)), stream_(std::move(socket), *context_) {}

    void handshake(Done done) override {
        stream_.async_handshake(asio::ssl::stream_base::server,
                                [done = std::move(done)](const error_code& error) { done(error, 0); });
    }
    void finish(Done done) override {
        // Our close_notify is sent by then, whether the peer answers it or keeps sending.
        stream_.async_shutdown(
            [this, done = std::move(done)](const error_code&) mutable { finishSocket(std::move(done)); });
    }
    std::string certificateUser() override { return verifiedCommonName(stream_.native_handle()); }

  private:
    asio::ssl::stream<tcp::socket>& next() override { return stream_; }
    tcp::socket& socket() override { return stream_.next_layer(); }

    std::shared_ptr<asio::ssl::context> context_; // keeps it alive over a reload
    asio::ssl::stream<tcp::socket> stream_;
};

} // namespace

std::unique_ptr<Stream> makePlainStream(tcp::socket socket) {
    return std::make_unique<PlainStream>(std::move(socket));
}

std::unique_ptr<Stream> makeTlsStream(tcp::socket socket, std::shared_ptr<asio::ssl::context> context) {
    return std::make_unique<TlsStream>(std::move(socket), std::move(context));
}

} // namespace cimserver::http
