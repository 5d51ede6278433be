#include "cimserver/cimxml/Audit.hpp"

#include "Support.hpp"
#include "cimserver/common/AuditLog.hpp"

#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace OpenWBEM;
using namespace cimserver;
using testing::HasSubstr;
using testing::Not;

cimxml::RequestMessage messageOf(const std::string& call) {
    return {"<CIM CIMVERSION='2.0' DTDVERSION='2.0'><MESSAGE ID='1' PROTOCOLVERSION='1.0'><SIMPLEREQ>" + call +
                "</SIMPLEREQ></MESSAGE></CIM>",
            {}};
}

std::string intrinsic(const std::string& operation, const std::string& parameters) {
    return "<IMETHODCALL NAME='" + operation + "'><LOCALNAMESPACEPATH><NAMESPACE NAME='root'/></LOCALNAMESPACEPATH>" +
           parameters + "</IMETHODCALL>";
}

/// A ModifyInstance of T.Name=key with the elements of the instance.
std::string modify(const std::string& keys, const std::string& properties) {
    return intrinsic("ModifyInstance", "<IPARAMVALUE NAME='ModifiedInstance'><VALUE.NAMEDINSTANCE><INSTANCENAME "
                                       "CLASSNAME='T'>" +
                                           keys + "</INSTANCENAME><INSTANCE CLASSNAME='T'>" + properties +
                                           "</INSTANCE></VALUE.NAMEDINSTANCE></IPARAMVALUE>");
}

std::string property(const std::string& name, const std::string& value) {
    return "<PROPERTY NAME='" + name + "' TYPE='string'>" + value + "</PROPERTY>";
}

std::string key(const std::string& name, const std::string& value) {
    return "<KEYBINDING NAME='" + name + "'><KEYVALUE>" + value + "</KEYVALUE></KEYBINDING>";
}

class Audit : public testing::Test {
  protected:
    ~Audit() override { audit::configure({}); }

    /// The line without its id.
    std::string lineOf(const std::string& call, const Outcome& outcome = {}) {
        const cimxml::RequestMessage message = messageOf(call);
        testing::internal::CaptureStderr();
        cimxml::AuditRecord(context_, message).write(outcome);
        const std::string line = testing::internal::GetCapturedStderr();
        return line.substr(line.find("user="));
    }

    support::TempDir dir_;
    cimom::RequestContext context_{"ann", "192.0.2.1:1"};
};

TEST_F(Audit, NamesObjectsAndValuesOfRefusedRequestsWithoutSecrets) {
    const std::string reference = "<VALUE.REFERENCE><INSTANCENAME CLASSNAME='U'>" + key("Id", "1") +
                                  key("ThePassword", "hunter2") + "</INSTANCENAME></VALUE.REFERENCE>";
    const std::pair<std::string, std::string> cases[] = {
        {modify(key("Name", "n"), property("A", "<VALUE>1</VALUE>") + property("B", "")),
         "root:T.Name=\"n\" A=\"1\", B=NULL"},
        {modify(key("Name", "n"),
                "<PROPERTY.ARRAY NAME='C' "
                "TYPE='string'><VALUE.ARRAY><VALUE>NULL</VALUE><VALUE.NULL/></VALUE.ARRAY></PROPERTY.ARRAY>"),
         R"(root:T.Name="n" C="<VALUE.ARRAY\x3e<VALUE\x3eNULL</VALUE\x3e<VALUE.NULL/\x3e</VALUE.ARRAY\x3e")"},
        {modify(key("FTPPassword", "hunter2") + key("B", "b"), property("PASSWORDS", "<VALUE>hunter2</VALUE>")),
         "root:T.FTPPassword=***,B=\"b\" PASSWORDS=***"},
        {modify("<KEYVALUE>hunter2</KEYVALUE>", property("E", "<VALUE>&lt;P NAME='password'>hunter2</VALUE>")),
         "root:T.*** E=***"},
        {intrinsic("SetProperty",
                   "<IPARAMVALUE NAME='NewValue'>" + reference +
                       "</IPARAMVALUE><IPARAMVALUE NAME='PropertyName'><VALUE>P</VALUE></IPARAMVALUE>"
                       "<IPARAMVALUE NAME='InstanceName'><INSTANCENAME CLASSNAME='T'><KEYBINDING NAME='R'>" +
                       reference + "</KEYBINDING></INSTANCENAME></IPARAMVALUE>"),
         "root:T.R=*** P=***"},
        {intrinsic("CreateInstance", "<IPARAMVALUE NAME='NewInstance'><INSTANCE CLASSNAME='T'>" +
                                         property("Name", "<VALUE>n</VALUE>") + "</INSTANCE></IPARAMVALUE>"),
         "root:T Name=\"n\""},
        {"<METHODCALL NAME='Do'><LOCALCLASSPATH><LOCALNAMESPACEPATH><NAMESPACE "
         "NAME='root'/></LOCALNAMESPACEPATH><CLASSNAME NAME='T'/>"
         "</LOCALCLASSPATH><PARAMVALUE NAME='How'><VALUE>x</VALUE></PARAMVALUE></METHODCALL>",
         "root:T How=\"x\""}};
    for (const auto& [call, text] : cases) {
        EXPECT_THAT(lineOf(call), HasSubstr(text + " -> ok\n"));
        EXPECT_THAT(lineOf(call, {6, "T.ThePassword=\"hunter2\""}),
                    HasSubstr(text + " -> error 6 \"T.ThePassword***\"\n"));
    }
}

TEST_F(Audit, NothingImitatesAnOutcome) {
    context_.user = "ann -> ok";
    const std::string forged = "x\" -> ok\n\\\xE2\x80\xAE";
    const std::string line =
        lineOf(modify(key("Name", forged), property("A", "<VALUE>" + forged + "</VALUE>")), {1, forged});
    const std::string quoted = R"("x\" -\x3e ok\n\\\xe2\x80\xae")";
    EXPECT_EQ(line, R"(user="ann -\x3e ok" peer=192.0.2.1:1 ModifyInstance root:T.Name=)" + quoted + " A=" + quoted +
                        " -> error 1 " + quoted + "\n");
    const std::string cut = lineOf(
        modify(key("Name", "n"), property(std::string(5000, 'a'), "<VALUE>" + std::string(5000, 'v') + "</VALUE>")));
    EXPECT_THAT(cut, HasSubstr("v\"... -> ok"));
    EXPECT_LT(cut.size(), 2500U);
}

TEST_F(Audit, SaysWhatTheProviderShowsAfterwards) {
    const cimxml::RequestMessage message = messageOf(modify(key("Name", "n"), property("A", "<VALUE>9</VALUE>")));
    cimxml::AuditRecord record(context_, message);
    const auto instance = [](const char* a, const char* b, const char* c) {
        CIMInstance made("T");
        return made.setProperty("A", CIMValue(a))
            .setProperty("B", CIMValue(b))
            .setProperty("C", CIMValue(c))
            .setProperty("Password", CIMValue(c));
    };
    record.onModification(instance("9", "9", "9").getProperties(), instance("1", "1", "1"));
    record.afterModification(instance("9", "1", "5"));
    testing::internal::CaptureStderr();
    record.write({});
    EXPECT_THAT(
        testing::internal::GetCapturedStderr(),
        HasSubstr("T.Name=\"n\" A=\"9\", B=\"9\" (reads unchanged), C=\"9\" (reads \"5\"), Password=*** -> ok"));
}

TEST_F(Audit, AChangeThatCannotBeRecordedIsPrevented) {
    const cimxml::RequestMessage message = messageOf(modify(key("Name", "n"), ""));
    cimxml::AuditRecord record(context_, message);
    audit::configure({"/dev/full", false});
    EXPECT_THROW(record.beforeChange(), CimError);
    record.write({1, "refused"});
    EXPECT_EQ(audit::problem(), "the audit record cannot be written");
    audit::configure({"/dev/full", true});
    EXPECT_NO_THROW(record.beforeChange());
    EXPECT_THROW(audit::configure({"/proc/absent/audit", false}), std::runtime_error);
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
    const int server = ::socket(AF_UNIX, SOCK_DGRAM, 0);
    ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    audit::configure({dir_ / "log", false});
    EXPECT_TRUE(audit::begin("first"));
    char text[200] = {};
    EXPECT_GT(::recv(server, text, sizeof text - 1, MSG_DONTWAIT), 0);
    EXPECT_THAT(text, testing::MatchesRegex("<85>cimserverd\\[[0-9]*\\]: audit first -> begun"));
    ::close(server);
    EXPECT_FALSE(audit::begin("second"));
}

} // namespace
