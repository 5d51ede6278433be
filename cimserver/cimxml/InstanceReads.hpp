// What the operations that read instances share: the selection a request asks for, and sinks for streamed results.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Arguments.hpp"
#include "cimserver/cimxml/OperationTable.hpp"

#include "OW_ResultHandlerIFC.hpp"

#include <optional>
#include <utility>

namespace cimserver::cimxml {

/// The selection of a request together with the list it points to.
class RequestedSelection {
  public:
    /// Flags that the operation does not declare count as not set.
    explicit RequestedSelection(const Arguments& arguments);
    RequestedSelection(const RequestedSelection&) = delete;
    RequestedSelection& operator=(const RequestedSelection&) = delete;

    const cimom::InstanceSelection& get() const { return selection_; }
    bool classOrigin() const { return selection_.includeClassOrigin == OpenWBEM::WBEMFlags::E_INCLUDE_CLASS_ORIGIN; }

  private:
    std::optional<OpenWBEM::StringArray> propertyList_;
    cimom::InstanceSelection selection_;
};

/// Hands each result to a function.
template <typename Object, typename Function>
class Sink : public OpenWBEM::ResultHandlerIFC<Object> {
  public:
    explicit Sink(Function use) : use_(std::move(use)) {}

  protected:
    void doHandle(const Object& object) override { use_(object); }

  private:
    Function use_;
};

template <typename Object, typename Function>
Sink<Object, Function> makeSink(Function use) {
    return Sink<Object, Function>(std::move(use));
}

} // namespace cimserver::cimxml
