#include "LibraryTest.hpp"

using namespace OpenWBEM;
using namespace OpenWBEM::WBEMFlags;

namespace {

template <class Elements>
std::string namesOf(const Elements& elements) {
    std::string names;
    for (const auto& element : elements) {
        names += std::string(names.empty() ? "" : " ") + element.getName().c_str();
    }
    return names;
}

CIMClass thingClass() {
    CIMClass thing("ACME_Thing");
    thing.addProperty(CIMProperty("Name", CIMDataType(CIMDataType::STRING))
                          .addQualifier(CIMQualifier::createKeyQualifier())
                          .setOriginClass("ACME_Base")
                          .setPropagated());
    thing.addProperty(CIMProperty("Size", CIMValue(UInt8(7))).addQualifier("Write").setOriginClass("ACME_Thing"));
    thing.addProperty(CIMProperty("Color", CIMDataType(CIMDataType::STRING)).setOriginClass("ACME_Thing"));
    return thing;
}

TEST(CIMInstance, holdsPropertiesInOrder) {
    CIMInstance instance("C");
    instance.setProperty("b", CIMValue(UInt8(1))).setProperty("a", CIMValue("x")).setProperty("n", CIMValue(CIMNULL));
    EXPECT_EQ(namesOf(instance.getProperties()), "b a n");
    EXPECT_EQ(namesOf(instance.getProperties(CIMDataType::STRING)), "a");
    EXPECT_EQ(instance.getProperty("n").getDataType().getType(), CIMDataType::CIMNULL);
    instance.setProperty("B", CIMValue(2));
    EXPECT_EQ(instance.getProperty("b").getName(), "b");
    EXPECT_TRUE(instance.getPropertyValue("b") == CIMValue(UInt8(2))) << "cast to the type it has";
    EXPECT_FALSE(instance.getProperty("z") || instance.getPropertyValue("z") || instance.propertyHasValue("n"));
    int code = 0;
    EXPECT_EQ(thrownBy([&] { instance.getPropertyT("z"); }, &code), "NoSuchPropertyException: z");
    EXPECT_EQ(code, CIMInstance::E_INSTANCE_HAS_NO_SUCH_PROPERTY);
    EXPECT_EQ(namesOf(instance.removeProperty("A").getProperties()), "b n");
    EXPECT_EQ(instance.setProperty(CIMProperty(CIMNULL)).getProperties().size(), 2u);
}

TEST(CIMInstance, updatesOnlyWhatIsThere) {
    CIMInstance instance("C");
    instance.setProperty("a", CIMValue("x"));
    instance.updatePropertyValue("A", CIMValue(5)).updatePropertyValue("z", CIMValue(5));
    EXPECT_EQ(instance.toString(), "instance of C {\na = 5;\n}\n");
    EXPECT_EQ(thrownBy([&] { instance.updatePropertyValue("a", CIMValue(CIMNULL)); }), nullUse);
    instance.updatePropertyValues(CIMPropertyArray(1, CIMProperty("a")));
    EXPECT_EQ(instance.toMOF(), "INSTANCE OF C\n{\n  a=NULL;\n};\n");
    instance.setProperty("b", CIMValue(UInt8(9)));
    CIMProperty hidden("h", CIMValue("secret"));
    instance.setProperty(hidden.addQualifier(CIMQualifier("Invisible").setValue(CIMValue(true))));
    EXPECT_EQ(instance.toString(), "instance of C {\na = null;\nb = 9;\n}\n");
    const CIMQualifier q = CIMQualifier("Q").setValue(CIMValue("q"));
    instance.setProperty(CIMProperty("b", CIMValue(9)).addQualifier("A").addQualifier(q)).setQualifier("R");
    instance.setProperty(CIMProperty("a").addQualifier(q)).setQualifier(q);
    EXPECT_EQ(instance.toMOF(), "[\nR,Q(\"q\")]\nINSTANCE OF C\n{\n  a=NULL;\n  [A,Q(\"q\")]\n  b=9;\n};\n");
}

TEST(CIMInstance, keepsItsKeyList) {
    const auto keys = [](const CIMInstance& instance) { return namesOf(instance.getKeyValuePairs()); };
    CIMInstance instance("C");
    instance.setProperty("a", CIMValue("x")).setProperty("r", CIMValue(CIMObjectPath("D")));
    EXPECT_EQ(keys(instance), "") << "appended by name and value";
    instance.setProperty(CIMProperty("b", CIMValue(1)));
    EXPECT_EQ(keys(instance), "") << "no key concerned";
    instance.setProperty(keyProperty("k", CIMValue(1)));
    EXPECT_EQ(keys(instance), "r k");
    instance.setProperty("k", CIMValue(2));
    EXPECT_EQ(instance.getKeyValuePairs()[1].getValue().toInt32(), 2);
    instance.setProperty(CIMProperty("K", CIMValue(3)));
    EXPECT_EQ(keys(instance), "r") << "replaced by one that is no key";
    instance.setKeys(CIMPropertyArray(1, CIMProperty("other", CIMValue(1))));
    EXPECT_EQ(keys(instance), "other");
    instance.setProperty("a", CIMValue("y")).setProperty(CIMProperty("c", CIMValue(1)));
    EXPECT_EQ(keys(instance), "other");
    instance.removeProperty("a");
    EXPECT_EQ(keys(instance), "other") << "what was removed is no key";
    instance.removeProperty("r");
    EXPECT_EQ(keys(instance), "") << "made anew";
    instance.setProperties(CIMPropertyArray(1, keyProperty("p", CIMValue(1))));
    EXPECT_EQ(keys(instance), "p");
    instance.updatePropertyValue("P", CIMValue(2));
    EXPECT_EQ(instance.getKeyValuePairs()[0].getValue().toInt32(), 2);
}

TEST(CIMInstance, clonesWhatIsAskedFor) {
    CIMInstance instance = thingClass().newInstance();
    instance.setProperty("Name", CIMValue("one")).setQualifier("Q");
    const StringArray none;
    StringArray some(1, String("color"));
    some.push_back("SIZE");
    const std::tuple<ELocalOnlyFlag, const StringArray*, const char*> cases[] = {
        {E_NOT_LOCAL_ONLY, nullptr, "Name Size Color"},
        {E_LOCAL_ONLY, nullptr, "Size Color"},
        {E_NOT_LOCAL_ONLY, &some, "Size Color"},
        {E_NOT_LOCAL_ONLY, &none, ""}};
    for (const auto& [localOnly, list, names] : cases) {
        const CIMInstance copy = instance.clone(localOnly, E_EXCLUDE_QUALIFIERS, E_EXCLUDE_CLASS_ORIGIN, list);
        EXPECT_EQ(namesOf(copy.getProperties()), names);
        EXPECT_EQ(CIMObjectPath("root", copy).modelPath(), "ACME_Thing.Name=\"one\"") << names;
        EXPECT_EQ(copy.getQualifiers().size(), 0u);
        if (const CIMProperty size = copy.getProperty("Size")) {
            EXPECT_EQ(size.getQualifiers().size(), 0u);
            EXPECT_EQ(size.getOriginClass(), "");
        }
    }
    const CIMInstance all = instance.clone(E_NOT_LOCAL_ONLY, E_INCLUDE_QUALIFIERS, E_INCLUDE_CLASS_ORIGIN);
    EXPECT_EQ(namesOf(all.getProperties()), "Name Size Color") << "here an empty list is all";
}

TEST(CIMInstance, clonesForARequestedClass) {
    CIMClass base("ACME_Base");
    base.addProperty(CIMProperty("Name", CIMDataType(CIMDataType::STRING)).setOriginClass("ACME_Base"));
    CIMInstance instance("ACME_Thing");
    instance.setProperty("Name", CIMValue("one"));
    const std::tuple<ELocalOnlyFlag, EDeepFlag, CIMClass, const char*> cases[] = {
        {E_NOT_LOCAL_ONLY, E_SHALLOW, base, "Name"},
        {E_NOT_LOCAL_ONLY, E_DEEP, base, "Name Size Color"},
        {E_LOCAL_ONLY, E_SHALLOW, thingClass(), "Size Color"},
        {E_NOT_LOCAL_ONLY, E_SHALLOW, thingClass(), "Name Size Color"}};
    for (const auto& [localOnly, deep, requested, names] : cases) {
        const CIMInstance copy = instance.clone(localOnly, deep, E_EXCLUDE_QUALIFIERS, E_EXCLUDE_CLASS_ORIGIN, nullptr,
                                                requested, thingClass());
        EXPECT_EQ(namesOf(copy.getProperties()), names);
        EXPECT_EQ(CIMObjectPath("root", copy).modelPath(), "ACME_Thing.Name=\"one\"");
    }
}

TEST(CIMInstance, isFittedToAClass) {
    CIMInstance instance("acme_thing");
    CIMProperty qualified("COLOR", CIMValue(5));
    instance.setProperty("odd", CIMValue(1)).setProperty(qualified.addQualifier("Mine"));
    instance.setProperty(CIMProperty("size", CIMDataType(CIMDataType::STRING)));
    instance.syncWithClass(thingClass());
    EXPECT_EQ(instance.toString(), "instance of acme_thing {\nColor = 5;\nSize = 7;\nName = null;\n}\n");
    EXPECT_EQ(instance.getProperty("Color").getDataType().getType(), CIMDataType::STRING);
    EXPECT_FALSE(instance.getProperty("Color").getQualifier("Mine"));
    EXPECT_TRUE(instance.getProperty("Size").getQualifier("Write"));
    EXPECT_EQ(instance.getProperty("Size").getOriginClass(), "ACME_Thing");
    EXPECT_EQ(namesOf(instance.getKeyValuePairs()), "Name");
    instance.syncWithClass(thingClass(), E_EXCLUDE_QUALIFIERS);
    EXPECT_EQ(instance.getProperty("Name").getQualifiers().size(), 0u);
    EXPECT_EQ(namesOf(instance.getKeyValuePairs()), "Name");
    CIMInstance wrong("ACME_Thing");
    wrong.setProperty("Size", CIMValue("abc"));
    EXPECT_EQ(thrownBy([&] { wrong.syncWithClass(thingClass()); }),
              "CIMException: general error (Unable to convert \"abc\" into UInt8)");
    EXPECT_EQ(wrong.getPropertyValue("Size").toString(), "abc");
}

TEST(CIMInstance, becomesAModifiedOne) {
    CIMInstance previous = thingClass().newInstance();
    EXPECT_EQ(previous.toString(), "instance of ACME_Thing {\nName = null;\nSize = 7;\nColor = null;\n}\n");
    previous.setProperty("Name", CIMValue("one")).setProperty("Color", CIMValue("red"));
    CIMInstance request("ACME_Thing");
    request.setProperty("Size", CIMValue(9)).setProperty("Color", CIMValue("blue"));
    const StringArray list(1, String("size"));
    const CIMInstance modified = request.createModifiedInstance(previous, E_INCLUDE_QUALIFIERS, &list, thingClass());
    EXPECT_EQ(modified.toString(), "instance of ACME_Thing {\nSize = 9;\nColor = red;\nName = one;\n}\n");
    EXPECT_FALSE(modified.propertiesAreEqualTo(previous));
    previous.setProperty("Size", CIMValue(9));
    EXPECT_TRUE(modified.propertiesAreEqualTo(previous)) << "in any order";
    const CIMInstance text = CIMInstance("C").setProperty(CIMProperty("n", CIMDataType(CIMDataType::STRING)));
    const CIMInstance number = CIMInstance("C").setProperty(CIMProperty("n", CIMDataType(CIMDataType::UINT8)));
    EXPECT_FALSE(text.propertiesAreEqualTo(number)) << "both null, but of different types";
}

TEST(CIMClass, isFilteredAndCompared) {
    const CIMClass thing = thingClass();
    EXPECT_TRUE(thing.isKeyed());
    EXPECT_EQ(thing.getKeyClass(), "ACME_Base");
    EXPECT_EQ(namesOf(thing.getKeys()), "Name");
    EXPECT_TRUE(thing.getProperty("size", "acme_thing"));
    EXPECT_FALSE(thing.getProperty("size", "ACME_Base"));
    EXPECT_EQ(namesOf(thing.clone(E_LOCAL_ONLY).getAllProperties()), "Size Color");
    EXPECT_EQ(namesOf(thing.filterProperties(StringArray(1, String("SIZE"))).getAllProperties()), "Size");
    const CIMClass qualified =
        CIMClass("A").addQualifier(CIMQualifier("Far").setPropagated()).addQualifier(CIMQualifier("Own"));
    EXPECT_EQ(namesOf(qualified.clone(E_LOCAL_ONLY, E_INCLUDE_QUALIFIERS).getQualifiers()), "Own");
    EXPECT_TRUE(thing == thingClass());
    EXPECT_TRUE(thing != CIMClass(thing).setIsAssociation(true));
    EXPECT_EQ(thrownBy([&] { CIMClass(thing).addProperty(CIMProperty("SIZE")); }),
              "CIMException: object already exists (Property SIZE already exists)");
    const std::pair<CIMQualifier, bool> cases[] = {{CIMQualifier("association").setValue(CIMValue(true)), true},
                                                   {CIMQualifier("Association"), true},
                                                   {CIMQualifier("Association").setValue(CIMValue(false)), false},
                                                   {CIMQualifier("Abstract").setValue(CIMValue(true)), false}};
    for (const auto& [qualifier, association] : cases) {
        CIMClass made("A");
        EXPECT_EQ(made.addQualifier(qualifier).isAssociation(), association) << qualifier.toMOF();
        EXPECT_TRUE(made.hasQualifier(qualifier) && made.removeQualifier(qualifier.getName()));
        EXPECT_FALSE(made.removeQualifier(qualifier));
    }
}

TEST(CIMMethod, sortsItsParametersByDirection) {
    const auto parameter = [](const char* name, const char* qualifier, bool value) {
        CIMParameter made(name);
        const CIMQualifier direction = CIMQualifier(qualifier).setValue(CIMValue(value));
        return made.setDataType(CIMDataType::UINT8).setQualifiers(CIMQualifierArray(1, direction));
    };
    CIMMethod method("Reset");
    method.setReturnType(CIMDataType::UINT32);
    method.addParameter(CIMParameter("plain").setDataType(CIMDataType(CIMDataType::STRING, -1)));
    method.addParameter(parameter("in", "In", true)).addParameter(parameter("none", "IN", false));
    method.addParameter(parameter("both", "Out", true));
    EXPECT_EQ(namesOf(method.getINParameters()), "plain in both");
    EXPECT_EQ(namesOf(method.getOUTParameters()), "both");
    EXPECT_FALSE(method.setPropagated().clone(E_LOCAL_ONLY));
    CIMClass thing = thingClass();
    thing.addQualifier(CIMQualifier("Version").setValue(CIMValue("1"))).setSuperClass("ACME_Base");
    thing.setMethod(method.clone(E_NOT_LOCAL_ONLY, E_EXCLUDE_QUALIFIERS));
    EXPECT_EQ(thing.toMOF(), "[Version(\"1\")]\nclass ACME_Thing:ACME_Base\n{\n  [Key(true)]\n  string Name;\n"
                             "  [Write]\n  uint8 Size=7;\n  string Color;\n"
                             "uint32 Reset(string plain[],uint8 in,uint8 none,uint8 both);\n};\n");
    EXPECT_EQ(CIMMethod("M").addQualifier("Static").addParameter(parameter("P", "In", true)).toMOF().substring(0, 8),
              "[Static]");
    EXPECT_EQ(parameter("P", "In", true).toMOF() + CIMParameter("P").toString(), "[In(true)]uint8 PCIMParameter(P)");
    EXPECT_EQ(method.toString(), "CIMMethod NAME = Reset");
    CIMClass ordered("C");
    for (const char* name : {"A", "Indication", "Association", "B"}) {
        ordered.addQualifier(name);
    }
    EXPECT_EQ(ordered.toMOF(), "[Indication,\n A,\n Association,\n B]\nclass C\n{\n};\n");
    EXPECT_TRUE(thing.getMethod("RESET"));
    EXPECT_EQ(CIMParamValue("p", CIMValue(5)).toString(), "CIMParamValue(p): 5");
    EXPECT_EQ(CIMParamValue("p").toString(), "CIMParamValue(p): (null)");
}

} // namespace
