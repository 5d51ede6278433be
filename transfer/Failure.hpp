// What goes wrong in a push, told apart by what is to be done about it.
#pragma once

#include <stdexcept>
#include <string>

namespace transfer {

enum class Scope {
    Run,  ///< final: no other file would fare better, and a further try would not either
    File, ///< this file only
    Try   ///< may have passed at the next try
};

class Failure : public std::runtime_error {
  public:
    Failure(Scope scope, const std::string& reason) : std::runtime_error(reason), scope_(scope) {}

    Scope scope() const { return scope_; }

  private:
    Scope scope_;
};

} // namespace transfer
