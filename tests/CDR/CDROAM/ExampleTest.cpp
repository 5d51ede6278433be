// The class that the documents show how to add.
#include "ModuleTest.hpp"
#include "QTX_ExampleImpl.hpp"
#include "QTX_ExampleProvider.hpp"

namespace {

class ExampleTest : public ModuleTest {
  protected:
    std::string read(const std::string& property) {
        OpenWBEM::CIMInstance instance("QTX_Example");
        example.QTX_ExampleToCIMInstance("root/cimv2", object, instance);
        return shown(instance, property);
    }
    std::string write(const std::string& property, const OpenWBEM::CIMValue& to) {
        const OpenWBEM::CIMInstance wanted = changed("QTX_Example.InstanceID=\"one\"", {{property, to}});
        return failure([&] { example.modifyInstance(*example.getQTX_ExampleWithCIMInstance(wanted), wanted); });
    }

    // Installs its manager before the object is made, and frees it after the object.
    struct Initialised : QTX_ExampleProvider {
        explicit Initialised(const OpenWBEM::ProviderEnvironmentIFCRef& environment) { initialize(environment); }
        ~Initialised() override {
            delete QTX_Example::getInstanceManager();
            QTX_Example::ClearInstanceManager();
        }
    } example{environment};
    QTX_ExampleImpl object{"one"};
};

TEST_F(ExampleTest, ReadsWritesAndResets) {
    EXPECT_EQ(write("Limit", value("uint16", "5")), "");
    EXPECT_EQ(platform.entry("CDR/Example/LIMIT"), "bytes 0005");
    EXPECT_EQ(write("Limit", value("uint16", "2")), "4 304 QTX_ExampleProvider Limit must be >= 3");
    platform.put("CDR/Example/COUNT", counterEntry(1));
    EXPECT_EQ(read("Limit") + read("Count"), "51");
    EXPECT_EQ(object.Reset(), 1U);
    EXPECT_EQ(read("Count"), "0");
}

} // namespace
