// What a run tells a person who waits for it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace transfer {

class Console {
  public:
    /// `verbose`: a line for each step. A bar is shown while a file is sent when standard error is a terminal and
    /// somebody waits.
    Console(bool waited, bool verbose);

    /// A line on standard output, only when verbose.
    void step(const std::string& text);
    /// A line on standard error, only when somebody waits.
    void problem(const std::string& text);
    /// Draws the bar, at most ten times a second.
    void progress(const std::string& file, std::uint64_t sent, std::uint64_t size);
    /// Removes the bar.
    void clear();

  private:
    bool waited_;
    bool verbose_;
    bool bar_;
    bool drawn_ = false;
    std::string file_;
    std::uint64_t firstSent_ = 0;
    std::chrono::steady_clock::time_point began_;
    std::chrono::steady_clock::time_point lastDrawn_;
};

} // namespace transfer
