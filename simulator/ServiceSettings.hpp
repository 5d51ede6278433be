// The report settings of the CDR service as the simulator reads them: section CDRService of the registry.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cdrsim {

/// What is given here are the factory settings; docs/SIMULATOR.md tells what each value does.
struct ServiceSettings {
    std::uint32_t reportFilter = 0;
    std::uint32_t dateFormat = 0;
    std::uint32_t headerFormat = 1;
    std::uint32_t dnisInfo = 1;
    std::uint32_t digitsSuppress = 0;
    std::uint32_t digitsLimit = 10;
    std::uint32_t clipFileSchedule = 1;
    std::uint32_t clipFileSize100K = 10;
    std::uint32_t diskSpaceLimitMb = 200;
    std::uint32_t clidWithName = 1;
    std::uint32_t longClidSupport = 0;
    std::uint32_t clidWithCallType = 0;
    std::uint32_t supportCallCharge = 0;
    std::uint32_t answerSupervision = 1;
    std::uint32_t callFilterDuration = 0;
};

/// The settings in the registry. One that cannot be read stays as it is in `present`; one whose value has no meaning
/// here is taken as 0. `notes` gets a line for each of these and for each that differs from `present`.
ServiceSettings readServiceSettings(const ServiceSettings& present, std::vector<std::string>& notes);

/// A line for each setting that has no effect on the simulator.
std::vector<std::string> ignoredSettings();

} // namespace cdrsim
