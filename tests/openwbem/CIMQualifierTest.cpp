#include "LibraryTest.hpp"
#include "OW_NULLValueException.hpp"

using namespace OpenWBEM;

namespace {

CIMQualifierType applicable() {
    CIMQualifierType declaration("Applicable");
    return declaration.setDataType(CIMDataType::BOOLEAN).setDefaultValue(CIMValue(true));
}

TEST(CIMQualifierType, isDeclared) {
    EXPECT_EQ(applicable().toMOF(), "Qualifier Applicable : boolean = true;\n");
    EXPECT_EQ(applicable().toString(), applicable().toMOF());
    CIMQualifierType map("ValueMap");
    map.setDataType(CIMDataType(CIMDataType::STRING, -1)).addScope(CIMScope::METHOD).addScope(CIMScope::PROPERTY);
    map.setDefaultValue(CIMValue(StringArray(2, String("x"))));
    map.addFlavor(CIMFlavor::DISABLEOVERRIDE).addFlavor(CIMFlavor::TRANSLATE);
    EXPECT_EQ(map.toMOF(), "Qualifier ValueMap : string[] = {\"x\",\"x\"}, Scope(property,method), "
                           "Flavor(DisableOverride,Translatable);\n");
    EXPECT_TRUE(map.isDefaultValueArray());
    EXPECT_EQ(map.addScope(CIMScope::ANY).getScope().size(), 1u);
    EXPECT_TRUE(map.hasScope(CIMScope::CLASS));
}

TEST(CIMQualifierType, losesADefaultValueSetBeforeItsType) {
    CIMQualifierType early("Q");
    early.setDefaultValue(CIMValue(true));
    EXPECT_FALSE(early.hasDefaultValue());
    early.setDataType(CIMDataType::UINT8).setDefaultValue(CIMValue("7"));
    EXPECT_EQ(early.getDefaultValue().toUInt8(), 7);
    EXPECT_EQ(early.setDataType(CIMDataType::STRING).getDefaultValue().toString(), "7");
}

TEST(CIMQualifierType, replacesAFlavorByItsOpposite) {
    CIMQualifierType declaration("Q");
    EXPECT_TRUE(declaration.hasFlavor(CIMFlavor::ENABLEOVERRIDE) && declaration.hasFlavor(CIMFlavor::TOSUBCLASS));
    declaration.addFlavor(CIMFlavor::RESTRICTED).addFlavor(CIMFlavor::DISABLEOVERRIDE).addFlavor(CIMFlavor::INVALID);
    declaration.addFlavor(CIMFlavor::RESTRICTED); // again
    EXPECT_FALSE(declaration.hasFlavor(CIMFlavor::ENABLEOVERRIDE) || declaration.hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_EQ(declaration.getFlavors().size(), 2u);
    EXPECT_EQ(declaration.removeFlavor(CIMFlavor::RESTRICTED).getFlavors().size(), 1u);
}

TEST(CIMQualifier, isMadeFromANameOrADeclaration) {
    const CIMQualifier named("Applicable");
    EXPECT_FALSE(named.hasValue());
    EXPECT_EQ(named.getFlavor().size(), 0u);
    EXPECT_FALSE(named.getDefaults().getDataType());
    EXPECT_EQ(named.toMOF(), "Applicable");
    const CIMQualifier declared(applicable());
    EXPECT_TRUE(declared.getValue().toBool());
    EXPECT_EQ(declared.getFlavor().size(), 2u);
    EXPECT_EQ(declared.getDefaults().getDataType().getType(), CIMDataType::BOOLEAN);
    EXPECT_EQ(declared.toMOF(), "Applicable(true)");
    EXPECT_EQ(declared.toString(), "CIMQualifier(Applicable)");
    EXPECT_EQ(CIMQualifier(declared).setLanguage("de").toMOF(), "Applicable_de(true)");
    EXPECT_TRUE(declared.equals(named));
    EXPECT_EQ(thrownBy([&] { named.getValueT(); }), "NULLValueException: Applicable");
}

TEST(CIMQualifier, storesAValueUncast) {
    CIMQualifier qualifier(applicable());
    EXPECT_EQ(qualifier.setValue(CIMValue("yes")).getValue().getType(), CIMDataType::STRING);
    EXPECT_EQ(CIMQualifier("ValueMap").setValue(CIMValue(StringArray(2, String("0")))).toMOF(),
              "ValueMap({\"0\",\"0\"})");
    EXPECT_EQ(CIMQualifier::createKeyQualifier().toMOF(), "Key(true)");
    EXPECT_TRUE(CIMQualifier("KEY").isKeyQualifier());
}

TEST(CIMProperty, castsAValueToItsType) {
    CIMProperty typed("N", CIMDataType(CIMDataType::UINT16));
    EXPECT_EQ(typed.setValue(CIMValue("5")).getValue().toUInt16(), 5);
    EXPECT_EQ(thrownBy([&] { typed.setValue(CIMValue(70000)); }),
              "CIMException: general error (Unable to convert \"70000\" into UInt16)");
    EXPECT_EQ(typed.getValue().toUInt16(), 5);
    EXPECT_EQ(typed.toString(), "uint16:N=5");
    EXPECT_EQ(typed.setDataType(CIMDataType::STRING).getValue().toString(), "5");
    EXPECT_EQ(typed.setValue(CIMValue(CIMNULL)).toString(), "string:N=null");
    EXPECT_EQ(typed.setValue(CIMValue(CIMInstance("C"))).getValue().getType(), CIMDataType::EMBEDDEDINSTANCE);
    EXPECT_EQ(thrownBy([&] { CIMProperty("N").getValueT(); }), "NULLValueException: N");
}

TEST(CIMProperty, withoutATypeStaysSo) {
    CIMProperty untyped("N");
    EXPECT_EQ(untyped.setValue(CIMValue(5)).getValue().toInt32(), 5);
    EXPECT_EQ(untyped.getDataType().getType(), CIMDataType::CIMNULL);
    EXPECT_EQ(untyped.getSize(), -1);
    EXPECT_EQ(CIMProperty("N", CIMValue(5)).getDataType().getType(), CIMDataType::SINT32);
    EXPECT_EQ(thrownBy([] { CIMProperty("N", CIMValue(CIMNULL)); }), nullUse);
}

TEST(CIMProperty, holdsQualifiers) {
    CIMProperty property("N", CIMValue(5));
    property.addQualifier(CIMQualifier::createKeyQualifier());
    EXPECT_EQ(thrownBy([&] { property.addQualifier(CIMQualifier("KEY")); }),
              "CIMException: object already exists (Qualifier KEY already exists)");
    EXPECT_TRUE(property.isKey());
    property.setQualifier(CIMQualifier("key").setValue(CIMValue(false))).setQualifier(CIMQualifier("Write"));
    EXPECT_FALSE(property.isKey());
    EXPECT_EQ(property.setQualifier(CIMQualifier(CIMNULL)).getQualifiers().size(), 2u);
    EXPECT_EQ(property.toMOF(), "  [key(false),Write]\n  sint32 N=5;\n");
    EXPECT_FALSE(property.hasTrueQualifier("Write")) << "a qualifier without value is not true";
    EXPECT_EQ(property.clearNonKeyQualifiers().getQualifiers().size(), 1u);
    EXPECT_TRUE(property.removeQualifier("KEY"));
    EXPECT_FALSE(property.removeQualifier("KEY"));
    EXPECT_FALSE(property.getQualifier("Key"));
    EXPECT_EQ(thrownBy([&] { property.getQualifierT("Key"); }), "NoSuchQualifierException: Key");
    EXPECT_TRUE(CIMProperty("R", CIMValue(CIMObjectPath("C"))).isKey());
}

} // namespace
