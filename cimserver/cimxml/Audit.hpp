// The audit line of a modifying request: who did what to which object, with which values, and how it ended.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"

#include "OW_CIM.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// Gathers the line while the request runs. A value is masked when it or its name contains "password"; long ones are
/// cut.
class AuditRecord {
  public:
    AuditRecord(const cimom::RequestContext& context, std::string_view operation, std::string_view nameSpace);

    /// The object worked on: "namespace:Class" or "namespace:Class.Key="value"".
    void target(const OpenWBEM::CIMObjectPath& path);
    void value(const OpenWBEM::String& name, const OpenWBEM::CIMValue& value);
    /// Drops the values gathered so far.
    void clearValues() { values_.clear(); }

    /// Writes the line.
    void write(const Outcome& outcome) const;

  private:
    std::string head_;
    std::string target_;
    std::string values_;
};

} // namespace cimserver::cimxml
