// What a String shares with its copies.

#pragma once

#include "OW_String.hpp"
#include <string>
#include <utility>

namespace OpenWBEM {

class String::ByteBuf : public COWIntrusiveCountableBase {
  public:
    ByteBuf() = default;
    explicit ByteBuf(std::string t) : text(std::move(t)) {}
    ByteBuf* clone() const { return new ByteBuf(text); }

    std::string text;
};

} // namespace OpenWBEM
