// Any bytes in any entry of the registry: the module shows them or leaves the property out, and shows the same again.
// An input is a sequence of: which entry, which kind, how many bytes (two bytes), the bytes.
#include "../Require.hpp"

#include "ModuleTest.hpp"

#include <fcntl.h>
#include <set>

namespace {

using namespace OpenWBEM;

std::string hexadecimal(std::string_view bytes) {
    static const char* const kDigits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        text += kDigits[static_cast<unsigned char>(c) / 16];
        text += kDigits[static_cast<unsigned char>(c) % 16];
    }
    return text;
}

/// The module over a platform in which inputs put entries.
class Device : public ModuleTest {
  public:
    Device() {
        // What the module prints would fill the disk.
        require(dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO) >= 0, "output can be dropped");
        for (const PropertyCase& c : propertyCases()) {
            classes_.insert(c.className());
            const auto known = std::find_if(entries_.begin(), entries_.end(), [&](auto* e) { return e->key == c.key; });
            if (known == entries_.end()) {
                entries_.push_back(&c);
            }
        }
    }
    void TestBody() override {}

    void store(std::string_view input) {
        platform.entries.clear();
        while (input.size() > 4) {
            const auto at = [&input](std::size_t i) { return static_cast<unsigned char>(input[i]); };
            const PropertyCase& entry = *entries_[at(0) % entries_.size()];
            const std::size_t length = at(2) + std::size_t{256} * at(3);
            put(entry, at(1), input.substr(4, length));
            input.remove_prefix(std::min(input.size(), length + 4));
        }
    }
    void read() {
        platform.callbacks.at("CDROAMProvider")(2);
        const std::string first = all();
        require(all() == first, "reading again shows the same");
        platform.forget();
        platform.created.clear();
        platform.deleted.clear();
        logged.clear();
    }

  private:
    void put(const PropertyCase& entry, unsigned kind, std::string_view bytes) {
        if (kind % 4 == 0) { // of the length that the module expects
            const std::size_t digits = entry.stored.size() - entry.stored.find(' ') - 1;
            std::string padded = hexadecimal(bytes);
            padded.resize(digits, '0');
            platform.put(entry.entry(), "bytes " + padded);
        } else if (kind % 4 == 1) {
            platform.put(entry.entry(), "bytes " + hexadecimal(bytes));
        } else if (kind % 4 == 2) {
            platform.put(entry.entry(),
                         "text " + std::string(bytes.substr(0, std::min<std::size_t>(bytes.find('\0'), 511))));
        } else {
            platform.put(entry.entry(), "int " + std::to_string(bytes.size() * 16843009U));
        }
    }
    std::string all() {
        std::string text;
        for (const std::string& name : classes_) {
            text += failure([&] {
                for (const CIMInstance& instance : instances(name)) {
                    text += instance.toString().c_str();
                }
            });
        }
        return text;
    }

    std::vector<const PropertyCase*> entries_;
    std::set<std::string> classes_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Device device;
    device.store(textOf(data, size));
    device.read();
    return 0;
}
