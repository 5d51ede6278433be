#include "LibraryTest.hpp"

using namespace OpenWBEM;

namespace {

TEST(CIMObjectPath, isPrinted) {
    // clang-format off
    const std::pair<CIMObjectPath, const char*> cases[] = {
        {CIMObjectPath(), "/:"},
        {CIMObjectPath("ACME_Thing", "root/cimv2"), "/root/cimv2:ACME_Thing"},
        {CIMObjectPath("ACME_Thing", " /root/cimv2 ").setKeyValue("Name", CIMValue("o\"ne\\")), "/root/cimv2:ACME_Thing.Name=\"o\\\"ne\\\\\""},
        {CIMObjectPath("C", "r").setKeyValue("a", CIMValue("1\n2")).setKeyValue("b", CIMValue(UInt8(3))), "/r:C.a=\"1\\n2\",b=\"3\""},
        {CIMObjectPath("C", CIMPropertyArray(1, CIMProperty("K"))), "/:C.K=\"null\""},
        {CIMObjectPath("C", "root").setHost("box"), "http://box/root:C"},
        {CIMObjectPath::parse("https://box:5989/root:C.K=1"), "https://box:5989/root:C.K=\"1\""},
        {CIMObjectPath::parse("http://box:5988/root:C.K=1"), "http://box/root:C.K=\"1\""},
        {CIMObjectPath::parse("http://box:80/root:C.K=1"), "http://box:80/root:C.K=\"1\""},
        {CIMObjectPath("C", "root").setHost("LocalHost"), "/root:C"}};
    // clang-format on
    for (const auto& [path, text] : cases) {
        EXPECT_EQ(path.toString(), text);
        EXPECT_EQ(path.toMOF(), CIMObjectPath::escape(text));
    }
}

TEST(CIMObjectPath, isParsed) {
    const std::string invalid = "CIMException: invalid parameter passed to method (";
    const std::string notFound = "CIMException: requested object could not be found (";
    const std::tuple<const char*, std::string> cases[] = {
        // toString(), or what is thrown
        {"C.K=v", "/root:C.K=\"v\""},
        {"  C. K = 1 ", "/root:C. K =\" 1\""},
        {"root/cimv2:C.K=\"a,b=\\\"c\\\"\",L=2", "/root/cimv2:C.K=\"a,b=\\\"c\\\"\",L=\"2\""},
        {"/root:C.K=a:b.c", "/root:C.K=\"a:b.c\""},
        {"ns:C.K=\"x:y\"", "/ns:C.K=\"x:y\""},
        {"a:b:C.K=1", "/a:b:C.K=\"1\""},
        {"/:C.K=\"\"", "/:C.K=\"\""},
        {"C.K=", "/root:C.K=\"\""},
        {".K=1", "/root:.K=\"1\""},
        {"ns:C.K=\"http://x/y\"", "/ns:C.K=\"http://x/y\""},
        {"C.K=\"open", "/root:C"},
        {"C.K=1,L=\"open", "/root:C.K=\"1\""},
        {"C.K=1,x", "/root:C.K=\"1\""},
        {"C.K=1,", "/root:C.K=\"1\""},
        {"http://1.2.3.4:80/root:C.K=1", "http://1.2.3.4:80/root:C.K=\"1\""},
        {"root:C", invalid + "class name not found in instance name: root:C)"},
        {"C.K=\"x:y\"", invalid + "class name not found in instance name: C.K=\"x:y\")"},
        {"root:C.", invalid + "No key values found in instance name: root:C.)"},
        {"C.K", notFound + "Bad key in string (K))"},
        {"C.K=1,xyz", notFound + "Bad key in string (K=1,xyz))"},
        {"C.K,L=1", notFound + "Bad key in string (K,L=1))"},
        {"http://box", invalid + "Invalid instance name: http://box)"},
        {"http://box:x/root:C.K=1", invalid + "Invalid port in Object Path)"}};
    for (const auto& [text, result] : cases) {
        EXPECT_EQ(resultOf([path = text] { return CIMObjectPath::parse(path).toString(); }), result) << text;
    }
    EXPECT_FALSE(CIMObjectPath::parse(""));
    EXPECT_EQ(CIMObjectPath::parse("C.K=5").getKeyValue("k").getType(), CIMDataType::STRING);
    EXPECT_EQ(CIMObjectPath::escape("a\"\\\nb\t"), "a\\\"\\\\\\nb\t");
    EXPECT_EQ(CIMObjectPath::unEscape("a\\\"\\\\\\nb"), "a\"\\nb") << "a newline does not come back";
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
    const CIMProperty key = keyProperty("K", CIMValue(1));
    path.setKeys(CIMPropertyArray(1, key));
    EXPECT_EQ(path.getKey("K").getQualifiers().size(), 0u);
    EXPECT_EQ(key.getQualifiers().size(), 1u);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    path.addKey(key).addKey("K", CIMValue(CIMNULL));
#pragma GCC diagnostic pop
    EXPECT_EQ(path.getKeys().size(), 2u) << "appended, though there is one of that name";
    EXPECT_EQ(path.getKeys()[1].getQualifiers().size(), 0u);
}

TEST(CIMObjectPath, equalsByNamespaceClassAndKeys) {
    const CIMObjectPath path =
        CIMObjectPath("C", "root").setKeyValue("a", CIMValue("1")).setKeyValue("b", CIMValue("2"));
    const std::pair<CIMObjectPath, bool> cases[] = {
        {CIMObjectPath("c", "/ROOT").setKeyValue("B", CIMValue("2")).setKeyValue("A", CIMValue("1")), true},
        {CIMObjectPath(path).setHost("elsewhere"), true},
        {CIMObjectPath(path).setKeyValue("a", CIMValue("2")), false},
        {CIMObjectPath(path).setKeyValue("c", CIMValue("3")), false},
        {CIMObjectPath("C", "root").setKeyValue("a", CIMValue(1)).setKeyValue("b", CIMValue("2")), false},
        {CIMObjectPath(path).setNameSpace("other"), false},
        {CIMObjectPath(path).setClassName("D"), false},
        {CIMObjectPath(CIMNULL), false}};
    for (const auto& [other, equal] : cases) {
        EXPECT_EQ(path == other, equal);
        EXPECT_EQ(other == path, equal);
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
    path.setKeyValue("size", CIMValue("9")).setKeyValue("odd", CIMValue(1)).setKeyValue("NAME", CIMValue(Int64(5)));
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

} // namespace
