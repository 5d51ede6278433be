// Any bytes in any entry of the registry: the module shows them or leaves the property out, and shows the same again.
// An input is a sequence of: which entry, which kind, how many bytes (two bytes), the bytes.
#include "../Require.hpp"

#include "ModuleTest.hpp"

#include <fcntl.h>

namespace {

using namespace OpenWBEM;

/// The module over a platform in which inputs put entries.
class Device : public ModuleTest {
  public:
    Device() {
        // What the module prints would fill the disk.
        require(dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO) >= 0, "output can be dropped");
    }
    void TestBody() override {}

    void store(std::string_view input) {
        platform.entries.clear();
        while (input.size() > 4) {
            const auto at = [&input](std::size_t i) { return static_cast<unsigned char>(input[i]); };
            const PropertyCase& entry = propertyCases()[at(0) % propertyCases().size()];
            const std::size_t length = at(2) + std::size_t{256} * at(3);
            put(entry, at(1), input.substr(4, length));
            input.remove_prefix(std::min(input.size(), length + 4));
        }
    }
    void read() {
        platform.callbacks.at("CDROAMProvider")(2);
        failure([this] { instances("QTX_CDRPushSetting"); }); // creates missing settings, which others read
        const std::string first = all();
        require(all() == first, "reading again shows the same");
        platform.forget();
        platform.created.clear();
        platform.deleted.clear();
        logged.clear();
    }

  private:
    void put(const PropertyCase& entry, unsigned kind, std::string_view bytes) {
        ZpoSetRegEntryBinary("Fuzz", "S", "last", bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        std::string value = bytes.empty() ? "bytes " : platform.entry("Fuzz/S/last"); // in hexadecimal digits
        if (kind % 4 == 0) { // of the length that the module expects
            value.resize(entry.stored.size(), '0');
        } else if (kind % 4 == 1) {
            value = "text " + std::string(bytes.substr(0, std::min<std::size_t>(bytes.find('\0'), 511)));
        } else if (kind % 4 == 2) {
            value = "int " + std::to_string(bytes.size() * 16843009U);
        }
        platform.put(entry.entry(), value);
    }
    std::string all() {
        std::string text;
        for (const char* name :
             {"ServicePrefixBin", "ServiceAccessBin", "Service", "PushSetting", "PushStatistics", "PullStatistics"}) {
            text += failure([&] {
                for (const CIMInstance& instance : instances(std::string("QTX_CDR") + name)) {
                    text += instance.toString().c_str();
                }
            });
        }
        return text;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Device device;
    device.store(textOf(data, size));
    device.read();
    return 0;
}
