// What can go wrong between client and server; each kind has an exit code of its own.
#pragma once

#include <stdexcept>
#include <string>

namespace cdrctl {

/// The server cannot be reached or does not speak CIM-XML over HTTP, or its certificate is not trusted.
class ConnectError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The server wants a user, or does not accept this one.
class LoginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The command line is wrong in a way that shows only when it is carried out.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The server answered with a CIM error; what() is its text.
class CimFault : public std::runtime_error {
  public:
    CimFault(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
    int code() const noexcept { return code_; }

  private:
    int code_;
};

} // namespace cdrctl
