// The two kinds of connections, plain and TLS, behind one interface. All on the I/O thread.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/system/error_code.hpp>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace cimserver::http {

class Stream {
  public:
    using Done = std::function<void(const boost::system::error_code&, std::size_t)>;

    virtual ~Stream() = default;
    /// TLS handshake; a plain stream is done at once (from within the call).
    virtual void handshake(Done done) = 0;
    /// Reads what is available, at most `size` bytes. `to` must stay valid until done.
    virtual void read(char* to, std::size_t size, Done done) = 0;
    /// Writes all of both texts, which must stay valid until done.
    virtual void write(const std::string& first, const std::string& second, Done done) = 0;
    /// Tells the peer that no more comes, then reads and drops what it still sends until it closes too: closing with
    /// unread bytes would reset the connection, and the client could lose the last answer.
    virtual void finish(Done done) = 0;
    /// Closes; operations under way end with an error, but one that had ended before may still report success.
    virtual void close() = 0;
    /// After the handshake; see verifiedCommonName(). Empty for a plain stream.
    virtual std::string certificateUser() = 0;
};

std::unique_ptr<Stream> makePlainStream(boost::asio::ip::tcp::socket socket);
std::unique_ptr<Stream> makeTlsStream(boost::asio::ip::tcp::socket socket,
                                      std::shared_ptr<boost::asio::ssl::context> context);

} // namespace cimserver::http
