// The thread that checks passwords, which is slow on purpose, and the checks that wait for it.
#pragma once

#include <boost/asio/thread_pool.hpp>

#include <functional>
#include <map>
#include <mutex>

namespace cimserver::http {

/// Runs checks one after the other, the lowest rank first: whoever has failed before waits behind those who have not.
class CheckQueue {
  public:
    /// From any thread. Equal ranks keep their order.
    void add(unsigned rank, std::function<void()> check);

  private:
    void runFirst();

    std::mutex mutex_;
    std::multimap<unsigned, std::function<void()>> waiting_;
    boost::asio::thread_pool thread_{1}; ///< ends before the members above
};

} // namespace cimserver::http
