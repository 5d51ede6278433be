#include "RunReport.hpp"

#include "Text.hpp"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <map>
#include <sstream>

namespace transfer {
namespace {

constexpr std::size_t kListedFailures = 20;
constexpr const char* kStates[] = {"none", "running", "succeeded", "failed"};

std::uint64_t number(const std::map<std::string, std::string>& fields, const char* name) {
    const auto found = fields.find(name);
    return found == fields.end() ? 0 : std::strtoull(found->second.c_str(), nullptr, 10);
}

RunReport::State parseState(const std::string& text) {
    const auto* const found = std::find(std::begin(kStates), std::end(kStates), text);
    return found == std::end(kStates) ? RunReport::State::None : static_cast<RunReport::State>(found - kStates);
}

} // namespace

void RunReport::addFailure(const std::string& file, const std::string& why) {
    if (failures.size() < kListedFailures) {
        failures.push_back({printable(file), printable(why)});
    } else {
        ++moreFailures;
    }
}

void RunReport::save(const StateFolder& folder) const {
    std::string text = fmt::format("state {}\nbegan {}\nended {}\ntarget {}\nfound {}\nfiles {}\nbytes {}\ntries {}\n"
                                   "more-failures {}\nreason {}\n",
                                   stateText(state), began, ended, target, found, files, bytes, tries, moreFailures,
                                   printable(reason));
    for (const FileFailure& failure : failures) {
        text += "failed " + failure.file + "\nbecause " + failure.reason + "\n";
    }
    saveFile(folder / "last-run", text);
}

RunReport RunReport::load(const StateFolder& folder) {
    RunReport report;
    std::map<std::string, std::string> fields;
    std::istringstream lines(loadFile(folder / "last-run"));
    for (std::string name, value; lines >> name && lines.get() == ' ' && std::getline(lines, value);) {
        if (name == "failed") {
            report.failures.push_back({value, ""});
        } else if (name == "because" && !report.failures.empty()) {
            report.failures.back().reason = value;
        }
        fields[name] = value;
    }
    report.state = parseState(fields["state"]);
    report.began = static_cast<std::time_t>(number(fields, "began"));
    report.ended = static_cast<std::time_t>(number(fields, "ended"));
    report.target = fields["target"];
    report.found = number(fields, "found");
    report.files = number(fields, "files");
    report.bytes = number(fields, "bytes");
    report.tries = number(fields, "tries");
    report.moreFailures = number(fields, "more-failures");
    report.reason = fields["reason"];
    return report;
}

const char* stateText(RunReport::State state) {
    return kStates[static_cast<std::size_t>(state)];
}

} // namespace transfer
