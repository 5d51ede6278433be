// The report settings in the configuration registry.
#pragma once

#include "QTX_CDRService.hpp"
#include "Registry.hpp"

/// Reads each property from its entry of section "CDRService" and writes it there. Getters return 0 or 100, setters 0
/// or 101; failures are logged. The CDR service process is told of every successful change through its message queue.
class QTX_CDRServiceImpl : public QTX_CDRService {
  public:
    /// Looks the queue up; that there is none is no error.
    QTX_CDRServiceImpl(const std::string& systemCreationClassName, const std::string& systemName,
                       const std::string& creationClassName, const std::string& name);

    CDR_OVERRIDES(QTX_CDRSERVICE_TABLE)

    /// Sends the message, one character, to the CDR service's queue, which is looked up again first. Returns 0 when it
    /// was sent or there is no queue, -1 when sending failed, which is logged.
    int notifyCDRService(const char* message);

  private:
    /// Tells the CDR service of a change that succeeded; returns the status given.
    int notified(int status);

    // What each entry held when last read or written; a failed write leaves the value that was to be written.
    mutable struct { QTX_CDRSERVICE_TABLE(CDR_CACHE, CDR_CACHE, CDR_NONE, CDR_NONE) } cache_;
    std::uint32_t queueId;
};
