// The audit line of a request that changes something: who did what to which object, with which values, and how it
// ended.
#pragma once

#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimxml/RequestMessage.hpp"

#include "OW_CIM.hpp"

#include <optional>
#include <string>

namespace cimserver::cimxml {

/// Gathers the line while the request runs. It names the values of the request, and those of a modification, once it is
/// known, that the provider is handed, with a remark where the provider shows something else afterwards.
/// What comes from outside is quoted, so that nothing can pass for another part of the line, and long values are cut. A
/// value is masked when it or its name contains "password".
class AuditRecord : public cimom::ChangeObserver {
  public:
    /// Both must outlive the object.
    AuditRecord(const cimom::RequestContext& context, const RequestMessage& message);

    void onModification(const OpenWBEM::CIMPropertyArray& changes, const OpenWBEM::CIMInstance& previous) override;
    /// Throws Failed when the change cannot be recorded.
    void beforeChange() override;
    /// Only a record of its own is worth another read of the provider.
    bool wantsResult() const override;
    void afterModification(const OpenWBEM::CIMInstance& present) override { present_ = present; }

    /// The object, once its name has been read or made.
    void target(const OpenWBEM::CIMObjectPath& path);

    /// Writes the line.
    void write(const Outcome& outcome);

  private:
    std::string text();
    std::string changes() const;
    std::string remark(const OpenWBEM::CIMProperty& change) const;

    const cimom::RequestContext& context_;
    const RequestMessage& message_;
    std::string id_; ///< the same in the lines before and after a change; made for the first
    bool begun_ = false;
    std::string target_; ///< empty: as the request names it
    std::optional<OpenWBEM::CIMPropertyArray> changes_;
    OpenWBEM::CIMInstance previous_{OpenWBEM::CIMNULL};
    OpenWBEM::CIMInstance present_{OpenWBEM::CIMNULL};
};

} // namespace cimserver::cimxml
