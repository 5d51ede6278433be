// What a request costs at least with the same HTTP library and as many threads: reads it, hands it to a worker, and
// writes a body of as many bytes as the path says. Takes the file to write its port to.
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using boost::system::error_code;

constexpr unsigned kWorkers = 4; // cimserverd's default
constexpr std::size_t kMostBytes = 10'000'000;

class Session : public std::enable_shared_from_this<Session> {
  public:
    Session(tcp::socket socket, asio::thread_pool& workers) : socket_(std::move(socket)), workers_(workers) {
        socket_.set_option(tcp::no_delay(true));
    }

    void read() {
        request_ = {};
        http::async_read(socket_, buffer_, request_, [self = shared_from_this()](const error_code& error, std::size_t) {
            if (!error) {
                asio::post(self->workers_, [self] { self->work(); });
            }
        });
    }

  private:
    void work() {
        const std::string path(request_.target());
        response_ = {http::status::ok, 11};
        response_.set(http::field::content_type, "application/xml; charset=\"utf-8\"");
        response_.body().assign(std::min(kMostBytes, std::strtoul(path.c_str() + 1, nullptr, 10)), 'x');
        response_.prepare_payload();
        asio::post(socket_.get_executor(), [self = shared_from_this()] { self->write(); });
    }
    void write() {
        http::async_write(socket_, response_, [self = shared_from_this()](const error_code& error, std::size_t) {
            if (!error) {
                self->read();
            }
        });
    }

    tcp::socket socket_;
    asio::thread_pool& workers_;
    boost::beast::flat_buffer buffer_;
    http::request<http::string_body> request_;
    http::response<http::string_body> response_;
};

void accept(tcp::acceptor& acceptor, asio::thread_pool& workers) {
    acceptor.async_accept([&](const error_code& error, tcp::socket socket) {
        if (!error) {
            std::make_shared<Session>(std::move(socket), workers)->read();
        }
        accept(acceptor, workers);
    });
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: floor_server PORTFILE\n");
        return 2;
    }
    asio::io_context io(1);
    asio::thread_pool workers(kWorkers);
    tcp::acceptor acceptor(io, {asio::ip::address_v4::loopback(), 0});
    acceptor.listen(tcp::acceptor::max_listen_connections);
    accept(acceptor, workers);
    std::ofstream(argv[1]) << acceptor.local_endpoint().port() << "\n";
    io.run();
}
