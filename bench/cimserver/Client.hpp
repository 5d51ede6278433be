// A small CIM-XML client over one keep-alive connection, and the requests that the benchmarks send.
#pragma once

#include <functional>
#include <string>

namespace bench {

/// A keep-alive connection to 127.0.0.1. Every function throws std::runtime_error when the server does not play along.
class Connection {
  public:
    explicit Connection(int port);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void send(const std::string& bytes);
    /// Waits for the answer, which must be a success. Returns its body.
    std::string ask(const std::string& request);
    int fd() const { return fd_; }

  private:
    std::size_t headEnd() const { return answer_.find("\r\n\r\n"); }
    void readUntil(const std::function<bool()>& complete);

    int fd_;
    std::string answer_;
};

/// An intrinsic operation on root/cimv2, as HTTP request; `parameters` are its IPARAMVALUE elements.
std::string request(const std::string& method, const std::string& parameters);
std::string keyBinding(const std::string& name, const std::string& value);
/// The name of the only instance of QTX_CDRService.
std::string serviceName();
std::string getInstance(const std::string& instanceName);
std::string getClass(const std::string& className);
std::string enumerate(const std::string& className, const std::string& method = "EnumerateInstances");
/// All instances in one answer, if there are at most `most`.
std::string openEnumeration(const std::string& className, int most);
/// Sets one property.
std::string modifyInstance(const std::string& className, const std::string& instanceName, const std::string& property,
                           const std::string& type, const std::string& value);

} // namespace bench
