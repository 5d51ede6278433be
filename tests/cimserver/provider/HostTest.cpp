// Registration, loading, initialization, errors and the environment.
#include "Support.hpp"
#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Log.hpp"
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
    repository.compileText("[Provider(\"c++::" + std::string(128, 'x') + "\")] class Longest {};", "l.mof",
                           "root/test");
    repository.compileText("[Provider(\"c++::" + std::string(129, 'x') + "\")] class TooLong {};", "l.mof",
                           "root/test");
    const ProviderHost host{HostSettings()};
    const auto idOf = [&](const char* name) {
        return host.instanceProvider("root/test", *repository.findClass("root/test", name));
    };
    EXPECT_EQ(idOf("A"), "One");
    EXPECT_EQ(idOf("B"), "One") << "inherited";
    EXPECT_EQ(idOf("C"), "");
    EXPECT_EQ(idOf("Longest").size(), 128U);
    EXPECT_EQ(idOf("D"), "") << "NULL takes the inherited one away";
    const CIMClass& a = *repository.findClass("root/test", "A");
    EXPECT_EQ(host.methodProvider("root/test", a, a.getMethod(CIMName("F"))), "One");
    EXPECT_EQ(host.methodProvider("root/test", a, a.getMethod(CIMName("G"))), "Two");
    for (const char* bad : {"Perl", "Bare", "Path", "None", "TooLong"}) {
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
    const support::TempDir dir;
    cimserver::log::configure({dir / "log", cimserver::log::Level::Error});
    Registrations registrations;
    const IntrusiveReference<CppProviderBaseIFC> reporter(new Reporter);
    registrations.add("One", *reporter);
    EXPECT_EQ(support::contentOf(dir / "log"), "");
    registrations.add("Two", *reporter); // the first keeps its classes
    EXPECT_EQ(support::countOf("which provider One serves already", support::contentOf(dir / "log")), 2U);
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
    const support::TempDir dir;
    cimserver::log::configure({dir / "log", cimserver::log::Level::Error});
    host.scan(); // a folder that is missing is no reason to stop, but is told
    EXPECT_EQ(support::countOf("no_such_folder: No such file", support::contentOf(dir / "log")), 1U);
    EXPECT_EQ(support::countOf("\n", support::contentOf(dir / "log")), 1U);
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
    const auto enter = [&](const char* id, Access access) {
        return outcomeOf([&] { host.enter(id, access, CallOrigin()); }).description;
    };
    const auto enterElsewhere = [&](const char* id, Access access) {
        return std::async(std::launch::async, enter, id, access).get();
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

/// Enters a provider on a worker and tells how that ended; waits inside for the test's leave.
class EnteringJob : public Job {
  public:
    EnteringJob(ProviderHost& host, cimserver::Workers& workers, const char* id)
        : host_(host), workers_(workers), id_(id) {}
    void run() override {
        const Outcome outcome = outcomeOf([this] {
            const ProviderCall call = host_.enter(id_, Access::Read, CallOrigin());
            entered.set_value();
            leave.get_future().wait();
        });
        end.set_value(outcome.description);
    }
    bool abandoned() const override { return left; }
    void drop() override { end.set_value("dropped"); }
    void post(std::function<void()> task) override { workers_.post(id_, std::move(task)); }

    std::promise<void> entered;
    std::promise<void> leave;
    std::promise<std::string> end;
    std::atomic<bool> left{false};

  private:
    ProviderHost& host_;
    cimserver::Workers& workers_;
    std::string id_;
};

TEST(Jobs, ThatWaitOrRunInAProviderOccupyNoWorker) {
    HostSettings settings;
    settings.gate.queue = 2;
    ProviderHost host(settings);
    for (const char* id : {"Stuck", "Other"}) {
        host.addBuiltIn(id, [] { return new Scripted(nullptr); });
    }
    cimserver::Workers workers(1);
    const auto start = [&](const char* id) {
        auto job = std::make_shared<EnteringJob>(host, workers, id);
        workers.post("a client", [&host, job] { host.run(job); });
        return job;
    };
    const auto endOf = [](const std::shared_ptr<EnteringJob>& job) { return job->end.get_future().get(); };
    const auto stuck = start("Stuck");
    stuck->entered.get_future().wait();
    const auto gone = start("Stuck");
    const auto waiting = start("Stuck");
    EXPECT_EQ(endOf(start("Stuck")), "general error (Provider Stuck is busy)") << "the queue is full";
    gone->left = true;
    const auto late = start("Stuck");
    EXPECT_EQ(endOf(gone), "dropped");
    const auto other = start("Other");
    other->leave.set_value();
    EXPECT_EQ(endOf(other), "");
    stuck->leave.set_value();
    waiting->entered.get_future().wait();
    host.inspect(Gate::Clock::now() + 2 * settings.busyLimit);
    EXPECT_EQ(endOf(late), "general error (Provider Stuck is busy)") << "its time is over";
    waiting->leave.set_value();
    EXPECT_EQ(endOf(stuck) + endOf(waiting), "");
}

TEST(Workers, TakeTasksOfSendersInTurn) {
    std::string order;
    std::promise<void> all;
    {
        std::promise<void> begin;
        cimserver::Workers workers(1);
        workers.post("x", [&] { begin.get_future().wait(); });
        for (const char* task : {"a1", "a2", "a3", "b1", "c1"}) {
            workers.post(std::string(1, task[0]), [&order, task] { order += task; });
        }
        workers.post("c", [&] { all.set_value(); });
        begin.set_value();
        all.get_future().wait();
    }
    EXPECT_THAT(order, testing::StartsWith("a1b1c1a2"));
}

TEST(Calls, ThatTakeLongAreCountedAndLoggedOnce) {
    const support::TempDir dir;
    cimserver::log::configure({dir / "log", cimserver::log::Level::Info});
    ProviderHost host{HostSettings()};
    host.addBuiltIn("Stuck", [] { return new Scripted(nullptr); });
    CallOrigin origin;
    origin.user = "otto";
    origin.what = "GetInstance";
    origin.className = "C";
    {
        const ProviderCall call = host.enter("Stuck", Access::Read, origin);
        for (const auto hours : {0, 1, 2}) {
            host.inspect(Gate::Clock::now() + std::chrono::hours(hours));
            EXPECT_EQ(host.slowCalls(), hours == 0 ? 0U : 1U);
        }
    }
    EXPECT_EQ(host.slowCalls(), 0U);
    const std::string call = "\"GetInstance\" of C for user 'otto' in provider Stuck has ";
    EXPECT_EQ(support::countOf(call + "been running for more than 30000 ms", support::contentOf(dir / "log")), 1U);
    EXPECT_EQ(support::countOf(call + "ended after", support::contentOf(dir / "log")), 1U);
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
    const ProviderEnvironmentIFCRef env = host.enter("A", Access::Read, CallOrigin()).env();
    // Kept after the call on purpose: providers do.
    EXPECT_EQ(env->getConfigItem("acme.paper", "A3"), String("A4"));
    EXPECT_EQ(env->getConfigItem("acme.ink", "blue"), String("blue"));
    EXPECT_EQ(env->getLogger("acme.part")->getDefaultComponent(), String("acme.part"));
    EXPECT_EQ(outcomeOf([&] { env->getRepository(); }).code, CIMException::NOT_SUPPORTED);
    EXPECT_EQ(outcomeOf([&] { env->getCIMOMHandle(); }).code, CIMException::NOT_SUPPORTED);
}

} // namespace
