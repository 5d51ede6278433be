// A creation request with managers that can create: what the module's own never do.
#include "ModuleTest.hpp"
#include "QTX_CDRServiceImpl.hpp"

using testing::IsEmpty;

namespace {

using Text = const std::string&;

struct CreatingServices : QTX_CDRServiceInstanceManager {
    QTX_CDRService* createQTX_CDRService(Text a, Text b, Text c, Text d) override {
        return new QTX_CDRServiceImpl(a, b, c, d);
    }
    void destroyQTX_CDRService(QTX_CDRService* object) override { delete object; }
    void init() override { initialised = true; }
    bool initialised = false;
};

class CreationTest : public ModuleTest {
  protected:
    CreationTest() { QTX_CDRService::SetInstanceManager(&services); }
    ~CreationTest() override { QTX_CDRService::ClearInstanceManager(); }
    CreatingServices services;
    // Without SystemName and CreationClassName.
    const std::string wanted = "QTX_CDRService.SystemCreationClassName=\"a\",Name=\"d\"";
};

TEST_F(CreationTest, CreatesWithTheGivenKeysAndValues) {
    EXPECT_TRUE(services.initialised);
    const OpenWBEM::CIMObjectPath made =
        create(changed(wanted, {{"CreationClassName", OpenWBEM::CIMValue(OpenWBEM::CIMNULL)},
                                {"Format", value("uint8", "3")},
                                {"Language", OpenWBEM::CIMValue(OpenWBEM::CIMNULL)}}));
    EXPECT_EQ(made.toString(), "/root/cimv2:QTX_CDRService.SystemCreationClassName=\"a\",SystemName=\"\","
                               "CreationClassName=\"\",Name=\"d\"");
    EXPECT_EQ(platform.entries.size(), 1U);
    EXPECT_EQ(platform.entry("CDR/CDRService/FORMAT"), "bytes 03");
    EXPECT_EQ(names("QTX_CDRService").size(), 1U);
    remove(made);
    EXPECT_THAT(names("QTX_CDRService"), IsEmpty());
}

TEST_F(CreationTest, TakesBackWhatCouldNotBeModified) {
    EXPECT_EQ(failure([&] {
                  create(changed(wanted, {{"DigitsLimit", value("uint16", "30")}}));
              }).message,
              "DigitsLimit must be <= 24");
    EXPECT_THAT(names("QTX_CDRService"), IsEmpty());
}

} // namespace
