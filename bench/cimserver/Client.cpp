#include "Client.hpp"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace bench {

Connection::Connection(int port) : fd_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const int on = 1;
    ::setsockopt(fd_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(fd_);
        throw std::runtime_error("cannot connect to port " + std::to_string(port));
    }
}

Connection::~Connection() {
    ::close(fd_);
}

void Connection::send(const std::string& bytes) {
    if (::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("the server closed the connection");
    }
}

std::string Connection::ask(const std::string& request) {
    send(request);
    readUntil([this] { return headEnd() != std::string::npos; });
    const auto end = headEnd() + 4;
    const auto length = std::stoul(answer_.substr(answer_.find("Content-Length: ") + 16));
    readUntil([&] { return answer_.size() >= end + length; });
    if (answer_.compare(0, 12, "HTTP/1.1 200") != 0 || answer_.find("<ERROR ") != std::string::npos) {
        throw std::runtime_error("unexpected answer: " + answer_);
    }
    std::string body = answer_.substr(end, length);
    answer_.erase(0, end + length);
    return body;
}

void Connection::readUntil(const std::function<bool()>& complete) {
    char bytes[65536];
    while (!complete()) {
        const auto size = ::recv(fd_, bytes, sizeof bytes, 0);
        if (size <= 0) {
            throw std::runtime_error("the server closed the connection");
        }
        answer_.append(bytes, static_cast<std::size_t>(size));
    }
}

namespace {

std::string parameter(const std::string& name, const std::string& content) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + content + "</IPARAMVALUE>";
}

std::string className(const std::string& name) {
    return parameter("ClassName", "<CLASSNAME NAME=\"" + name + "\"/>");
}

} // namespace

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

std::string keyBinding(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE VALUETYPE=\"string\">" + value + "</KEYVALUE></KEYBINDING>";
}

std::string serviceName() {
    return "<INSTANCENAME CLASSNAME=\"QTX_CDRService\">" + keyBinding("SystemCreationClassName", "QTX_System") +
           keyBinding("SystemName", "QTX") + keyBinding("CreationClassName", "QTX_CDRService") +
           keyBinding("Name", "CDRService") + "</INSTANCENAME>";
}

std::string getInstance(const std::string& instanceName) {
    return request("GetInstance", parameter("InstanceName", instanceName));
}

std::string getClass(const std::string& name) {
    return request("GetClass", className(name));
}

std::string enumerate(const std::string& name, const std::string& method) {
    return request(method, className(name));
}

std::string openEnumeration(const std::string& name, int most) {
    return request("OpenEnumerateInstances",
                   className(name) + parameter("MaxObjectCount", "<VALUE>" + std::to_string(most) + "</VALUE>"));
}

std::string modifyInstance(const std::string& name, const std::string& instanceName, const std::string& property,
                           const std::string& type, const std::string& value) {
    return request("ModifyInstance",
                   parameter("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + instanceName + "<INSTANCE CLASSNAME=\"" +
                                                     name + "\"><PROPERTY NAME=\"" + property + "\" TYPE=\"" + type +
                                                     "\"><VALUE>" + value +
                                                     "</VALUE></PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE>"));
}

} // namespace bench
