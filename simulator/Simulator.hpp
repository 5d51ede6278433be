#pragma once

#include "CallGenerator.hpp"
#include "DigitBins.hpp"
#include "Options.hpp"
#include "RecordFile.hpp"
#include "RecordFolder.hpp"
#include "ServiceSettings.hpp"

#include <atomic>
#include <cstdint>
#include <string>

namespace cdrsim {

class ServiceQueue;

/// The CDR service of a simulated device: makes calls, writes their records and follows the settings. Prints what it
/// does, one line with the time each.
class Simulator {
  public:
    /// Prepares the record folder and reads the settings. Throws when the folder is unusable or another simulator's.
    explicit Simulator(const Options& options);

    /// Owns the queue and makes calls until `stopped`; then finishes the current file. Throws when the queue cannot be
    /// created at the start.
    void serve(const std::atomic<bool>& stopped);

    /// Writes so many records without waiting and finishes the file. Throws when it fails, or when the filters leave
    /// out every call.
    void writeRecords(std::uint64_t count);

  private:
    void readSettings();
    void handle(const std::string& message);
    void takeMessage(ServiceQueue& queue, std::chrono::milliseconds wait);
    /// Makes a call. Returns whether it is reported; throws when its record cannot be written.
    bool makeCall();
    /// Does the work; a failure is printed, but only once until a record is written or a message comes.
    template <class Work>
    void attempt(Work work);
    void report();

    const Options options_;
    RecordFolder folder_;
    RecordFile file_;
    CallGenerator calls_;
    ServiceSettings settings_;
    std::uint64_t number_ = 0;
    std::string failure_; ///< the one printed last
};

/// Plays a client that fetches all finished files: marks them and counts the transfer in the pull statistics. Throws
/// when it fails, after counting the failure.
void pull(const std::string& records);

} // namespace cdrsim
