#include "LibraryTest.hpp"
#include "OW_CIMStreamException.hpp"

using namespace OpenWBEM;

namespace {

/// A class that holds, somewhere in it, an object of every class of the model and a value of most types.
CIMClass everything() {
    CIMInstance embedded("Inner");
    embedded.setProperty("path",
                         CIMValue(CIMObjectPath("C", "root").setHost("box").setKeyValue("K", CIMValue(Int64(-1)))));
    embedded.setProperty("reals", CIMValue(Real64Array(2, -1.5))).setProperty("real", CIMValue(2.5f)).setLanguage("en");
    embedded.setProperty("time", CIMValue(CIMDateTime(String("20040131142530.123456-060"))));
    embedded.setProperty("char", CIMValue(Char16(UInt16(0x20AC)))).setProperty("flag", CIMValue(true));
    CIMQualifierType declaration("Q");
    declaration.setDataType(CIMDataType::SINT8).setDefaultValue(CIMValue(-1)).addScope(CIMScope::CLASS);
    CIMMethod method("M");
    method.addParameter(CIMParameter("p").setDataType(CIMDataType(CIMName("C")))).setReturnType(CIMDataType::UINT64);
    CIMClass outer("Outer");
    CIMProperty instances("e", CIMValue(CIMInstanceArray(2, embedded)));
    outer.addProperty(instances.addQualifier(declaration).addQualifier(CIMQualifier("untyped")));
    return outer.addProperty(CIMProperty("null", CIMDataType(CIMDataType::STRING, 4))).addMethod(method);
}

std::string written(const CIMBase& object) {
    std::ostringstream stream;
    object.writeObject(stream);
    return stream.str();
}

TEST(CIMStream, readsBackWhatItWrote) {
    const CIMClass before = everything();
    std::istringstream stream(written(before) + written(CIMParamValue("p", CIMValue(5))));
    CIMClass after(CIMNULL);
    after.readObject(stream);
    EXPECT_TRUE(after == before) << after;
    EXPECT_EQ(after.toMOF(), before.toMOF());
    CIMParamValue parameter;
    parameter.readObject(stream);
    EXPECT_EQ(parameter.toString(), "CIMParamValue(p): 5");
    std::ostream closed(nullptr);
    EXPECT_THROW(before.writeObject(closed), CIMStreamException);
}

TEST(CIMStream, refusesEveryTruncationAndSurvivesEveryChange) {
    const std::string whole = written(everything());
    for (size_t i = 0; i < whole.size(); ++i) {
        std::istringstream truncated(whole.substr(0, i));
        CIMClass object("before");
        EXPECT_THROW(object.readObject(truncated), CIMStreamException) << i;
        EXPECT_EQ(object.getName(), "before") << i;
        std::string changed = whole;
        changed[i] = static_cast<char>(~changed[i]);
        std::istringstream stream(changed);
        try {
            object.readObject(stream);
            object.toMOF();
        } catch (const Exception&) {
            // What still makes an object is one; the rest is refused.
        }
    }
}

TEST(CIMStream, refusesDeepNesting) {
    CIMValue value(1);
    for (int i = 0; i < 100; ++i) {
        value = CIMValue(CIMInstance("C").setProperty("inner", value));
    }
    std::istringstream stream(written(value));
    CIMValue read(CIMNULL);
    EXPECT_THROW(read.readObject(stream), CIMStreamException);
}

TEST(CIMStream, checksTheVersionBehindASignature) {
    std::stringstream stream;
    CIMBase::writeSig(stream, "X", 2);
    EXPECT_EQ(CIMBase::readSig(stream, "X", 2), 2u);
    CIMBase::writeSig(stream, "X", 2);
    EXPECT_THROW(CIMBase::readSig(stream, "X", 1), CIMStreamException);
}

} // namespace
