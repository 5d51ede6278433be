#pragma once

#include "Call.hpp"

#include <chrono>
#include <random>

namespace cdrsim {

/// Makes up calls. The same seed makes the same calls.
class CallGenerator {
  public:
    explicit CallGenerator(std::uint32_t seed) : random_(seed) {}

    /// A call that ends at `end`.
    Call next(std::time_t end);

    /// The time to the next call, when on average so many calls (at least 1) end in a minute.
    std::chrono::milliseconds gap(unsigned callsPerMinute);

  private:
    /// A number from 0 to `limit` - 1.
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    std::string digits(std::size_t count);
    std::string extension() { return std::to_string(200 + below(60)); }
    const char* name();
    /// An outside number without any prefix, of the kind that the call's type says.
    std::string outsideNumber(CallType type);
    CallType outsideType();
    void fillIncoming(Call& call);
    void fillOutgoing(Call& call);
    void fillInternal(Call& call);

    std::mt19937 random_;
};

} // namespace cdrsim
