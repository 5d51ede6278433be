#include "OW_CIM.hpp"
#include "Thrown.hpp"

#include <gtest/gtest.h>

#include <functional>

using namespace OpenWBEM;

namespace {

TEST(CIMObjectPath, isPrinted) {
    struct {
        CIMObjectPath path;
        const char* text;
    } const cases[] = {
        {CIMObjectPath(), "/:"},
        {CIMObjectPath("ACME_Thing", "root/cimv2"), "/root/cimv2:ACME_Thing"},
        {CIMObjectPath("ACME_Thing", " /root/cimv2 ").setKeyValue("Name", CIMValue("o\"ne\\")),
         "/root/cimv2:ACME_Thing.Name=\"o\\\"ne\\\\\""},
        {CIMObjectPath("C", "r").setKeyValue("a", CIMValue("1\n2")).setKeyValue("b", CIMValue(UInt8(3))),
         "/r:C.a=\"1\\n2\",b=\"3\""},
        {CIMObjectPath("C", CIMPropertyArray(1, CIMProperty("K"))), "/:C.K=\"null\""},
        {CIMObjectPath("C", "root").setHost("box"), "http://box/root:C"},
        {CIMObjectPath::parse("https://box:5989/root:C.K=1"), "https://box:5989/root:C.K=\"1\""},
        {CIMObjectPath("C", "root").setHost("127.0.0.1"), "/root:C"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.path.toString(), c.text);
        EXPECT_EQ(c.path.toMOF(), CIMObjectPath::escape(c.text));
    }
}

TEST(CIMObjectPath, isParsed) {
    struct {
        const char* text;
        const char* result; // toString(), or what is thrown up to ':' of its detail
    } const cases[] = {
        {"C.K=v", "/root:C.K=\"v\""},
        {"root/cimv2:C.K=\"a,b=\\\"c\\\"\",L=2", "/root/cimv2:C.K=\"a,b=\\\"c\\\"\",L=\"2\""},
        {"/root:C.K=a:b.c", "/root:C.K=\"a:b.c\""},
        {"/:C.K=\"\"", "/:C.K=\"\""},
        {"C.K=http://x", "/root:C.K=\"http://x\""},
        {"http://1.2.3.4:5988/root:C.K=1", "http://1.2.3.4:5988/root:C.K=\"1\""},
        {"root:C", "CIMException: invalid parameter passed to method (There are no keys in the object path"},
        {"root:C.", "CIMException: invalid parameter passed to method (There are no keys in the object path"},
        {"root:C.K", "CIMException: requested object could not be found (There is no = behind a key"},
        {"root:C.K=1,L", "CIMException: requested object could not be found (There is no = behind a key"},
        {"root:C.K,L=1", "CIMException: requested object could not be found (There is no = behind a key"},
        {"C.K=\"open", "CIMException: invalid parameter passed to method (A quoted value"},
        {"C.K=\"open\\", "CIMException: invalid parameter passed to method (A quoted value"},
        {"C.K=\"a\"b", "CIMException: invalid parameter passed to method (A value of the object path goes on"},
        {"http://box", "CIMException: invalid parameter passed to method (Nothing follows the host"},
        {"http://box:x/root:C.K=1", "CIMException: invalid parameter passed to method (\"x\" is no port number"},
    };
    for (const auto& c : cases) {
        std::string result;
        const std::string thrown = thrownBy([&] { result = CIMObjectPath::parse(c.text).toString().c_str(); });
        EXPECT_EQ((thrown == "nothing" ? result : thrown).substr(0, std::string(c.result).size()), c.result) << c.text;
    }
    EXPECT_FALSE(CIMObjectPath::parse(""));
    EXPECT_EQ(CIMObjectPath::parse("C.K=5").getKeyValue("k").getType(), CIMDataType::STRING);
    EXPECT_EQ(CIMObjectPath::unEscape(CIMObjectPath::escape("a\"\\\nb\\n")), "a\"\\\nb\\n");
}

TEST(CIMObjectPath, holdsKeys) {
    CIMObjectPath path("C", "root");
    EXPECT_TRUE(path.isClassPath());
    EXPECT_EQ(thrownBy([&] { path.setKeyValue("Name", CIMValue(CIMNULL)); }), nullUse);
    path.setKeyValue("Name", CIMValue("x")).setKeyValue("NAME", CIMValue(UInt8(3)));
    EXPECT_TRUE(path.isInstancePath());
    ASSERT_EQ(path.getKeys().size(), 1u);
    EXPECT_TRUE(path.getKeyValue("name") == CIMValue("3")) << "the value is cast to the type the key has";
    EXPECT_EQ(path.getKey("name").getName(), "Name");
    EXPECT_FALSE(path.getKey("Other") || path.keyHasValue("Other"));
    EXPECT_EQ(thrownBy([&] { path.getKeyT("Other"); }), "NoSuchPropertyException: Other");
    CIMProperty key("K", CIMValue(1));
    key.addQualifier(CIMQualifier::createKeyQualifier());
    path.setKeys(CIMPropertyArray(1, key));
    EXPECT_EQ(path.getKey("K").getQualifiers().size(), 0u);
    EXPECT_EQ(key.getQualifiers().size(), 1u);
}

TEST(CIMObjectPath, equalsByNamespaceClassAndKeys) {
    const CIMObjectPath path =
        CIMObjectPath("C", "root").setKeyValue("a", CIMValue("1")).setKeyValue("b", CIMValue("2"));
    struct {
        CIMObjectPath other;
        bool equal;
    } const cases[] = {
        {CIMObjectPath("c", "/ROOT").setKeyValue("B", CIMValue("2")).setKeyValue("A", CIMValue("1")), true},
        {CIMObjectPath(path).setHost("elsewhere"), true},
        {CIMObjectPath(path).setKeyValue("a", CIMValue("2")), false},
        {CIMObjectPath(path).setKeyValue("c", CIMValue("3")), false},
        {CIMObjectPath("C", "root").setKeyValue("a", CIMValue(1)).setKeyValue("b", CIMValue("2")), false},
        {CIMObjectPath(path).setNameSpace("other"), false},
        {CIMObjectPath(path).setClassName("D"), false},
        {CIMObjectPath(CIMNULL), false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(path == c.other, c.equal);
        EXPECT_EQ(c.other == path, c.equal);
    }
    EXPECT_TRUE(CIMObjectPath(CIMNULL) == CIMObjectPath(CIMNULL));
}

TEST(CIMObjectPath, isFittedToAClass) {
    CIMClass thing("ACME_Thing");
    for (const char* name : {"Name", "Number"}) {
        CIMProperty key(name, CIMDataType(name[1] == 'a' ? CIMDataType::STRING : CIMDataType::UINT16));
        thing.addProperty(key.addQualifier(CIMQualifier::createKeyQualifier()));
    }
    thing.addProperty(CIMProperty("Size", CIMDataType(CIMDataType::UINT8)));
    CIMObjectPath path("acme_thing", "root");
    path.setKeyValue("size", CIMValue("9")).setKeyValue("odd", CIMValue(1)).setKeyValue("NAME", CIMValue(5L));
    path.syncWithClass(thing);
    EXPECT_EQ(path.modelPath(), "acme_thing.size=\"9\",Name=\"5\",Number=\"null\"");
    EXPECT_TRUE(path.getKeyValue("Name") == CIMValue("5"));
    EXPECT_EQ(path.getKey("Number").getDataType().getType(), CIMDataType::UINT16);
    EXPECT_EQ(path.getKey("Number").getQualifiers().size(), 0u);
    CIMObjectPath classPath("acme_thing");
    EXPECT_EQ(classPath.syncWithClass(thing).modelPath(), "acme_thing");
    CIMObjectPath wrong("acme_thing");
    wrong.setKeyValue("Number", CIMValue("abc"));
    EXPECT_EQ(thrownBy([&] { wrong.syncWithClass(thing); }),
              "CIMException: general error (Unable to convert \"abc\" into UInt16)");
}

TEST(CIMObjectPath, namesAnInstance) {
    CIMInstance instance("C");
    CIMProperty key("K", CIMValue("v"));
    instance.setProperty(key.addQualifier(CIMQualifier::createKeyQualifier()));
    EXPECT_EQ(CIMObjectPath("root", instance).toString(), "/root:C.K=\"v\"");
    EXPECT_EQ(CIMObjectPath("root", instance).getKey("K").getQualifiers().size(), 0u);
}

} // namespace
