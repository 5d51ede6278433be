// Times of what is done again and again, and of its floor, in turns, so that both see the same machine.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

/// How long and how often things are measured.
struct Effort {
    bool quick = false;
    std::chrono::milliseconds slice{1000}; ///< of load
    int rounds = 5;
};

inline double nanoseconds(Clock::duration time) {
    return std::chrono::duration<double, std::nano>(time).count();
}

/// The value below which the part (0 to 1) of them lies.
inline double quantile(std::vector<double> values, double part) {
    if (values.empty()) {
        return 0;
    }
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

inline double median(std::vector<double> values) {
    return quantile(std::move(values), 0.5);
}

/// Pairs of measurements made in turns.
class Pairs {
  public:
    void add(double cost, double floor) {
        costs_.push_back(cost);
        floors_.push_back(floor);
        ratios_.push_back(cost / floor);
    }
    double cost() const { return median(costs_); }
    double floor() const { return median(floors_); }
    double ratio() const { return median(ratios_); }

  private:
    std::vector<double> costs_;
    std::vector<double> floors_;
    std::vector<double> ratios_;
};

/// Nanoseconds that one of so many calls takes.
inline double timeOf(int calls, const std::function<void()>& work) {
    const auto start = Clock::now();
    for (int i = 0; i < calls; ++i) {
        work();
    }
    return nanoseconds(Clock::now() - start) / calls;
}

/// Both works in turns, so many calls each, so many rounds.
inline Pairs compare(int rounds, int calls, const std::function<void()>& work, const std::function<void()>& floor) {
    Pairs pairs;
    timeOf(calls, work); // fills the caches
    timeOf(calls, floor);
    for (int i = 0; i < rounds; ++i) {
        const double cost = timeOf(calls, work);
        pairs.add(cost, timeOf(calls, floor));
    }
    return pairs;
}

} // namespace bench
