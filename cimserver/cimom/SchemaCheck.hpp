// Finds out whether a provider delivers what the schema declares.
#pragma once

#include "OW_CIM.hpp"

#include <mutex>
#include <set>

namespace cimserver::cimom {

/// May be called from any thread.
class SchemaCheck {
  public:
    /// Compares the first instance of each class with the class, which must outlive this object, and writes one warning
    /// about properties that the class lacks, or declares with another type: a client that sends them back would be
    /// refused. The instance must be delivered whole.
    void onAnswer(const OpenWBEM::CIMInstance& delivered, const OpenWBEM::CIMClass& cimClass);

  private:
    bool isFirst(const OpenWBEM::CIMClass& cimClass);

    std::mutex mutex_;
    std::set<const OpenWBEM::CIMClass*> seen_; ///< guarded by mutex_
};

} // namespace cimserver::cimom
