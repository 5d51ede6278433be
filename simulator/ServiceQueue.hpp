#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace cdrsim {

/// The queue "CDRService", by which the device's CDR service is told what to do. This process owns it.
class ServiceQueue {
  public:
    /// Creates the queue, or takes over that of a killed owner with its messages. Throws when that fails. From now on a
    /// restore of the registry comes as a message, too: that of a changed setting.
    ServiceQueue();
    /// Deletes the queue.
    ~ServiceQueue();
    ServiceQueue(const ServiceQueue&) = delete;
    ServiceQueue& operator=(const ServiceQueue&) = delete;

    /// The next message; empty when none came within `wait`. A queue that someone deleted is created anew. Throws when
    /// that fails.
    std::string receive(std::chrono::milliseconds wait);

  private:
    void create();

    std::uint32_t id_ = 0;
};

constexpr const char* kSettingsChanged = "0";
constexpr const char* kClipFile = "1";

} // namespace cdrsim
