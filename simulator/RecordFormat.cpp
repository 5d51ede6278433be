#include "RecordFormat.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iomanip>
#include <sstream>

namespace cdrsim {
namespace {

constexpr const char* kColumns = "Record,Date,Time,Direction,Extension,Trunk,CLID,CLIDName,CallType,Dialled,AccessCode,"
                                 "Prefix,DNIS,Answer,Duration,Charge\n";
constexpr std::size_t kShortClid = 10;

constexpr std::array<const char*, 4> kDateForms{"%Y-%m-%d", "%m/%d/%Y", "%d.%m.%Y", "%Y%m%d"};
enum Suppression : std::uint32_t { Removed, Masked, Shown };
enum Filter : std::uint32_t { AllCalls, IncomingCalls, OutgoingCalls, OutsideCalls };
enum Header : std::uint32_t { NoHead, ColumnNames, FullHead };

const char* textOf(Direction direction) {
    constexpr std::array<const char*, 3> kTexts{"IN", "OUT", "INT"};
    return kTexts.at(static_cast<std::size_t>(direction));
}

const char* textOf(CallType type) {
    constexpr std::array<const char*, 4> kTexts{"INTERNAL", "LOCAL", "NATIONAL", "INTERNATIONAL"};
    return kTexts.at(static_cast<std::size_t>(type));
}

/// The field in quotes when it needs them.
std::string quoted(const std::string& field) {
    if (field.find_first_of(",\"\n") == std::string::npos) {
        return field;
    }
    std::string result = "\"";
    for (const char c : field) {
        result.append(c == '"' ? 2 : 1, c);
    }
    return result + '"';
}

/// Whether it is known when the call was answered: an outside exchange tells it only with answer supervision.
bool answerIsKnown(const ServiceSettings& settings, const Call& call) {
    return call.direction != Direction::Outgoing || settings.answerSupervision != 0;
}

std::uint32_t durationOf(const ServiceSettings& settings, const Call& call) {
    return answerIsKnown(settings, call) ? call.talkSeconds : call.ringSeconds + call.talkSeconds;
}

std::string clidOf(const ServiceSettings& settings, const std::string& caller) {
    const bool cut = settings.longClidSupport == 0 && caller.size() > kShortClid;
    return cut ? caller.substr(caller.size() - kShortClid) : caller;
}

std::string chargeOf(std::uint32_t cents) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%u.%02u", cents / 100, cents % 100);
    return text.data();
}

/// What a record tells about the dialled digits.
struct Dialled {
    std::string digits, accessCode, prefix;
};

Dialled dialledOf(const ServiceSettings& settings, const DigitBins& bins, const std::string& dialled) {
    const AccessBin access = bins.accessOf(dialled);
    const std::size_t count =
        settings.digitsSuppress == Shown ? 0 : std::min<std::size_t>(access.suppress, dialled.size());
    const std::string rest = dialled.substr(count);
    const std::string shown = settings.digitsSuppress == Masked ? std::string(count, 'X') + rest : rest;
    return {shown.substr(0, settings.digitsLimit), access.code, bins.prefixOf(rest)};
}

} // namespace

std::string timeText(std::time_t time, const char* form) {
    std::tm parts{};
    localtime_r(&time, &parts);
    std::ostringstream text;
    text << std::put_time(&parts, form);
    return text.str();
}

std::string headOf(const ServiceSettings& settings, std::time_t begun) {
    switch (settings.headerFormat) {
    case NoHead:
        return "";
    case FullHead:
        return "# CDR simulator, begun " + timeText(begun, "%Y-%m-%dT%H:%M:%S%z") + "\n" + kColumns;
    default:
        return kColumns;
    }
}

bool isHeadLine(const std::string& line) {
    return line.empty() || line.front() == '#' || line.front() == *kColumns;
}

bool isReported(const ServiceSettings& settings, const Call& call) {
    const bool incoming = call.direction == Direction::Incoming;
    const bool outgoing = call.direction == Direction::Outgoing;
    const std::array<bool, 4> included{true, incoming, outgoing, incoming || outgoing};
    return included.at(settings.reportFilter) && durationOf(settings, call) >= settings.callFilterDuration;
}

std::string recordOf(const ServiceSettings& settings, const DigitBins& bins, const Call& call, std::uint64_t number) {
    const Dialled dialled = dialledOf(settings, bins, call.dialled);
    const bool answerShown = call.answered && answerIsKnown(settings, call);
    const std::array<std::string, 16> fields{
        std::to_string(number),
        timeText(call.begin, kDateForms.at(settings.dateFormat)),
        timeText(call.begin, "%H:%M:%S"),
        textOf(call.direction),
        call.extension,
        call.trunk == 0 ? "" : std::to_string(call.trunk),
        clidOf(settings, call.caller),
        settings.clidWithName != 0 ? call.callerName : "",
        settings.clidWithCallType != 0 ? textOf(call.type) : "",
        dialled.digits,
        dialled.accessCode,
        dialled.prefix,
        settings.dnisInfo != 0 ? call.dnis : "",
        answerShown ? std::to_string(call.ringSeconds) : "",
        std::to_string(durationOf(settings, call)),
        settings.supportCallCharge != 0 ? chargeOf(call.chargeCents) : "",
    };
    std::string line;
    for (const std::string& field : fields) {
        line += quoted(field) + ',';
    }
    line.back() = '\n';
    return line;
}

std::string clipPeriod(std::uint32_t schedule, std::time_t time) {
    constexpr std::array<const char*, 5> kForms{"", "%Y-%m-%d", "%Y-%m-%d %H", "%Y-%m-%d %H", "%Y-%m-%d %H:%M"};
    constexpr std::uint32_t kQuarters = 3;
    const std::string period = timeText(time, kForms.at(schedule));
    return schedule == kQuarters ? period + ' ' + std::to_string(std::stoi(timeText(time, "%M")) / 15) : period;
}

} // namespace cdrsim
