// Which parts of instances a read asks for.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/Arguments.hpp"
#include "cimserver/cimxml/OperationTable.hpp"

#include <optional>

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

} // namespace cimserver::cimxml
