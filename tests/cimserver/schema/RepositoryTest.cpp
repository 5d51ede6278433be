// Namespaces, inheritance, includes.
#include "cimserver/schema/Associations.hpp"
#include "tests/cimserver/schema/Mof.hpp"

using namespace OpenWBEM;
using cimserver::schema::AssociationQuery;
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

/// The name, a star when it is inherited unchanged, and the qualifiers with a star when they are.
template <class Element>
std::string named(const Element& element, bool propagated) {
    std::string text = element.getName().c_str() + std::string(propagated ? "*" : "");
    for (const CIMQualifier& qualifier : element.getQualifiers()) {
        text += std::string(" ") + qualifier.getName().c_str() + (qualifier.getPropagated() ? "*" : "");
    }
    return text;
}

/// "CLASS: PROPERTY<OVERRIDDEN@ORIGIN[SIZE]=DEFAULT;... METHOD(FIRST PARAMETER);..."
std::string shown(const CIMClass& cimClass) {
    std::string text = named(cimClass, false) + ":";
    for (const CIMProperty& p : cimClass.getAllProperties()) {
        text += " " + named(p, p.getPropagated()) + "<" + p.getOverridingProperty().c_str() + "@" +
                p.getOriginClass().c_str();
        text += "[" + std::to_string(p.getSize()) + "]=" + p.getValue().toString().c_str() + ";";
    }
    for (const CIMMethod& m : cimClass.getAllMethods()) {
        const CIMParameterArray parameters = m.getParameters();
        text +=
            " " + named(m, m.getPropagated()) + "(" + (parameters.empty() ? "" : named(parameters[0], false)) + ");";
    }
    return text;
}

// The later rows are what schemas of the first editions hold, in any order and with what they leave out.
TEST(Inheritance, MakesClassesComplete) {
    const std::pair<const char*, const char*> cases[] = {
        {"[Description(\"d\"), Version(\"1\")] class Top { [Key, Description(\"d\")] string K; string P = \"x\";"
         "  uint8 F([MaxLen(5)] string s); uint8 G(); }; class Middle : TOP { uint8 Own; };"
         "class B : Middle { [Override(\"P\"), Description(\"b\")] string p; uint8 f(string S); };",
         "B Description*: p Override Description<P@B[-1]=x; Own*<@Middle[-1]=(null); K* Key* "
         "Description*<@Top[-1]=(null); f(S MaxLen*); G*();"},
        {"class A { [Key, MaxLen(8)] string N = \"x\"; }; class B : A { [Override(\"A.N\"), Description(\"d\")] string "
         "N; };",
         "B: N Override Description Key* MaxLen*<N@B[-1]=x;"},
        {"class A { [Key] string N; }; class B : A { [Override(\"N\")] string M; };",
         "B: M Override Key*<N@B[-1]=(null);"},
        {"class A { string N; }; class B : A { [Override(\"Q\")] string N; [Override(\"Q\")] string P; };",
         "B: N Override<N@B[-1]=(null); P Override<@B[-1]=(null);"},
        {"class A { uint8 P[4]; uint8 Q[3]; }; class B : A { [Override(\"P\")] uint8 P[]; uint8 Q[2]; };",
         "B: P Override<P@B[4]=(null); Q<Q@B[2]=(null);"},
        {"class A { uint8 F([MaxLen(1)] string s); }; class B : A { [Override(\"F\")] uint8 F(); };",
         "B: F Override(s MaxLen);"},
        {"class A { [Propagated(\"X.N\")] string N; }; class B : A { [Propagated(\"Y.N\")] string N; };",
         "B: N Propagated<N@B[-1]=(null);"},
        {"class B : A { string P; }; class A : Z { [Mine] string K; }; class Z {}; Qualifier Mine : boolean, "
         "Scope(property);",
         "B: P<@B[-1]=(null); K* Mine*<@A[-1]=(null);"},
        {"[Abstract] class B { [Units(\"B\"), Counter : ToInstance] uint8 P; uint8 F([In, Values{\"a\"}] uint8 v); };",
         "B Abstract: P Units Counter<@B[-1]=(null); F(v In Values);"},
        {"[Association] class A { [Key] C REF R; }; class B : A { [Override(\"R\"), Min(1), Weak] D REF R; };"
         "class C { [Key] string K; }; class D : C {};",
         "B Association*: R Override Min Weak Key*<R@B[-1]=(null);"},
        {"Qualifier Q : boolean, Scope(association); [Association] class A { A REF R; }; [Q] class B : A {};",
         "B Q Association*: R*<@A[-1]=(null);"},
        {"#pragma autorecover\n#pragma classflags(\"a\", 2)\n#pragma namespace(\"root/x\")\n"
         "#pragma namespace(\"\\\\\\\\.\\\\root\\\\test\")\nclass B as $B { string P; };",
         "B: P<@B[-1]=(null);"},
    };
    for (const auto& [mof, expected] : cases) {
        Repository repository;
        repository.compileText(kQualifiers + mof, "t.mof", "root/test");
        EXPECT_EQ(shown(*repository.findClass("root/test", "B")), expected) << mof;
    }
}

const std::string kThings =
    kQualifiers +
    "class A { [Key] string K; [Key] uint8 N = 7; string T = \"t\"; }; class S : A {}; class U { [Key] string P; };"
    "[Association] class L { [Key] A REF Left; [Key] A REF Right; };"
    "class M : L { [Override(\"Left\")] S REF Left; };"
    "[Association] class W { [Key] U REF User; [Key] S REF Used; };";

TEST(Instances, AreFoundByClassAndPath) {
    Repository repository;
    repository.compileText(
        kThings + "instance of M { Left = $s; Right = \"//./root/test:A.N=1,K=\\\"a\\\"\"; };"
                  "instance of a as $A { k = \"a\"; N = 1; T = NULL; }; [Description(\"d\")] instance of S as $S {"
                  "[Description(\"d\")] K = \"s\"; }; instance of W { User = \"root/x:U.P=1\"; Used = $s; };"
                  "instance of W { User = \"U.P=1\"; Used = \"S.K=\\\"s\\\"\"; };",
        "t.mof", "root/test");
    const auto instances = [&](const char* name) {
        std::string text;
        for (const CIMInstance* const one : repository.instances("ROOT/test", name)) {
            const CIMObjectPath path("", *one);
            text +=
                std::string(path.modelPath().c_str()) + " " + one->getPropertyValue(CIMName("T")).toString().c_str();
            EXPECT_EQ(repository.findInstance("root/test", path), one);
        }
        return text;
    };
    EXPECT_EQ(instances("A"), "A.K=\"a\",N=\"1\" (null)");
    EXPECT_EQ(instances("s"), "S.K=\"s\",N=\"7\" t");
    EXPECT_EQ(instances("M"),
              "M.Left=\"/root/test:S.K=\\\"s\\\",N=\\\"7\\\"\",Right=\"/root/test:A.N=\\\"1\\\",K=\\\"a\\\"\" (null)");
    EXPECT_EQ(instances("L"), "");
    EXPECT_EQ(instances("W"),
              "W.User=\"/root/x:U.P=\\\"1\\\"\",Used=\"/root/test:S.K=\\\"s\\\",N=\\\"7\\\"\" (null)"
              "W.User=\"/root/test:U.P=\\\"1\\\"\",Used=\"/root/test:S.K=\\\"s\\\",N=\\\"7\\\"\" (null)");
    EXPECT_EQ(repository.findInstance("root/test", CIMObjectPath::parse("A.K=\"A\",N=1")), nullptr);
    EXPECT_NE(repository.findInstance("root/test", CIMObjectPath::parse("a.n=1,k=\"a\"")), nullptr);
    EXPECT_EQ(repository.findInstance("root/none", CIMObjectPath::parse("A.K=\"a\",N=1")), nullptr);
}

TEST(Associations, AreThoseOfTheSchema) {
    Repository repository;
    repository.compileText(kThings, "t.mof", "root/test");
    using Names = std::vector<std::string>;
    const std::tuple<AssociationQuery, Names, Names> cases[] = {
        {{"A", "", "", "", "", false}, {"L", "M"}, {"A", "S"}},
        {{"s", "", "", "", "", false}, {"L", "M", "W"}, {"A", "S", "U"}},
        {{"A", "", "", "", "", true}, {"L", "M", "W"}, {"A", "S", "U"}},
        {{"S", "M", "", "left", "", false}, {"M"}, {"A"}},
        {{"S", "l", "S", "", "", false}, {"L", "M"}, {"S"}},
        {{"S", "", "", "Right", "LEFT", false}, {"L", "M"}, {"A", "S"}},
        {{"U", "", "A", "", "", false}, {"W"}, {"S"}},
        {{"L", "", "", "", "", false}, {}, {}},
    };
    for (const auto& [query, references, associators] : cases) {
        EXPECT_EQ(names(referencesOf(repository, "root/test", query)), references) << query.className << query.role;
        EXPECT_EQ(names(associatorsOf(repository, "root/test", query)), associators) << query.className << query.role;
    }
}

TEST(Lookup, TakesNamespacesInAnySpellingAndByAlias) {
    Repository repository;
    repository.addAlias("interop", "root/Interop");
    repository.compileText("class C {};", "u.mof", "INTEROP"); // which makes the namespace
    repository.compileText("class A {};\n#pragma namespace(\"//./Root/Other\")\nclass B {};", "t.mof", "/root/Interop");
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
    repository.compileText(kQualifiers + "class A {};", "t.mof", "root/test");
    const CIMClass* const before = repository.findClass("root/test", "A");
    EXPECT_THROW(repository.compileText("class B : A {}; class C : Nope {};", "u.mof", "root/test"), MofError);
    EXPECT_THROW(repository.compileText("class D {}; class", "u.mof", "root/new"), MofError);
    EXPECT_EQ(repository.findClass("root/test", "B"), nullptr);
    EXPECT_FALSE(repository.hasNamespace("root/new"));
    EXPECT_THAT(names(repository.subclasses("root/test", "A", true)), ElementsAre());
    repository.compileText(kQualifiers + "class B : A {};", "v.mof", "root/test"); // qualifiers again, identical
    EXPECT_EQ(repository.findClass("root/test", "A"), before);
    EXPECT_EQ(repository.qualifierTypes("root/test").size(), 7u);
    EXPECT_TRUE(repository.findQualifierType("root/test", "KEY")->hasFlavor(CIMFlavor(CIMFlavor::DISABLEOVERRIDE)));
}

class Files : public testing::Test {
  protected:
    Files() { fs::create_directories(folder / "schema/parts"); }

    void write(const std::string& name, const std::string& text) const { support::writeFile(folder / name, text); }
    std::string errorOfFile(const std::string& name) {
        return errorIn([&] { repository.compileFile(folder / name, "root/test"); });
    }

    support::TempDir folder;
    Repository repository;
};

TEST_F(Files, IncludeOneAnotherWithinTheirFolder) {
    write("schema/all.mof", kQualifiers + "#pragma include (\"parts/b.mof\")\nclass C : B {};");
    write("schema/parts/a.mof", "class A {};");
    write("schema/parts/b.mof", "#pragma include (\"a.mof\")\nclass B : A {};");
    EXPECT_EQ(errorOfFile("schema/all.mof"), "");
    EXPECT_THAT(names(repository.subclasses("root/test", "A", true)), ElementsAre("B", "C"));
}

TEST_F(Files, IncludeSixteenDeepAtMostAndAnyNumber) {
    std::string many;
    for (int i = 0; i < 17; ++i) {
        write("schema/" + std::to_string(i) + ".mof", "#pragma include (\"" + std::to_string(i + 1) + ".mof\")");
        many += "#pragma include (\"parts/none.mof\")\n";
    }
    write("schema/17.mof", "class A {};");
    write("schema/parts/none.mof", "");
    write("schema/many.mof", many);
    EXPECT_EQ(errorOfFile("schema/1.mof"), "");
    EXPECT_EQ(errorOfFile("schema/many.mof"), "");
    EXPECT_THAT(errorOfFile("schema/0.mof"), HasSubstr("16.mof:1:1: includes are nested deeper than 16"));
}

TEST(Instances, ReferToOneAnotherEightDeepAtMost) {
    const std::string classes = "class A { [Key] string K; }; [Association] class L : A { [Key] A REF R; };";
    std::string chain = "instance of A as $a0 { K = \"" + std::string(100, 'x') + "\"; };";
    for (int i = 1; i <= 8; ++i) {
        EXPECT_EQ(errorOf(classes + chain + "instance of A { K = \"y\"; };"), "");
        const std::string link = "{ K = \"x\"; R = $a" + std::to_string(i - 1) + "; };";
        chain = "instance of L as $a" + std::to_string(i) + link + chain;
    }
    EXPECT_THAT(errorOf(classes + chain), HasSubstr("references go in a circle or deeper than 8 (in L.R)"));
    EXPECT_THAT(errorOf(classes + "instance of A { K = \"" + std::string(70000, 'x') + "\"; };"),
                HasSubstr("the keys are longer than 65536 bytes"));
}

TEST_F(Files, AreRefusedWithTheOffendingPlace) {
    write("secret.mof", "class Secret {};");
    write("schema/up.mof", "\n#pragma include (\"../secret.mof\")");
    write("schema/absolute.mof", "#pragma include (\"" + folder / "schema/up.mof" + "\")");
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

} // namespace
