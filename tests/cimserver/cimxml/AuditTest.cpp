#include "cimserver/cimxml/Audit.hpp"

#include "Support.hpp"
#include "cimserver/common/AuditLog.hpp"

#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace OpenWBEM;
using namespace cimserver;
using testing::HasSubstr;

class Audit : public testing::Test {
  protected:
    ~Audit() override { audit::configure({}); }

    support::TempDir dir_;
    cimom::RequestContext context_{"ann", "192.0.2.1:1"};
    const cimxml::RequestMessage message_{
        "<CIM CIMVERSION='2.0' DTDVERSION='2.0'><MESSAGE ID='1' PROTOCOLVERSION='1.0'><SIMPLEREQ><IMETHODCALL "
        "NAME='DeleteInstance'><LOCALNAMESPACEPATH><NAMESPACE NAME='root'/></LOCALNAMESPACEPATH></IMETHODCALL>"
        "</SIMPLEREQ></MESSAGE></CIM>",
        {}};
    cimxml::AuditRecord record_{context_, message_};
};

TEST_F(Audit, SaysWhatTheProviderShowsAfterwards) {
    const auto instance = [](const char* a, const char* b, const char* c) {
        CIMInstance made("T");
        return made.setProperty("A", CIMValue(a))
            .setProperty("B", CIMValue(b))
            .setProperty("C", CIMValue(c))
            .setProperty("Password", CIMValue(c));
    };
    record_.onModification(instance("9", "9", "9").getProperties(), instance("1", "1", "1"));
    record_.afterModification(instance("9", "1", "5"));
    testing::internal::CaptureStderr();
    record_.write({});
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("root A=\"9\", B=\"9\" (reads unchanged), C=\"9\" (reads \"5\"), Password=*** -> ok"));
}

TEST_F(Audit, CutsNoUrlOpen) {
    const std::string url = std::string(1000, 'x') + " ftp://ann:sesame" + std::string(100, 'x') + "@host/";
    record_.onModification(CIMInstance("T").setProperty("A", CIMValue(url.c_str())).getProperties(), CIMInstance("T"));
    testing::internal::CaptureStderr();
    record_.write({});
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("x ftp://***@host/\" -> ok"));
}

TEST_F(Audit, RefusedRequestsOfAUserAreSummedUp) {
    audit::configure({dir_ / "audit", false});
    for (unsigned i = 0; i < audit::kMostRefusals + 5; ++i) {
        cimxml::AuditRecord(context_, message_).write({2, "the role is read"});
    }
    cimxml::AuditRecord begun(context_, message_);
    begun.beforeChange();
    begun.write({1, "failed"}); // is no refusal
    const auto lines = [this] { return support::countOf("\n", support::contentOf(dir_ / "audit")); };
    EXPECT_EQ(lines(), audit::kMostRefusals + 2);
    audit::sumUp(std::chrono::steady_clock::now() + std::chrono::seconds(59));
    EXPECT_EQ(lines(), audit::kMostRefusals + 2);
    audit::sumUp(std::chrono::steady_clock::now() + std::chrono::minutes(2));
    EXPECT_THAT(support::contentOf(dir_ / "audit"),
                testing::EndsWith(" audit user=ann -> 5 more requests were refused within a minute\n"));
}

TEST_F(Audit, AChangeThatCannotBeRecordedIsPrevented) {
    audit::configure({"/dev/full", false});
    EXPECT_THROW(record_.beforeChange(), CimError);
    record_.write({1, "refused"});
    EXPECT_EQ(audit::problem(), "the audit record cannot be written");
    audit::configure({"/dev/full", true});
    EXPECT_NO_THROW(record_.beforeChange());
}

TEST_F(Audit, TheFileGoesOnAfterATornLineAndWhenItIsMoved) {
    support::writeFile(dir_ / "audit", "a torn line");
    audit::configure({dir_ / "audit", false});
    EXPECT_TRUE(audit::begin("first"));
    std::filesystem::rename(dir_ / "audit", dir_ / "old");
    audit::end("second -> ok");
    EXPECT_THAT(support::contentOf(dir_ / "old"),
                testing::MatchesRegex("a torn line\n[-0-9T:+]* audit first -> begun\n"));
    EXPECT_THAT(support::contentOf(dir_ / "audit"), testing::MatchesRegex("[-0-9T:+]* audit second -> ok\n"));
}

TEST_F(Audit, GoesToASyslogSocketAndNoticesThatNobodyListens) {
    sockaddr_un address{AF_UNIX, {}};
    (dir_ / "log").copy(address.sun_path, sizeof address.sun_path - 1);
    const auto listen = [&] {
        const int server = ::socket(AF_UNIX, SOCK_DGRAM, 0);
        EXPECT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        return server;
    };
    const auto expectLine = [](int server, const std::string& line) {
        char text[200] = {};
        EXPECT_GT(::recv(server, text, sizeof text - 1, MSG_DONTWAIT), 0);
        EXPECT_THAT(text, testing::MatchesRegex("<85>cimserverd\\[[0-9]*\\]: audit " + line));
    };
    int server = listen();
    audit::configure({dir_ / "log", false});
    EXPECT_TRUE(audit::begin("first"));
    expectLine(server, "first -> begun");
    ::close(server);
    EXPECT_FALSE(audit::begin("second"));
    std::filesystem::remove(dir_ / "log");
    server = listen();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(audit::begin("third"));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("writing " + (dir_ / "log") + " again"));
    expectLine(server, "1 lines are missing here");
    expectLine(server, "third -> begun");
    ::close(server);
}

} // namespace
