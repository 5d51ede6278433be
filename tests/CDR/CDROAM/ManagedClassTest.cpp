// Managed objects and their instance managers, and the conversion of texts.
#include "CFG_Exception.hpp"
#include "QTX_CDRService.hpp"
#include "QTX_CDRServicePrefixBin.hpp"

#include "OW_UTF8Utils.hpp"
// The conversion for an OpenWBEM without one, beside the library's own.
#define OpenWBEM Supplied
#include "ISO8859ToUTF8.cpp"
#undef OpenWBEM

#include <gmock/gmock.h>

#include <memory>

namespace {

using Bin = QTX_CDRServicePrefixBin; // has no pure virtual functions

class InstanceManagerTest : public testing::Test {
  protected:
    InstanceManagerTest() { Bin::SetInstanceManager(&manager); }
    ~InstanceManagerTest() override { Bin::ClearInstanceManager(); }
    QTX_CDRServicePrefixBinImplInstanceManager manager;
};

TEST_F(InstanceManagerTest, ThrowsWhereThereIsNothing) {
    EXPECT_THROW(manager.get("x"), CFG_NoInstance);
    EXPECT_THROW(manager.next(), CFG_NoInstance);
    EXPECT_THROW(manager.createQTX_CDRServicePrefixBin("x"), CFG_InstanceCreationFailed);
    EXPECT_THROW(manager.destroyQTX_CDRServicePrefixBin(nullptr), CFG_InstanceDeletionFailed);
}

TEST_F(InstanceManagerTest, ListsObjectsInTheOrderOfTheirKeysBytes) {
    Bin two("_2");
    Bin one("_1");
    Bin ten("_10");
    EXPECT_EQ(manager.get("_10"), &ten);
    manager.startIteration();
    for (Bin* expected : {&one, &ten, &two}) {
        EXPECT_EQ(manager.next(), expected);
    }
    EXPECT_FALSE(manager.hasNext());
    manager.startIteration();
    manager.endIteration();
    EXPECT_THROW(manager.next(), CFG_NoInstance);
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
    auto object = std::make_unique<Bin>("x");
    Bin::ClearInstanceManager();
    Bin sameKey("x");
    object.reset();
    EXPECT_THROW(Bin::getInstanceManager()->get("x"), CFG_NoInstance);
    EXPECT_NO_THROW(manager.get("x")) << "where it was listed it stays";
}

struct BareService : QTX_CDRService {
    using QTX_CDRService::QTX_CDRService;
    unsigned int Refresh() override { return 0; }
    unsigned int ClipFile() override { return 0; }
};

TEST(ManagedClass, CannotReadOrWriteByItself) {
    QualifierArray qualifiers;
    const BareService constant("ab", "c", "d", "e");
    std::string text = "kept";
    EXPECT_EQ(constant.getFeatureCode(text, qualifiers), 100);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(constant.getSystemName(text, qualifiers), 0);
    EXPECT_EQ(text, "c");
    EXPECT_TRUE(qualifiers.empty());
}

TEST(ManagedClass, TakesKeysThatReadTheSameForTheSame) {
    BareService service("ab", "c", "d", "e");
    EXPECT_EQ(QTX_CDRService::getInstanceManager()->get("a", "bc", "de", ""), &service);
    EXPECT_THROW(QTX_CDRService::getInstanceManager()->get("ab", "c", "e", "d"), CFG_NoInstance);
}

TEST(Registry, ConvertsLatin1WithinTheCapacity) {
    struct {
        const char* from;
        std::size_t capacity;
        const char* to;
    } const cases[] = {{"", 1, ""},        {"a\xe9z", 5, "a\xc3\xa9z"}, {"a\xe9z", 4, "a\xc3\xa9"},
                       {"a\xe9z", 3, "a"}, {"a\xe9z", 1, ""},           {"\x7f\x80\xff", 9, "\x7f\xc2\x80\xc3\xbf"}};
    for (const auto& c : cases) {
        for (const auto convert : {&OpenWBEM::UTF8Utils::ISO8859ToUTF8, &Supplied::UTF8Utils::ISO8859ToUTF8}) {
            std::string buffer(10, '#');
            convert(c.from, buffer.data(), c.capacity);
            EXPECT_STREQ(buffer.c_str(), c.to);
            EXPECT_EQ(buffer.find_first_not_of('#', c.capacity), std::string::npos) << "beyond the capacity";
        }
    }
}

} // namespace
