#include "Statistics.hpp"

namespace cdroam {

int readStatistic(const TextStatistic& statistic, Text& cache, std::string& value) {
    const std::uint32_t status = readText(statistic.entry, cache);
    if (status == 0) {
        if (isControlCharacter(cache.data()) != 0) {
            logControlCharacters(statistic.label);
            cache.clear();
        }
        value = cache.c_str();
        return Success;
    }
    value = statistic.unread;
    if (status == ZPO_REG_ENTRY_NOT_FOUND) {
        return Success;
    }
    (void)writeError(statistic.accessor, status);
    return ReadFailed;
}

} // namespace cdroam
