#include "ManagedClass.hpp"

namespace cdroam {

std::string concatenated(std::initializer_list<std::string> texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += text;
    }
    return all;
}

} // namespace cdroam
