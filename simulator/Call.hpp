#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace cdrsim {

enum class Direction { Incoming, Outgoing, Internal };
enum class CallType { Internal, Local, National, International };

/// A call that has ended, with everything that the device knows of it; the settings decide what a record tells.
struct Call {
    Direction direction = Direction::Internal;
    CallType type = CallType::Internal;
    std::time_t begin = 0;         ///< when it was dialled or came in
    std::uint32_t ringSeconds = 0; ///< until it was answered or given up
    std::uint32_t talkSeconds = 0; ///< 0 when it was not answered
    bool answered = false;
    std::string extension;   ///< the device's party; of an internal call the one that is called
    std::uint32_t trunk = 0; ///< the line of an incoming or outgoing call
    std::string caller;      ///< number of the caller
    std::string callerName;
    std::string dialled; ///< digits dialled at the device; empty for an incoming call
    std::string dnis;    ///< number under which an incoming call reached the device
    std::uint32_t chargeCents = 0;
};

} // namespace cdrsim
