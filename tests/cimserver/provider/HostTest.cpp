// Registration, loading, initialization, errors and the environment.
#include "Support.hpp"
#include "cimserver/cim/CimError.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/provider/Registrations.hpp"
#include "cimserver/schema/Repository.hpp"

#include "OW_CppMethodProviderIFC.hpp"
#include "OW_RepositoryIFC.hpp"

#include <atomic>
#include <future>
#include <stdexcept>

using namespace OpenWBEM;
using namespace cimserver::provider;
using cimserver::Outcome;
using cimserver::outcomeOf;
using testing::HasSubstr;

namespace {

HostSettings inFolder(const std::string& folder) {
    HostSettings settings;
    settings.folders = {folder};
    return settings;
}

/// A provider that does what the test says and counts its lives.
class Scripted : public CppProviderBaseIFC {
  public:
    using Script = std::function<void(const ProviderEnvironmentIFCRef&)>;

    explicit Scripted(Script script) : script_(std::move(script)) { ++alive; }
    ~Scripted() override { --alive; }
    void initialize(const ProviderEnvironmentIFCRef& env) override {
        if (script_) {
            script_(env);
        }
    }

    static inline std::atomic<int> alive{0};

  private:
    Script script_;
};

TEST(Registration, ComesFromTheProviderQualifier) {
    cimserver::schema::Repository repository;
    repository.compileText("Qualifier Provider : string, Scope(any);"
                           "[Provider(\"c++::One\")] class A { uint8 F(); [Provider(\"C++:Two\")] uint8 G(); };"
                           "class B : A {}; class C {}; [Provider(null)] class D : A {};"
                           "[Provider(\"perl::X\")] class Perl {}; [Provider(\"One\")] class Bare {};"
                           "[Provider(\"c++::../../etc/x\")] class Path {}; [Provider(\"c++::\")] class None {};",
                           "t.mof", "root/test");
    const ProviderHost host{HostSettings()};
    const auto idOf = [&](const char* name) {
        return host.instanceProvider("root/test", *repository.findClass("root/test", name));
    };
    EXPECT_EQ(idOf("A"), "One");
    EXPECT_EQ(idOf("B"), "One") << "inherited";
    EXPECT_EQ(idOf("C"), "");
    EXPECT_EQ(idOf("D"), "") << "NULL takes the inherited one away";
    const CIMClass& a = *repository.findClass("root/test", "A");
    EXPECT_EQ(host.methodProvider("root/test", a, a.getMethod(CIMName("F"))), "One");
    EXPECT_EQ(host.methodProvider("root/test", a, a.getMethod(CIMName("G"))), "Two");
    for (const char* bad : {"Perl", "Bare", "Path", "None"}) {
        EXPECT_THAT(outcomeOf([&] { idOf(bad); }).description, HasSubstr("is not of the form \"c++::ID\"")) << bad;
    }
}

/// Reports all methods of Whole, one of Part, and Part only in one namespace.
class Reporter : public CppMethodProviderIFC {
  public:
    void getMethodProviderInfo(MethodProviderInfo& info) override {
        info.addInstrumentedClass("Whole");
        info.addInstrumentedClass(
            MethodProviderInfo::ClassInfo("Part", StringArray(size_t(1), " /Root/Test"), StringArray(size_t(1), "F")));
    }
    CIMValue invokeMethod(const ProviderEnvironmentIFCRef&, const String&, const CIMObjectPath&, const String&,
                          const CIMParamValueArray&, CIMParamValueArray&) override {
        return CIMValue(CIMNULL);
    }
};

TEST(Registration, ComesFromWhatAProviderReports) {
    Registrations registrations;
    const IntrusiveReference<CppProviderBaseIFC> reporter(new Reporter);
    registrations.add("One", *reporter);
    registrations.add("Two", *reporter); // the first keeps its classes
    EXPECT_EQ(registrations.methodProvider("root/any", "whole", "Anything"), "One");
    EXPECT_EQ(registrations.methodProvider("root/test", "Part", "f"), "One");
    EXPECT_EQ(registrations.methodProvider("root/test", "Part", "G"), "");
    EXPECT_EQ(registrations.methodProvider("root/other", "Part", "F"), "");
    EXPECT_EQ(registrations.instanceProvider("root/test", "Whole"), "");
}

TEST(Loading, SaysWhatIsWrongWithAModule) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"version", "Bad", "it is made for OpenWBEM 2.0.0, this server offers 3.0.3"},
        {"no_version", "Bad", "it has no symbol getOWVersion"},
        {"no_factory", "Bad", "it has no symbol createProviderBad"},
        {"null_factory", "Bad", "its factory gave no provider"},
        {"no_library", "Bad", "its file cannot be loaded"},
        {"other_id", "Other", "it has no symbol createProviderOther"},
        {"version", "Missing", "its file was not found"},
    };
    for (const auto& [folder, id, reason] : cases) {
        ProviderHost host(inFolder(TEST_BAD_FOLDER "/" + folder));
        const Outcome thrown = outcomeOf([&host, name = id] { host.enter(name, Access::Read, CallOrigin()); });
        EXPECT_EQ(thrown.code, CIMException::FAILED);
        EXPECT_EQ(thrown.description, "general error (Invalid provider: " + id + " (" + reason + "))");
    }
}

TEST(Loading, FindsEitherFileNameInAnyFolderAndSharesTheObject) {
    HostSettings settings = inFolder(std::string(TEST_BAD_FOLDER) + "/no_such_folder");
    settings.folders.emplace_back(TEST_PROVIDER_FOLDER);
    ProviderHost host(settings);
    host.scan(); // a folder that is missing is no reason to stop
    const auto instances = [&] { return host.enter("ACMEThing", Access::Read, CallOrigin()).instances(); };
    ASSERT_NE(instances(), nullptr);
    EXPECT_EQ(instances(), instances());
    const ProviderCall call = host.enter("ACMEThing", Access::Read, CallOrigin());
    EXPECT_NE(call.methods(), nullptr);
    EXPECT_NE(call.associators(), nullptr);
}

TEST(Initialization, IsTriedAgainAfterAFailureWithANewObject) {
    Scripted::alive = 0;
    int made = 0;
    auto host = std::make_unique<ProviderHost>(HostSettings());
    host->addBuiltIn("Second", [&] {
        return new Scripted([first = ++made == 1](const auto&) {
            if (first) {
                OW_THROWCIMMSG(CIMException::ACCESS_DENIED, "not yet");
            }
        });
    });
    const Outcome thrown = outcomeOf([&] { host->enter("Second", Access::Read, CallOrigin()); });
    EXPECT_EQ(thrown.code, CIMException::ACCESS_DENIED);
    EXPECT_EQ(Scripted::alive, 0) << "the failed object is gone";
    host->enter("Second", Access::Read, CallOrigin());
    host->enter("Second", Access::Write, CallOrigin());
    EXPECT_EQ(made, 2) << "initialized once, then kept";
    EXPECT_EQ(Scripted::alive, 1);
    host.reset();
    EXPECT_EQ(Scripted::alive, 0);
}

TEST(Initialization, ThatCallsItselfEndsInAnError) {
    ProviderHost host{HostSettings()};
    Outcome inner;
    const auto enter = [&host] { host.enter("Loop", Access::Read, CallOrigin()); };
    host.addBuiltIn("Loop", [&] { return new Scripted([&](const auto&) { inner = outcomeOf(enter); }); });
    enter();
    EXPECT_THAT(inner.description, HasSubstr("Provider Loop is called while it is being initialized"));
}

TEST(Calls, OfOneProviderWaitWhileAnotherAnswers) {
    HostSettings settings;
    settings.busyLimit = std::chrono::milliseconds(30);
    settings.concurrentReads = {"Quick"};
    settings.concurrentProviders = {"Free"};
    ProviderHost host(settings);
    for (const char* id : {"Slow", "Quick", "Free", "Other"}) {
        host.addBuiltIn(id, [] { return new Scripted(nullptr); });
    }
    const auto enterElsewhere = [&](const char* id, Access access) {
        return std::async(
                   std::launch::async,
                   [&, id, access] { return outcomeOf([&] { host.enter(id, access, CallOrigin()); }).description; })
            .get();
    };
    const ProviderCall slow = host.enter("Slow", Access::Read, CallOrigin());
    const ProviderCall quick = host.enter("Quick", Access::Read, CallOrigin());
    const ProviderCall free = host.enter("Free", Access::Write, CallOrigin());
    EXPECT_EQ(enterElsewhere("Free", Access::Write), "");
    EXPECT_EQ(enterElsewhere("Slow", Access::Read), "general error (Provider Slow is busy)");
    EXPECT_EQ(enterElsewhere("Other", Access::Write), "");
    EXPECT_EQ(enterElsewhere("Quick", Access::Read), "");
    EXPECT_EQ(enterElsewhere("Quick", Access::Write), "general error (Provider Quick is busy)");
}

TEST(Exceptions, WithoutATextOrAnErrorAreErrors) {
    const Outcome silent = outcomeOf([] { cimserver::asCimError([] { throw std::runtime_error(""); }); });
    EXPECT_TRUE(silent.code == 1 && silent.description == "general error") << silent.description;
    const Outcome odd = outcomeOf([] { cimserver::asCimError([] { OW_THROWCIMMSG(CIMException::SUCCESS, "odd"); }); });
    EXPECT_TRUE(odd.code == 1 && odd.description == "no error (odd)") << odd.description;
}

TEST(Environment, AnswersTheProvider) {
    HostSettings settings;
    settings.configItems = {{"acme.paper", "A4"}};
    ProviderHost host(settings);
    host.addBuiltIn("A", [] { return new Scripted(nullptr); });
    CallOrigin origin;
    origin.user = "otto";
    const ProviderEnvironmentIFCRef env = host.enter("A", Access::Read, origin).env();
    // Kept after the call on purpose: providers do.
    EXPECT_EQ(env->getUserName(), String("otto"));
    EXPECT_EQ(env->getConfigItem("acme.paper", "A3"), String("A4"));
    EXPECT_EQ(env->getConfigItem("acme.ink", "blue"), String("blue"));
    EXPECT_EQ(env->getLogger("acme.part")->getDefaultComponent(), String("acme.part"));
    EXPECT_EQ(&env->getOperationContext(), &env->getOperationContext());
    EXPECT_EQ(outcomeOf([&] { env->getRepository(); }).code, CIMException::NOT_SUPPORTED);
    EXPECT_EQ(outcomeOf([&] { env->getCIMOMHandle(); }).code, CIMException::NOT_SUPPORTED);
}

} // namespace
