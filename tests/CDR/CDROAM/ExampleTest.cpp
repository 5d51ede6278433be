// The class that the documents show how to add.
#include "ModuleTest.hpp"
#include "QTX_ExampleImpl.hpp"
#include "QTX_ExampleProvider.hpp"

using namespace OpenWBEM;

namespace {

class ExampleTest : public ModuleTest {
  protected:
    ~ExampleTest() override { QTX_Example::ClearInstanceManager(); }

    CIMInstance shownInstance() {
        CIMInstance instance("QTX_Example");
        example.QTX_ExampleToCIMInstance("root/cimv2", object, instance);
        return instance;
    }
    Failure setLimit(const char* limit) {
        const CIMInstance wanted = changed("QTX_Example.InstanceID=\"one\"", {{"Limit", value("uint16", limit)}});
        return failure([&] { example.modifyInstance(*example.getQTX_ExampleWithCIMInstance(wanted), wanted); });
    }

    // Installs its manager before the object is made.
    struct Initialised : QTX_ExampleProvider {
        explicit Initialised(const ProviderEnvironmentIFCRef& environment) { initialize(environment); }
    } example{environment};
    QTX_ExampleImpl object{"one"};
};

TEST_F(ExampleTest, ReadsWritesAndResets) {
    platform.put("CDR/Example/COUNT", "bytes 01000000");
    EXPECT_EQ(setLimit("5").text(), "");
    EXPECT_EQ(platform.entry("CDR/Example/LIMIT"), "bytes 0005");
    EXPECT_EQ(setLimit("2").text(), "4 304 QTX_ExampleProvider Limit must be >= 3");
    EXPECT_EQ(shown(shownInstance(), "Limit") + shown(shownInstance(), "Count"), "51");
    EXPECT_EQ(object.Reset(), 1U);
    EXPECT_EQ(shown(shownInstance(), "Count"), "0");
    platform.fail("ZpoSetRegEntryBinary", 6, "Example/LIMIT");
    EXPECT_EQ(setLimit("5").message, "101");
}

} // namespace
