// The fixed population of the module: its 17 managed objects.
#pragma once

class QTX_CDRPullStatistics;
class QTX_CDRPushSetting;
class QTX_CDRPushStatistics;
class QTX_CDRService;
class QTX_CDRServiceAccessBin;
class QTX_CDRServicePrefixBin;

/// Makes and owns the managed objects. Each lists itself with its class's current instance manager, so the providers
/// must have installed theirs before.
class CDROAMWrap {
  public:
    /// Registers the diagnostic log and makes the objects. When one cannot be made the exception passes through and
    /// those made before stay.
    CDROAMWrap();
    CDROAMWrap(const CDROAMWrap&) = delete;
    CDROAMWrap& operator=(const CDROAMWrap&) = delete;
    /// Deletes the objects and withdraws the registration.
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
/// For a host without a CIM object manager: makes the managed objects and returns their holder, also kept in globalPtr.
CDROAMWrap* createCDROAMInstances();
/// Deletes the holder that createCDROAMInstances made; nothing when there is none. The pointer is left as it is, so
/// call it once.
void releaseCDROAMInstances();
}
#pragma GCC visibility pop
