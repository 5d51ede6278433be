#include "LibraryTest.hpp"

using namespace OpenWBEM;

// Code written against the interface relies on what converts by itself and what does not.
template <class From, class... To>
constexpr bool convertsToAll() {
    return (std::is_convertible<From, To>::value && ...);
}
template <class From, class... To>
constexpr bool convertsToNone() {
    return !(std::is_convertible<From, To>::value || ...);
}
static_assert(convertsToAll<const char*, CIMName, CIMQualifier>() && convertsToAll<String, CIMName>(), "");
static_assert(convertsToAll<CIMName, CIMQualifierType>() && convertsToAll<CIMQualifierType, CIMQualifier>(), "");
static_assert(convertsToAll<CIMDataType::Type, CIMDataType>() && convertsToAll<CIMFlavor::Flavor, CIMFlavor>(), "");
static_assert(convertsToAll<DateTime, CIMDateTime>() && convertsToNone<String, CIMDateTime, CIMValue, CIMUrl>(), "");
static_assert(convertsToNone<const char*, CIMProperty, CIMInstance, CIMClass, CIMObjectPath>(), "");
static_assert(convertsToNone<CIMInstance, int>() && convertsToNone<CIMValue, int>(), "a null test is no number");
static_assert(!std::is_default_constructible<CIMValue>::value && convertsToNone<bool, CIMValue>(), "");
static_assert(!std::is_constructible<CIMValue, void*>::value && !std::is_constructible<CIMValue, const int*>::value,
              "a pointer is no boolean");
using OtherLong = std::conditional<std::is_same<Int64, long>::value, long long, long>::type;
static_assert(!std::is_constructible<CIMValue, OtherLong>::value, "ambiguous: it is none of the interface's integers");

namespace {

TEST(CIMName, comparesInAnyCaseAndKeepsItsSpelling) {
    // of x against y
    const std::tuple<const char*, const char*, int> cases[] = {{"CDR_Push", "cdr_push", 0},
                                                               {"a", "B", 1}, // as they are spelled
                                                               {"b", "A", 1},
                                                               {"Push", "PushTime", -1},
                                                               {"", "", 0},
                                                               {"", "a", -1},
                                                               {"A", "_", -1},
                                                               {"_", "a", -1},
                                                               {"Caf\xC3\xA9", "CAF\xC3\x89", 0},
                                                               {"Caf\xC3\xA9", "cafe", 1},
                                                               {"\342\204\252ey", "KEY", 0}}; // the Kelvin sign
    for (const auto& [first, second, order] : cases) {
        const CIMName x(first);
        const CIMName y(second);
        EXPECT_EQ(x == y, order == 0) << first << " " << second;
        EXPECT_EQ(x < y, order < 0) << first << " " << second;
        EXPECT_EQ(y<x, order> 0) << first << " " << second;
        EXPECT_EQ(x.toString(), first);
    }
    EXPECT_TRUE(CIMName("Key") == "KEY");
    EXPECT_TRUE(CIMObjectPath("ACME_Thing").getClassName() == CIMName("acme_thing"));
    EXPECT_TRUE(CIMName("x"));
    EXPECT_FALSE(CIMName(""));
    EXPECT_FALSE(CIMName(static_cast<const char*>(nullptr)).isValid());
}

TEST(CIMElement, comparesNamesOnly) {
    CIMProperty x("Name", CIMValue("one"));
    const CIMProperty sameName("NAME", CIMValue(2));
    const CIMProperty other("Other", CIMValue("one"));
    EXPECT_TRUE(x.equals(sameName));
    EXPECT_LT(x.compare(other), 0);
    EXPECT_TRUE(x == sameName);
    EXPECT_TRUE(x != other);
    CIMInstance instance("C");
    EXPECT_TRUE(instance == CIMInstance("c").setProperty("x", CIMValue(1)));
}

TEST(CIMModel, newObjectsAreEmptyAndNullOnesThrow) {
    EXPECT_TRUE(CIMInstance() && CIMClass() && CIMProperty() && CIMQualifier() && CIMQualifierType() && CIMMethod());
    EXPECT_TRUE(CIMObjectPath() && CIMNameSpace() && CIMUrl() && CIMParameter() && CIMParamValue());
    EXPECT_FALSE(CIMInstance(CIMNULL) || CIMClass(CIMNULL) || CIMProperty(CIMNULL) || CIMQualifier(CIMNULL));
    EXPECT_FALSE(CIMObjectPath(CIMNULL) || CIMNameSpace(CIMNULL) || CIMParamValue(CIMNULL) || CIMValue(CIMNULL));
    const std::function<void()> uses[] = {[] { CIMInstance(CIMNULL).getClassName(); },
                                          [] { CIMInstance(CIMNULL).setProperty("x", CIMValue(1)); },
                                          [] { CIMClass(CIMNULL).getAllProperties(); },
                                          [] { CIMQualifierType(CIMNULL).toMOF(); },
                                          [] { CIMProperty(CIMNULL).clone(); },
                                          [] { CIMMethod(CIMNULL).clone(); },
                                          [] { CIMClass(CIMNULL).filterProperties(StringArray()); },
                                          [] { CIMDataType(CIMNULL).setToArrayType(1); }};
    for (const auto& use : uses) {
        EXPECT_EQ(thrownBy(use), nullUse) << &use - uses;
    }
    CIMInstance instance("C");
    instance.setNull();
    EXPECT_TRUE(!instance);
}

TEST(CIMModel, copiesAreIndependent) {
    const CIMInstance first = CIMInstance("C").setProperty("x", CIMValue(1));
    CIMInstance second = first;
    second.setProperty("x", CIMValue(2)).setClassName("D");
    first.getProperty("x").setValue(CIMValue(3));
    EXPECT_EQ(first.toString() + second.toString(), "instance of C {\nx = 1;\n}\ninstance of D {\nx = 2;\n}\n");
    EXPECT_EQ(CIMObjectPath("C", "root").setHost("far").getHost() + CIMObjectPath().getHost(), "far127.0.0.1");
}

TEST(CIMUrl, isTakenApart) {
    const CIMUrl context(String("https://h:7/f"));
    const std::tuple<CIMUrl, const char*, const char*, const char*, Int32, const char*, const char*, bool> cases[] = {
        {CIMUrl(), "http://127.0.0.1:5988/cimom", "http", "127.0.0.1", 5988, "cimom", "", true},
        {CIMUrl(String("https://u:p@box:5989/a/b#c")), "https://box:5989/a/b#c", "https", "box", 5989, "a/b", "c",
         false},
        {CIMUrl("box"), "http://box:5988/cimom", "http", "box", 5988, "cimom", "", false},
        {CIMUrl("LocalHost:x/"), "http://127.0.0.1:5988/cimom", "http", "127.0.0.1", 5988, "cimom", "", true},
        {CIMUrl("box:-1"), "http://box:5988/cimom", "http", "box", 5988, "cimom", "", false},
        {CIMUrl("http://[::1]:80/f"), "http://[::1]:80/f", "http", "[::1]", 80, "f", "", false},
        {CIMUrl(""), "", "", "", 0, "", "", true},
        {CIMUrl("p", "h", "f#r", 9), "p://h:9/f#r", "p", "h", 9, "f#r", "", false},
        {CIMUrl(context, "https://y/z"), "https://h:7/f", "https", "h", 7, "f", "", false},
        {CIMUrl(context, "y/z"), "http://y:5988/z", "http", "y", 5988, "z", "", false},
        {CIMUrl(context).setProtocol("p").setHost("h2"), "p://h2:7/f", "p", "h2", 7, "f", "", false}};
    for (const auto& [url, text, protocol, host, port, file, ref, local] : cases) {
        EXPECT_EQ(url.toString(), text);
        EXPECT_EQ(url.getSpec(), text);
        EXPECT_EQ(url.getRef(), ref) << text;
        EXPECT_EQ(url.getProtocol(), protocol) << text;
        EXPECT_EQ(url.getHost(), host) << text;
        EXPECT_EQ(url.getPort(), port) << text;
        EXPECT_EQ(url.getFile(), file) << text;
        EXPECT_EQ(url.isLocal(), local) << text;
    }
    const CIMUrl withRef(String("https://h:7/f#r"));
    EXPECT_TRUE(context.sameFile(withRef) && context != withRef && context < withRef);
    const CIMUrl none = CIMUrl(CIMNULL);
    EXPECT_TRUE(none < context && !(context < none) && !(none < none));
    EXPECT_FALSE(context.sameFile(CIMUrl(String("https://H:7/f"))));
    EXPECT_EQ(context.toMOF(), "UNIMPLEMENTED");
    const CIMNameSpace space(" //root/cimv2 ");
    EXPECT_EQ(space.getNameSpace(), "root/cimv2");
    EXPECT_EQ(space.getHostUrl().toString(), "http://127.0.0.1:5988/cimom");
    EXPECT_EQ(CIMNameSpace(context, "n").getFileName(), "f");
    EXPECT_EQ(space.toMOF(), "UMIMPLEMENTED");
    EXPECT_TRUE(space == CIMNameSpace("ROOT/cimv2"));
    EXPECT_FALSE(space == CIMNameSpace("root") || space == CIMNameSpace(context, "root/cimv2"));
}

} // namespace
