// The fixed population of the module: its 17 managed objects.
#pragma once

class QTX_CDRPullStatistics;
class QTX_CDRPushSetting;
class QTX_CDRPushStatistics;
class QTX_CDRService;
class QTX_CDRServiceAccessBin;
class QTX_CDRServicePrefixBin;

/// Makes and owns the managed objects. Each lists itself with its class's current instance manager, so the providers
/// must install theirs first.
class CDROAMWrap {
  public:
    /// Registers with the diagnostic log and makes the objects. An exception from one of them passes through; those
    /// made before it are not deleted.
    CDROAMWrap();
    CDROAMWrap(const CDROAMWrap&) = delete;
    CDROAMWrap& operator=(const CDROAMWrap&) = delete;
    /// Deletes the objects and ends the registration; waits for a restore that is being followed up.
    virtual ~CDROAMWrap();

    /// The holder made by createCDROAMInstances; null until then.
    static CDROAMWrap* globalPtr;

  private:
    QTX_CDRPullStatistics* pullStatistics_;
    QTX_CDRPushSetting* pushSetting_;
    QTX_CDRPushStatistics* pushStatistics_;
    QTX_CDRServiceAccessBin** accessBins_;
    QTX_CDRService* service_;
    QTX_CDRServicePrefixBin** prefixBins_;
};

#pragma GCC visibility push(default)
extern "C" {
/// For a host without a CIM object manager: makes the managed objects and returns their holder, which globalPtr keeps.
CDROAMWrap* createCDROAMInstances();
/// Deletes the holder that createCDROAMInstances made, if there is one. Does not reset globalPtr: call this once.
void releaseCDROAMInstances();
}
#pragma GCC visibility pop
