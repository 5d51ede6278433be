// A result handler from a function.
#pragma once

#include "OW_ResultHandlerIFC.hpp"

#include <functional>
#include <utility>

namespace cimserver {

/// Passes each result to `use`.
template <class Object>
class Sink : public OpenWBEM::ResultHandlerIFC<Object> {
  public:
    explicit Sink(std::function<void(const Object&)> use) : use_(std::move(use)) {}

  protected:
    void doHandle(const Object& object) override { use_(object); }

  private:
    std::function<void(const Object&)> use_;
};

} // namespace cimserver
