#include "Console.hpp"

#include "Text.hpp"

#include <algorithm>
#include <cstdio>
#include <fmt/format.h>
#include <unistd.h>

namespace transfer {
namespace {

constexpr std::chrono::milliseconds kRedraw{100};
constexpr std::size_t kBarWidth = 30;
constexpr std::size_t kNameWidth = 32;

std::string rateText(double bytesPerSecond) {
    constexpr double kKilo = 1000;
    return bytesPerSecond < kKilo * kKilo ? fmt::format("{:.0f} kB/s", bytesPerSecond / kKilo)
                                          : fmt::format("{:.1f} MB/s", bytesPerSecond / kKilo / kKilo);
}

} // namespace

Console::Console(bool waited, bool verbose) : waited_(waited), verbose_(verbose), bar_(waited && isatty(2) == 1) {}

void Console::step(const std::string& text) {
    if (verbose_) {
        clear();
        std::printf("%s\n", printable(text).c_str());
        std::fflush(stdout);
    }
}

void Console::problem(const std::string& text) {
    if (waited_) {
        clear();
        std::fprintf(stderr, "CDRTransfer: %s\n", printable(text).c_str());
    }
}

void Console::progress(const std::string& file, std::uint64_t sent, std::uint64_t size) {
    const auto now = std::chrono::steady_clock::now();
    if (file != file_ || sent < firstSent_) {
        file_ = file;
        firstSent_ = sent;
        began_ = now;
    }
    if (!bar_ || (now - lastDrawn_ < kRedraw && sent < size)) {
        return;
    }
    lastDrawn_ = now;
    drawn_ = true;
    const double part = size == 0 ? 1 : static_cast<double>(sent) / static_cast<double>(size);
    const auto filled = std::min(kBarWidth, static_cast<std::size_t>(part * static_cast<double>(kBarWidth)));
    const double seconds = std::max(0.001, std::chrono::duration<double>(now - began_).count());
    const std::string line = fmt::format("\r{:<{}.{}} [{:<{}}] {:3.0f} % {:>12}", printable(file), kNameWidth,
                                         kNameWidth, std::string(filled, '#'), kBarWidth, part * 100,
                                         rateText(static_cast<double>(sent - firstSent_) / seconds));
    std::fputs(line.c_str(), stderr);
}

void Console::clear() {
    if (drawn_) {
        std::fputs("\r\x1b[K", stderr);
        drawn_ = false;
    }
}

} // namespace transfer
