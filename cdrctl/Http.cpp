#include "cdrctl/Http.hpp"

#include "cimserver/common/Text.hpp"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/core/detail/base64.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/ssl.hpp>

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace cdrctl {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
namespace ssl = boost::asio::ssl;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::size_t kLargestAnswer = std::size_t{16} << 20U;

/// Runs asynchronous steps one at a time, because only those have a time limit.
class Steps {
  public:
    explicit Steps(std::string url) : url_(std::move(url)) {}

    asio::io_context& context() { return context_; }

    /// `start` begins a step and is given its handler; throws ConnectError "URL: cannot WHAT: ..." when it fails.
    template <class Start>
    void run(const char* what, Start start) {
        error_code result = asio::error::would_block;
        start([&result](error_code error, const auto&...) { result = error; });
        context_.restart();
        context_.run();
        if (result) {
            const bool plain = result == http::error::end_of_stream && url_.compare(0, 5, "http:") == 0;
            throw ConnectError(url_ + ": cannot " + what + ": " + result.message() +
                               (plain ? " (does it want https://?)" : ""));
        }
    }

  private:
    std::string url_;
    asio::io_context context_;
};

std::string basicCredentials(const Access& access) {
    const std::string plain = access.user + ":" + access.password;
    std::string encoded(beast::detail::base64::encoded_size(plain.size()), '\0');
    encoded.resize(beast::detail::base64::encode(encoded.data(), plain.data(), plain.size()));
    return "Basic " + encoded;
}

using Request = http::request<http::string_body>;

Request makeRequest(const Address& address, const Access& access, const HeaderFields& fields, const std::string& body) {
    Request request{http::verb::post, address.target, 11};
    const bool ipv6 = address.host.find(':') != std::string::npos;
    request.set(http::field::host, (ipv6 ? "[" + address.host + "]" : address.host) + ":" + address.port);
    request.set(http::field::user_agent, "cdrctl/" CDRCTL_VERSION);
    request.set(http::field::connection, "close");
    if (!access.user.empty()) {
        request.set(http::field::authorization, basicCredentials(access));
    }
    for (const auto& [name, value] : fields) {
        request.set(name, value);
    }
    request.body() = body;
    request.prepare_payload();
    return request;
}

template <class Stream>
Answer exchange(Steps& steps, Stream& stream, const Access& access, const Request& request) {
    beast::get_lowest_layer(stream).expires_after(access.timeout);
    steps.run("send the request", [&](auto handler) { http::async_write(stream, request, handler); });
    beast::get_lowest_layer(stream).expires_after(access.timeout);
    beast::flat_buffer buffer;
    http::response_parser<http::string_body> parser;
    parser.body_limit(kLargestAnswer);
    // First the header, so that the limit is seen before the body's memory is taken.
    steps.run("read the answer", [&](auto handler) { http::async_read_header(stream, buffer, parser, handler); });
    steps.run("read the answer", [&](auto handler) { http::async_read(stream, buffer, parser, handler); });
    const auto& response = parser.get();
    return {response.result_int(), std::string(response["CIMError"]), response.body()};
}

void check(const error_code& error, const char* what, const std::string& file) {
    if (error) {
        throw ConnectError(std::string("cannot use the ") + what + " " + file + ": " + error.message());
    }
}

/// OpenSSL's messages do not say why it cannot open a file.
void checkReadable(const std::string& file) {
    if (!file.empty() && ::access(file.c_str(), R_OK) != 0) {
        throw ConnectError("cannot read " + file + ": " + std::strerror(errno));
    }
}

void setUpTls(ssl::context& context, const Access& access) {
    for (const std::string& file : {access.caFile, access.certificateFile, access.keyFile}) {
        checkReadable(file);
    }
    error_code error;
    if (access.caFile.empty()) {
        context.set_default_verify_paths(error);
    } else {
        context.load_verify_file(access.caFile, error);
        check(error, "authorities' certificates", access.caFile);
    }
    if (!access.certificateFile.empty()) {
        context.use_certificate_chain_file(access.certificateFile, error);
        check(error, "certificate", access.certificateFile);
        const std::string& key = access.keyFile.empty() ? access.certificateFile : access.keyFile;
        context.use_private_key_file(key, ssl::context::pem, error);
        check(error, "key", key);
    }
    SSL_CTX_set_min_proto_version(context.native_handle(), TLS1_2_VERSION);
    context.set_verify_mode(access.insecure ? ssl::verify_none : ssl::verify_peer);
}

using TlsStream = beast::ssl_stream<beast::tcp_stream>;

/// What OpenSSL found wrong with the server's certificate; empty when the handshake failed for another reason.
std::string certificateProblem(TlsStream& stream) {
    const long result = SSL_get_verify_result(stream.native_handle());
    return result == X509_V_OK ? "" : X509_verify_cert_error_string(result);
}

void handshake(Steps& steps, TlsStream& stream, const Address& address, const Access& access) {
    error_code notAnAddress;
    asio::ip::make_address(address.host, notAnAddress);
    SSL* const tls = stream.native_handle();
    if (notAnAddress) { // a name: a server of several needs to know which is meant
        SSL_set_tlsext_host_name(tls, address.host.c_str());
        SSL_set1_host(tls, address.host.c_str());
    } else {
        X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(tls), address.host.c_str());
    }
    beast::get_lowest_layer(stream).expires_after(access.timeout);
    try {
        steps.run("agree on TLS", [&](auto handler) { stream.async_handshake(ssl::stream_base::client, handler); });
    } catch (const ConnectError& error) {
        const std::string problem = certificateProblem(stream);
        if (problem.empty()) {
            throw ConnectError(std::string(error.what()) + " (does it speak TLS there?)");
        }
        throw ConnectError(address.url() + ": the server's certificate is not trusted: " + problem +
                           " (--cacert FILE names the authority that signed it)");
    }
}

void connect(Steps& steps, beast::tcp_stream& stream, const Address& address, const Access& access) {
    tcp::resolver resolver(steps.context());
    tcp::resolver::results_type results;
    steps.run("find the host", [&](auto handler) {
        resolver.async_resolve(address.host, address.port, [&results, handler](error_code error, auto found) mutable {
            results = found;
            handler(error);
        });
    });
    stream.expires_after(access.timeout);
    steps.run("connect", [&](auto handler) { stream.async_connect(results, handler); });
    stream.socket().set_option(tcp::no_delay(true));
}

} // namespace

Address Address::parse(const std::string& text) {
    Address address;
    std::string rest = text;
    const auto scheme = rest.find("://");
    if (scheme != std::string::npos) {
        const std::string name = cimserver::folded(rest.substr(0, scheme));
        if (name != "http" && name != "https") {
            throw std::invalid_argument("'" + text + "' is neither http nor https");
        }
        address.tls = name == "https";
        rest.erase(0, scheme + 3);
    }
    const auto slash = rest.find('/');
    address.target = slash == std::string::npos || slash + 1 == rest.size() ? "/cimom" : rest.substr(slash);
    rest.resize(std::min(slash, rest.size()));
    if (rest.find('@') != std::string::npos) {
        throw std::invalid_argument("a user is given by --user, not in the address");
    }
    const auto bracket = rest.rfind(']');
    const auto colon = rest.find(':', bracket == std::string::npos ? 0 : bracket);
    address.port = colon == std::string::npos ? (address.tls ? "5989" : "5988") : rest.substr(colon + 1);
    address.host = rest.substr(0, colon);
    if (bracket != std::string::npos && address.host.size() > 2 && address.host[0] == '[') {
        address.host = address.host.substr(1, bracket - 1);
    }
    const bool number = address.port.find_first_not_of("0123456789") == std::string::npos;
    if (address.host.empty() || address.port.empty() || address.port.size() > 5 || !number) {
        throw std::invalid_argument("'" + text + "' is not HOST, HOST:PORT or a URL");
    }
    return address;
}

std::string Address::url() const {
    const std::string shown = host.find(':') == std::string::npos ? host : "[" + host + "]";
    return std::string(tls ? "https" : "http") + "://" + shown + ":" + port;
}

bool Address::isLoopback() const {
    error_code error;
    const auto address = asio::ip::make_address(host, error);
    return error ? cimserver::equalsIgnoringCase(host, "localhost") : address.is_loopback();
}

Answer post(const Address& address, const Access& access, const HeaderFields& fields, const std::string& body) {
    Steps steps(address.url());
    const Request request = makeRequest(address, access, fields, body);
    if (!address.tls) {
        beast::tcp_stream stream(steps.context());
        connect(steps, stream, address, access);
        return exchange(steps, stream, access, request);
    }
    ssl::context context(ssl::context::tls_client);
    setUpTls(context, access);
    TlsStream stream(steps.context(), context);
    connect(steps, beast::get_lowest_layer(stream), address, access);
    handshake(steps, stream, address, access);
    return exchange(steps, stream, access, request);
}

} // namespace cdrctl
