// Managed objects and their instance managers.
#include "CFG_Exception.hpp"
#include "ModuleTest.hpp"
#include "OW_UTF8Utils.hpp"
#include "QTX_CDRPullStatistics.hpp"
#include "QTX_CDRPushStatistics.hpp"
#include "QTX_CDRService.hpp"
#include "QTX_CDRServicePrefixBin.hpp"
#include "Registry.hpp"

namespace {

using Bin = QTX_CDRServicePrefixBin; // has no pure virtual functions

class InstanceManagerTest : public testing::Test {
  protected:
    InstanceManagerTest() { Bin::SetInstanceManager(&manager); }
    ~InstanceManagerTest() override { Bin::ClearInstanceManager(); }

    std::vector<Bin*> listed() {
        std::vector<Bin*> found;
        for (manager.startIteration(); manager.hasNext();) {
            found.push_back(manager.next());
        }
        manager.endIteration();
        return found;
    }
    QTX_CDRServicePrefixBinImplInstanceManager manager;
};

TEST_F(InstanceManagerTest, ThrowsWhereThereIsNothing) {
    EXPECT_THROW(manager.get("x"), CFG_NoInstance);
    EXPECT_THROW(manager.next(), CFG_NoInstance);
    manager.startIteration();
    EXPECT_FALSE(manager.hasNext());
    EXPECT_THROW(manager.next(), CFG_NoInstance);
    EXPECT_THROW(manager.createQTX_CDRServicePrefixBin("x"), CFG_InstanceCreationFailed);
    EXPECT_THROW(manager.destroyQTX_CDRServicePrefixBin(nullptr), CFG_InstanceDeletionFailed);
}

TEST_F(InstanceManagerTest, ListsObjectsInTheOrderOfTheirKeysBytes) {
    Bin ten("_10");
    Bin two("_2");
    Bin one("_1");
    Bin upper("Z");
    EXPECT_THAT(listed(), testing::ElementsAre(&upper, &one, &ten, &two));
    EXPECT_EQ(manager.get("_10"), &ten);
    EXPECT_THROW(manager.next(), CFG_NoInstance) << "the iteration has ended";
}

TEST_F(InstanceManagerTest, KnowsOnlyTheLatestOfTwoObjectsWithOneKey) {
    auto first = std::make_unique<Bin>("same");
    Bin second("same");
    EXPECT_EQ(manager.get("same"), &second);
    first.reset();
    EXPECT_THROW(manager.get("same"), CFG_NoInstance) << "removal is by key";
}

TEST_F(InstanceManagerTest, SurvivesTheRemovalOfTheObjectUnderTheCursor) {
    auto a = std::make_unique<Bin>("a");
    Bin b("b");
    manager.startIteration();
    a.reset();
    EXPECT_EQ(manager.next(), &b);
}

TEST_F(InstanceManagerTest, RemovesAnObjectFromTheManagerOfTheMoment) {
    QTX_CDRServicePrefixBinInstanceManager later;
    auto object = std::make_unique<Bin>("x");
    Bin::SetInstanceManager(&later);
    Bin sameKey("x");
    object.reset();
    EXPECT_THROW(later.get("x"), CFG_NoInstance);
    EXPECT_NO_THROW(manager.get("x")) << "where it was listed it stays";
    Bin::ClearInstanceManager();
    EXPECT_THROW(Bin::getInstanceManager()->get("x"), CFG_NoInstance);
}

template <class Class>
struct Bare : Class { // with the methods that the base leaves open
    using Class::Class;
    unsigned int Refresh() override { return 0; }
};
struct BareService : Bare<QTX_CDRService> {
    using Bare::Bare;
    unsigned int ClipFile() override { return 0; }
};

TEST(ManagedClass, CannotReadOrWriteByItself) {
    QualifierArray qualifiers;
    BareService service("ab", "c", "d", "e");
    unsigned char format = 9;
    EXPECT_EQ(service.getFormat(format, qualifiers), 100);
    EXPECT_EQ(format, 9);
    EXPECT_EQ(service.setFormat(1), 101);
    EXPECT_EQ(service.startChange() + service.endChange(), 0);
    std::string key;
    EXPECT_EQ(service.getSystemName(key, qualifiers), 0);
    EXPECT_EQ(key, "c");

    Bare<QTX_CDRPushStatistics> push("x");
    EXPECT_EQ(push.getLastTransferTime(key, qualifiers), 100);
    Bare<QTX_CDRPullStatistics> pull("x");
    EXPECT_EQ(pull.getReasonForFailure(key = "kept", qualifiers), 0);
    EXPECT_EQ(key, "kept");
    EXPECT_EQ(pull.setIncludeMetricsFlag(true), 101);
    EXPECT_TRUE(qualifiers.empty());
}

TEST(ManagedClass, TakesKeysThatReadTheSameForTheSame) {
    BareService service("ab", "c", "d", "e");
    EXPECT_EQ(QTX_CDRService::getInstanceManager()->get("a", "bc", "de", ""), &service);
    EXPECT_THROW(QTX_CDRService::getInstanceManager()->get("ab", "c", "e", "d"), CFG_NoInstance);
}

TEST(Registry, FindsControlCharacters) {
    EXPECT_EQ(isControlCharacter(nullptr), -1);
    const std::vector<std::pair<std::string, int>> cases = {{"", -1},     {"a", 0},     {" ", 0},       {"a\n", -1},
                                                            {"\x1f", -1}, {"\x7f", -1}, {"\xc3\xa9", 0}};
    for (auto [text, status] : cases) {
        EXPECT_EQ(isControlCharacter(text.data()), status) << text;
    }
}

TEST(Registry, ConvertsLatin1WithinTheCapacity) {
    struct {
        const char* from;
        std::size_t capacity;
        const char* to;
    } const cases[] = {{"", 1, ""},        {"a\xe9z", 5, "a\xc3\xa9z"}, {"a\xe9z", 4, "a\xc3\xa9"},
                       {"a\xe9z", 3, "a"}, {"a\xe9z", 1, ""},           {"\x7f\x80\xff", 9, "\x7f\xc2\x80\xc3\xbf"}};
    for (const auto& c : cases) {
        std::string buffer(10, '#');
        OpenWBEM::UTF8Utils::ISO8859ToUTF8(c.from, buffer.data(), c.capacity);
        EXPECT_STREQ(buffer.c_str(), c.to);
        EXPECT_EQ(buffer.find_first_not_of('#', c.capacity), std::string::npos) << "beyond the capacity";
    }
}

} // namespace
