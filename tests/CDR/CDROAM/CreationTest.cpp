// A creation request with managers that can create: what the module's own never do.
#include "ModuleTest.hpp"
#include "QTX_CDRPushSettingImpl.hpp"
#include "QTX_CDRServiceImpl.hpp"

using testing::IsEmpty;

namespace {

class CreatingServices : public QTX_CDRServiceInstanceManager {
  public:
    QTX_CDRService* createQTX_CDRService(const std::string& systemCreationClassName, const std::string& systemName,
                                         const std::string& creationClassName, const std::string& name) override {
        return new QTX_CDRServiceImpl(systemCreationClassName, systemName, creationClassName, name);
    }
    void destroyQTX_CDRService(QTX_CDRService* object) override { delete object; }
    void init() override { ++initialised; }
    int initialised = 0;
};

class CreatingPushSettings : public QTX_CDRPushSettingInstanceManager {
  public:
    QTX_CDRPushSetting* createQTX_CDRPushSetting(const std::string& id) override {
        return new QTX_CDRPushSettingImpl(id);
    }
    void destroyQTX_CDRPushSetting(QTX_CDRPushSetting* object) override { delete object; }
};

class CreationTest : public ModuleTest {
  protected:
    CreationTest() { QTX_CDRService::SetInstanceManager(&services); }
    ~CreationTest() override {
        QTX_CDRService::ClearInstanceManager();
        QTX_CDRPushSetting::ClearInstanceManager();
    }
    CreatingServices services;
    CreatingPushSettings pushSettings;
    const std::string other = "QTX_CDRService.SystemCreationClassName=\"a\",SystemName=\"b\","
                              "CreationClassName=\"\",Name=\"d\"";
};

TEST_F(CreationTest, CreatesWithTheGivenKeysAndValues) {
    EXPECT_EQ(services.initialised, 1);
    const OpenWBEM::CIMInstance wanted =
        changed("QTX_CDRService.SystemCreationClassName=\"a\",SystemName=\"b\",Name=\"d\"",
                {{"CreationClassName", OpenWBEM::CIMValue(OpenWBEM::CIMNULL)}, {"Format", value("uint8", "3")}});
    const OpenWBEM::CIMObjectPath made = create(wanted);
    EXPECT_EQ(made.modelPath(), other.c_str());
    EXPECT_EQ(made.getNameSpace(), "root/cimv2");
    EXPECT_EQ(platform.entry("CDR/CDRService/FORMAT"), "bytes 03");
    EXPECT_EQ(names("QTX_CDRService").size(), 1U);
    EXPECT_EQ(failure([&] { remove(made); }).text(), "");
    EXPECT_THAT(names("QTX_CDRService"), IsEmpty());
}

TEST_F(CreationTest, WritesNothingForNullValues) {
    const OpenWBEM::CIMObjectPath made = create(changed(other, {{"Format", OpenWBEM::CIMValue(OpenWBEM::CIMNULL)}}));
    EXPECT_THAT(platform.calls("ZpoSetRegEntry"), IsEmpty());
    remove(made);
}

TEST_F(CreationTest, TakesBackWhatCouldNotBeModified) {
    const OpenWBEM::CIMInstance wanted = changed(other, {{"DigitsLimit", value("uint16", "30")}});
    EXPECT_EQ(failure([&] { create(wanted); }).text(), "4 304 QTX_CDRServiceProvider DigitsLimit must be <= 24");
    EXPECT_THAT(names("QTX_CDRService"), IsEmpty());
}

TEST_F(CreationTest, EndsRestoreNotificationsWhenAFurtherPushSettingGoes) {
    QTX_CDRPushSetting::SetInstanceManager(&pushSettings);
    platform.put("CDR/CDRPush/TransferType", "bytes 00");
    const OpenWBEM::CIMObjectPath made = create(changed("QTX_CDRPushSetting.InstanceID=\"x\"", {}));
    platform.callbacks.at("CDROAMProvider")(2);
    EXPECT_EQ(platform.created.size(), 1U);
    remove(made);
    platform.callbacks.at("CDROAMProvider")(2);
    EXPECT_EQ(platform.created.size(), 1U);
}

} // namespace
