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

TEST_F(InstanceManagerTest, ListsObjectsInTheOrderOfTheirKeysBytes) {
    Bin two("_2");
    Bin one("_1");
    auto ten = std::make_unique<Bin>("_10");
    EXPECT_EQ(manager.get("_10"), ten.get());
    EXPECT_THROW(manager.get("_"), CFG_NoInstance);
    manager.startIteration();
    EXPECT_EQ(manager.next(), &one);
    ten.reset(); // under the cursor
    EXPECT_EQ(manager.next(), &two);
    EXPECT_FALSE(manager.hasNext());
    EXPECT_THROW(manager.next(), CFG_NoInstance);
    manager.startIteration();
    manager.endIteration();
    EXPECT_FALSE(manager.hasNext());
}

TEST_F(InstanceManagerTest, RemovesByKeyFromTheCurrentManager) {
    auto first = std::make_unique<Bin>("same");
    Bin second("same");
    EXPECT_EQ(manager.get("same"), &second);
    first.reset();
    EXPECT_THROW(manager.get("same"), CFG_NoInstance);
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

TEST(ManagedClass, HasNoValuesOfItsOwnAndComparesItsKeysConcatenated) {
    QualifierArray qualifiers;
    BareService service("ab", "c", "d", "e");
    std::string text = "kept";
    EXPECT_EQ(service.getFeatureCode(text, qualifiers), 100);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(service.setFeatureCode("1"), 101);
    EXPECT_EQ(service.getSystemName(text, qualifiers), 0);
    EXPECT_EQ(text, "c");
    EXPECT_EQ(QTX_CDRService::getInstanceManager()->get("a", "bc", "de", ""), &service);
    EXPECT_THROW(QTX_CDRService::getInstanceManager()->get("ab", "c", "e", "d"), CFG_NoInstance);
}

TEST(Latin1, IsConvertedAsTheLibraryConvertsIt) {
    for (const std::string text : {"", "a\xe9z", "\x7f\x80\xff"}) {
        for (std::size_t capacity = 0; capacity < 9; ++capacity) {
            std::string expected(10, '#');
            std::string found(10, '#');
            OpenWBEM::UTF8Utils::ISO8859ToUTF8(text.c_str(), expected.data(), capacity);
            Supplied::UTF8Utils::ISO8859ToUTF8(text.c_str(), found.data(), capacity);
            EXPECT_EQ(found, expected) << text << " within " << capacity;
        }
    }
}

} // namespace
