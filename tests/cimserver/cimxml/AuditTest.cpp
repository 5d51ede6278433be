#include "cimserver/cimxml/Audit.hpp"

#include "cimserver/common/Log.hpp"

#include <gtest/gtest.h>

namespace {

using namespace OpenWBEM;
using namespace cimserver;

std::string lineOf(const cimxml::AuditRecord& record, const Outcome& outcome) {
    testing::internal::CaptureStderr();
    record.write(outcome);
    return testing::internal::GetCapturedStderr();
}

TEST(Audit, KeepsSecretsOutAndCutsWhatIsLong) {
    cimom::RequestContext context;
    context.user = "ann\nroot";
    context.peer = "192.0.2.1:1";
    cimxml::AuditRecord record(context, "SetProperty", "root/cimv2");
    record.value("FTPServerPassword", CIMValue("hunter2"));
    record.value("PASSWORDS", CIMValue(StringArray(size_t(2), "hunter2")));
    record.value("Text", CIMValue(String(std::string(5000, 'x').c_str())));
    record.value("None", CIMValue(CIMNULL));
    record.value("Embedded", CIMValue("instance of C { Password = \"hunter2\"; }"));
    const std::string line = lineOf(record, {12, std::string(5000, 'y')});
    EXPECT_EQ(line.find("hunter2"), std::string::npos);
    EXPECT_NE(line.find("user=ann\\nroot peer=192.0.2.1:1 SetProperty root/cimv2 FTPServerPassword=***, PASSWORDS=***"),
              std::string::npos)
        << line;
    EXPECT_NE(line.find("x..., None=NULL, Embedded=*** -> error 12 yyy"), std::string::npos) << line;
    EXPECT_LT(line.size(), 800U);
}

} // namespace
