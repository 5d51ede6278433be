#include "CallGenerator.hpp"

#include <array>
#include <cmath>

namespace cdrsim {
namespace {

constexpr std::array<const char*, 12> kNames{"Adams, Ruth",   "Brook \"Bo\" Lee", "Castillo, Ines", "Dietrich, Paul",
                                             "Evans, Tom",    "Fontaine, Marie",  "Reception",      "Hansen, Lars",
                                             "Ivanova, Olga", "Warehouse",        "Kimura, Aiko",   "O'Neill, Sean"};

/// Cents for each minute begun.
std::uint32_t tariff(CallType type) {
    switch (type) {
    case CallType::Local:
        return 3;
    case CallType::National:
        return 8;
    case CallType::International:
        return 45;
    case CallType::Internal:
        break;
    }
    return 0;
}

} // namespace

std::string CallGenerator::digits(std::size_t count) {
    std::string result(1, static_cast<char>('1' + below(9))); // the first digit of a number is not 0
    while (result.size() < count) {
        result += static_cast<char>('0' + below(10));
    }
    return result;
}

const char* CallGenerator::name() {
    return kNames.at(below(kNames.size()));
}

CallType CallGenerator::outsideType() {
    const std::uint32_t kind = below(10);
    return kind < 5 ? CallType::Local : kind < 8 ? CallType::National : CallType::International;
}

std::string CallGenerator::outsideNumber(CallType type) {
    switch (type) {
    case CallType::Local:
        return digits(7);
    case CallType::National:
        return digits(10);
    default:
        return digits(11 + below(4));
    }
}

void CallGenerator::fillIncoming(Call& call) {
    call.type = outsideType();
    call.caller = outsideNumber(call.type);
    call.callerName = name();
    call.dnis = "5550" + call.extension;
    call.trunk = 1 + below(8);
}

void CallGenerator::fillOutgoing(Call& call) {
    call.type = outsideType();
    call.caller = call.extension;
    call.callerName = name();
    call.dialled = (call.type == CallType::International ? "9011" : "9") + outsideNumber(call.type);
    call.trunk = 1 + below(8);
    call.chargeCents = (call.talkSeconds + 59) / 60 * tariff(call.type);
}

void CallGenerator::fillInternal(Call& call) {
    call.caller = extension();
    call.callerName = name();
    call.dialled = call.extension;
}

Call CallGenerator::next(std::time_t end) {
    Call call;
    call.extension = extension();
    call.answered = chance(80);
    call.ringSeconds = 1 + below(30);
    if (call.answered) {
        call.talkSeconds = chance(20) ? 1 + below(3600) : 1 + below(300);
    }
    call.begin = end - static_cast<std::time_t>(call.ringSeconds + call.talkSeconds);
    const std::uint32_t kind = below(10);
    if (kind < 4) {
        call.direction = Direction::Incoming;
        fillIncoming(call);
    } else if (kind < 8) {
        call.direction = Direction::Outgoing;
        fillOutgoing(call);
    } else {
        fillInternal(call);
    }
    return call;
}

std::chrono::milliseconds CallGenerator::gap(unsigned callsPerMinute) {
    const double share = (static_cast<double>(random_()) + 1) / 4294967297.0; // above 0, below 1
    return std::chrono::milliseconds(std::lround(-std::log(share) * 60000.0 / callsPerMinute));
}

} // namespace cdrsim
