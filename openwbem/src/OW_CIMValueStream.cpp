// The binary form of values.

#include "OW_CIMStream.hpp"
#include "OW_CIMValueImpl.hpp"

namespace OpenWBEM {

namespace {

/// Values can hold objects that hold values: counts how deep a reader is inside them.
class NestingGuard {
  public:
    NestingGuard() {
        if (depth >= kMaxDepth) {
            OW_THROW(CIMStreamException, "The binary form of a CIM value is nested too deeply");
        }
        ++depth;
    }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;
    ~NestingGuard() { --depth; }

  private:
    static constexpr int kMaxDepth = 64;
    static thread_local int depth;
};

thread_local int NestingGuard::depth = 0;

} // namespace

void CIMValue::readObject(std::istream& istrm) {
    const NestingGuard guard;
    CIMBase::readSig(istrm, "V");
    UInt8 index = 0;
    CIMStream::take(istrm, index);
    if (index >= std::variant_size_v<CIMValueStorage>) {
        OW_THROW(CIMStreamException, "The binary form of a CIM value names no type");
    }
    CIMValueStorage storage = makeAlternative(index);
    std::visit([&istrm](auto& value) { CIMStream::take(istrm, value); }, storage);
    *this = CIMValueAccess::make(std::move(storage));
}

void CIMValue::writeObject(std::ostream& ostrm) const {
    CIMBase::writeSig(ostrm, "V");
    CIMStream::put(ostrm, static_cast<UInt8>(impl_->storage.index()));
    std::visit([&ostrm](const auto& value) { CIMStream::put(ostrm, value); }, impl_->storage);
}

} // namespace OpenWBEM
