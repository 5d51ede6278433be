// The operations of CIM-XML that cdrctl needs, on any server.
#pragma once

#include "cdrctl/Http.hpp"
#include "cdrctl/Model.hpp"

#include <string>
#include <vector>

namespace cdrctl {

/// One request each; none is repeated. All throw ConnectError, LoginError or CimFault.
class Client {
  public:
    Client(Address address, Access access, std::string nameSpace)
        : address_(std::move(address)), access_(std::move(access)), nameSpace_(std::move(nameSpace)) {}

    const Address& address() const { return address_; }

    /// The class with all properties and qualifiers.
    Object getClass(const std::string& name) const;
    /// The instances of the class, in the server's order.
    std::vector<Object> instances(const std::string& className) const;
    /// The first of them. Throws std::runtime_error when there is none.
    Object onlyInstance(const std::string& className) const;
    /// Sets the changed properties of the instance; keys of it are sent along, because some servers need them.
    void modify(const Object& instance, const std::vector<Property>& changed) const;
    /// Calls a method without parameters and returns what it returns.
    std::string invoke(const Object& instance, const std::string& method) const;

  private:
    std::string ask(const std::string& method, const std::string& object, const std::string& body) const;
    std::string operation(const std::string& name, const std::string& parameters) const;
    std::string namespacePath() const;

    Address address_;
    Access access_;
    std::string nameSpace_;
};

} // namespace cdrctl
