// The commands of cdrctl. Each writes its result to `out`, as text or as one JSON value, and returns the exit code.
#pragma once

#include "cdrctl/Client.hpp"
#include "cdrctl/Device.hpp"
#include "cdrctl/Model.hpp"

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <iosfwd>
#include <string>
#include <vector>

namespace cdrctl {

enum ExitCode { Done = 0, Refused = 1, WrongUsage = 2, NoConnection = 3, NoLogin = 4, NotRunning = 5 };

struct Context {
    const Client& client;
    bool json;
    std::ostream& out;
};

constexpr const char* kService = "QTX_CDRService";
constexpr const char* kPrefixBin = "QTX_CDRServicePrefixBin";
constexpr const char* kAccessBin = "QTX_CDRServiceAccessBin";
constexpr const char* kPushSetting = "QTX_CDRPushSetting";
constexpr const char* kPushStatistics = "QTX_CDRPushStatistics";
constexpr const char* kPullStatistics = "QTX_CDRPullStatistics";

/// The class that a short name (service, prefix, access, push, pushed, pull) means; another text is a class's own name.
std::string classNamed(const std::string& name);

/// Shows the instances of the class, of all six when it is empty; `describe` adds what each property means.
int show(const Context& context, const std::string& className, bool describe);

/// NAME=VALUE, as it was given.
struct Assignment {
    std::string name;
    std::string value;

    /// Throws UsageError.
    static Assignment parse(const std::string& text);
};

/// Sets properties of one instance in one request. An empty class name means the one that has the first property.
int set(const Context& context, const std::string& className, const std::vector<Assignment>& assignments);

/// Sets properties of this instance and shows what became of each.
int setIn(const Context& context, const Object& instance, const std::vector<Property>& changed);

int bins(const Context& context);
/// `kind` is prefix or access. An empty suppress text leaves the count as it is.
int setBin(const Context& context, const std::string& kind, unsigned number, const std::string& digits,
           const std::string& suppress);

int pushNow(const Context& context);
/// `places` null: only over CIM.
int pushWhy(const Context& context, const DevicePlaces* places);

struct Watch {
    bool on = false;
    std::chrono::milliseconds interval{2000};
    unsigned count = 0; ///< how often; 0: until it is interrupted
    bool terminal = false;
};

int statistics(const Context& context, const Watch& watch);

int explainStatus(std::ostream& out, bool json, const std::string& code);

/// A property's value for people: "yes" or "no" of a boolean, "***" for a secret, nothing for NULL.
std::string valueText(const Property& property);
/// The same in its own JSON type; null for NULL and for what does not apply.
nlohmann::ordered_json jsonValue(const Property& property);

} // namespace cdrctl
