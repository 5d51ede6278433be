// Namespaces, inheritance, includes.
#include "tests/cimserver/schema/Mof.hpp"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace OpenWBEM;
using cimserver::schema::MofError;
using cimserver::schema::Repository;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

std::vector<std::string> names(const std::vector<const CIMClass*>& classes) {
    std::vector<std::string> result;
    for (const CIMClass* const c : classes) {
        result.emplace_back(c->getName().c_str());
    }
    return result;
}

/// Name, origin and mark of each property: "P<-Origin" with a star when it is inherited unchanged.
std::vector<std::string> properties(const CIMClass& cimClass) {
    std::vector<std::string> result;
    for (const CIMProperty& p : cimClass.getAllProperties()) {
        result.push_back(std::string(p.getName().c_str()) + "<-" + p.getOriginClass().c_str() +
                         (p.getPropagated() ? "*" : ""));
    }
    return result;
}

TEST(Inheritance, MakesClassesComplete) {
    Repository repository;
    repository.compileText(
        qualifiers + "[Description(\"top\"), Version(\"1\")] class Top {"
                     "  [Key, Description(\"the key\")] string K; [Description(\"a\"), MaxLen(3)] string P = \"x\";"
                     "  uint32 F([MaxLen(5)] string s); uint32 G(); };"
                     "class middle : TOP { uint8 Own; };"
                     "class Low : Middle { [Override(\"P\"), Description(\"b\")] string p; uint32 f(string S); };",
        "t.mof", "root/test");
    const CIMClass* const low = repository.findClass("/ROOT/test", "low");
    ASSERT_NE(low, nullptr);
    EXPECT_EQ(low->getSuperClass(), String("middle"));
    EXPECT_THAT(properties(*low), ElementsAre("p<-Low", "Own<-middle*", "K<-Top*"));
    EXPECT_EQ(low->getQualifier(CIMName("Description")).getValue().toString(), String("top"));
    EXPECT_TRUE(low->getQualifier(CIMName("Description")).getPropagated());
    EXPECT_FALSE(low->getQualifier(CIMName("Version"))) << "is restricted to its class";
    EXPECT_TRUE(low->getProperty(CIMName("K")).isKey());
    EXPECT_TRUE(low->isKeyed());
    const CIMProperty p = low->getProperty(CIMName("P"));
    EXPECT_EQ(p.getValue().toString(), String("x")) << "the default goes on";
    EXPECT_EQ(p.getQualifier(CIMName("Description")).getValue().toString(), String("b"));
    EXPECT_EQ(p.getQualifier(CIMName("MaxLen")).getValue().toString(), String("3"));
    const CIMMethod f = low->getMethod(CIMName("F"));
    EXPECT_FALSE(f.getPropagated());
    EXPECT_TRUE(f.getParameters()[0].getQualifier(CIMName("MaxLen"))) << "a parameter's qualifiers go on too";
    EXPECT_TRUE(low->getMethod(CIMName("G")).getPropagated());
    EXPECT_EQ(low->getMethod(CIMName("G")).getOriginClass(), String("Top"));
}

TEST(Inheritance, KnowsAssociations) {
    Repository repository;
    repository.compileText(qualifiers + "class A { [Key] string K; }; class B : A {};"
                                        "[Association] class L { [Key] A REF Left; [Key] A REF Right; };"
                                        "class M : L { [Override(\"Left\")] B REF Left; };",
                           "t.mof", "root/test");
    const CIMClass* const derived = repository.findClass("root/test", "M");
    EXPECT_TRUE(derived->isAssociation());
    EXPECT_EQ(derived->getProperty(CIMName("Left")).getDataType().getRefClassName(), String("B"));
    EXPECT_FALSE(repository.findClass("root/test", "A")->isAssociation());
}

TEST(Lookup, GivesSubclassesInTheOrderOfDeclaration) {
    Repository repository;
    repository.compileText("class Z {}; class B : Z {}; class A : Z {}; class C : B {};", "t.mof", "root/test");
    EXPECT_THAT(names(repository.subclasses("root/test", "", false)), ElementsAre("Z"));
    EXPECT_THAT(names(repository.subclasses("root/test", "z", false)), ElementsAre("B", "A"));
    EXPECT_THAT(names(repository.subclasses("root/test", "Z", true)), ElementsAre("B", "C", "A"));
    EXPECT_THAT(names(repository.subclasses("root/nope", "Z", true)), ElementsAre());
    EXPECT_EQ(repository.findClass("root/test", "Y"), nullptr);
}

TEST(Lookup, TakesNamespacesInAnySpellingAndByAlias) {
    Repository repository;
    repository.addAlias("interop", "root/Interop");
    repository.compileText("class A {};\n#pragma namespace(\"//./Root/Other\")\nclass B {};", "t.mof", "/root/Interop");
    repository.compileText("class C {};", "u.mof", "INTEROP");
    for (const char* spelling : {"root/interop", "/ROOT/INTEROP", " root/interop ", "Interop"}) {
        EXPECT_EQ(repository.canonicalNamespace(spelling), String("root/Interop")) << spelling;
    }
    EXPECT_EQ(repository.namespaces(), (std::vector<String>{"root/Interop", "Root/Other"}));
    EXPECT_NE(repository.findClass("interop", "C"), nullptr);
    EXPECT_NE(repository.findClass("root/other", "B"), nullptr);
    EXPECT_EQ(repository.findClass("root/other", "A"), nullptr);
    EXPECT_FALSE(repository.hasNamespace("root"));
    EXPECT_FALSE(repository.hasNamespace(""));
}

TEST(Compilation, TakesInAllOrNothingAndKeepsPointers) {
    Repository repository;
    repository.compileText(qualifiers + "class A {};", "t.mof", "root/test");
    const CIMClass* const before = repository.findClass("root/test", "A");
    EXPECT_THROW(repository.compileText("class B : A {}; class C : Nope {};", "u.mof", "root/test"), MofError);
    EXPECT_THROW(repository.compileText("class D {}; class", "u.mof", "root/new"), MofError);
    EXPECT_EQ(repository.findClass("root/test", "B"), nullptr);
    EXPECT_FALSE(repository.hasNamespace("root/new"));
    EXPECT_THAT(names(repository.subclasses("root/test", "A", true)), ElementsAre());
    repository.compileText(qualifiers + "class B : A {};", "v.mof", "root/test"); // qualifiers again, identical
    EXPECT_EQ(repository.findClass("root/test", "A"), before);
    EXPECT_EQ(repository.qualifierTypes("root/test").size(), 7u);
    EXPECT_TRUE(repository.findQualifierType("root/test", "KEY")->hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)));
}

class Files : public testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/mof-test-XXXXXX";
        folder = mkdtemp(pattern);
        fs::create_directories(folder / "schema/parts");
    }
    void TearDown() override { fs::remove_all(folder); }

    void write(const std::string& name, const std::string& text) const { std::ofstream(folder / name) << text; }

    std::string errorOfFile(const std::string& name) {
        try {
            repository.compileFile(folder / name, "root/test");
        } catch (const MofError& error) {
            return error.what();
        }
        return {};
    }

    fs::path folder;
    Repository repository;
};

TEST_F(Files, IncludeOneAnotherWithinTheirFolder) {
    write("schema/all.mof", qualifiers + "#pragma include (\"parts/b.mof\")\nclass C : B {};");
    write("schema/parts/a.mof", "class A {};");
    write("schema/parts/b.mof", "#pragma include (\"a.mof\")\nclass B : A {};");
    EXPECT_EQ(errorOfFile("schema/all.mof"), "");
    EXPECT_THAT(names(repository.subclasses("root/test", "A", true)), ElementsAre("B", "C"));
}

TEST_F(Files, AreRefusedWithTheOffendingPlace) {
    write("secret.mof", "class Secret {};");
    write("schema/up.mof", "\n#pragma include (\"../secret.mof\")");
    write("schema/absolute.mof", "#pragma include (\"" + (folder / "schema/up.mof").string() + "\")");
    write("schema/missing.mof", "class A {};\n  #pragma include (\"no.mof\")");
    write("schema/folder.mof", "#pragma include (\"parts\")");
    write("schema/again.mof", "#pragma include (\"again.mof\")");
    write("schema/parts/bad.mof", "class\n;");
    write("schema/deep.mof", "#pragma include (\"parts/bad.mof\")");
    fs::create_symlink(folder / "secret.mof", folder / "schema/link.mof");
    write("schema/linked.mof", "#pragma include (\"link.mof\")");
    const std::pair<const char*, const char*> cases[] = {
        {"schema/up.mof", "up.mof:2:1: the include \"../secret.mof\" leads out of the schema's folder"},
        {"schema/linked.mof", "linked.mof:1:1: the include \"link.mof\" leads out of"},
        {"schema/absolute.mof", "absolute.mof:1:1: the include \"/"},
        {"schema/missing.mof", "missing.mof:2:3: the file"},
        {"schema/folder.mof", "folder.mof:1:1: the file"},
        {"schema/again.mof", "again.mof:1:1: includes are nested deeper than 16"},
        {"schema/deep.mof", "parts/bad.mof:2:1: the name of a class is expected"},
        {"schema/none.mof", "none.mof:1:1: the file"},
    };
    for (const auto& [file, message] : cases) {
        EXPECT_THAT(errorOfFile(file), HasSubstr(message));
    }
    EXPECT_FALSE(repository.hasNamespace("root/test"));
}

TEST(Schema, OfTheModuleLoads) {
    Repository repository;
    repository.compileFile(CDR_SCHEMA, "root/cimv2");
    EXPECT_EQ(repository.subclasses("root/cimv2", "", true).size(), 6u);
    const CIMClass* const service = repository.findClass("root/cimv2", "QTX_CDRService");
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->getKeys().size(), 4u);
    EXPECT_EQ(service->getQualifier(CIMName("Provider")).getValue().toString(), String("c++::CDRProvider"));
}

} // namespace
