// The class that the documents show how to add.
#include "ModuleTest.hpp"
#include "QTX_ExampleImpl.hpp"
#include "QTX_ExampleProvider.hpp"

using namespace OpenWBEM;
using testing::ElementsAre;

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
    EXPECT_THAT(propertyNames(shownInstance()), ElementsAre("Limit", "Count", "InstanceID"));
    EXPECT_EQ(shown(shownInstance(), "Limit"), "5");
    EXPECT_EQ(shown(shownInstance(), "Count"), "1");

    CIMParamValueArray out;
    const CIMObjectPath one = path("QTX_Example.InstanceID=\"one\"");
    EXPECT_EQ(example.invokeMethod(environment, "", one, "Reset", CIMParamValueArray(), out), CIMValue(UInt32(1)));
    EXPECT_EQ(shown(shownInstance(), "Count"), "0");
}

TEST_F(ExampleTest, LogsFailures) {
    platform.put("CDR/Example/COUNT", "bytes 01000000");
    platform.fail("ZpoGetRegEntryBinary", 5, "Example/LIMIT");
    platform.fail("ZpoSetRegEntryBinary", 6, "Example/LIMIT");
    EXPECT_EQ(setLimit("5").message, "101");
    EXPECT_EQ(shown(shownInstance(), "Limit"), "-");
    EXPECT_THAT(platform.log, ElementsAre("2 4 -1 setLimit error = 6", "2 4 -1 getLimit error = 5"));
}

} // namespace
