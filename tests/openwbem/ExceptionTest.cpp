#include "LibraryTest.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_NoSuchPropertyException.hpp"

using namespace OpenWBEM;

namespace OpenWBEM {
namespace ExceptionIds {
const int NumberedExceptionId = 2001;
} // namespace ExceptionIds
} // namespace OpenWBEM

namespace {

OW_DECLARE_EXCEPTION(Device)
OW_DEFINE_EXCEPTION(Device)
OW_DECLARE_EXCEPTION2(Disk, DeviceException)
OW_DEFINE_EXCEPTION2(Disk, DeviceException)
OW_DECLARE_EXCEPTION(Numbered)
OW_DEFINE_EXCEPTION_WITH_ID(Numbered)

static_assert(!std::is_copy_constructible<Exception>::value, "caught by reference only");
static_assert(std::is_nothrow_copy_constructible<DeviceException>::value, "copied while it is thrown");

TEST(Exception, carriesWhatTheMacrosGiveIt) {
    using Throw = void (*)();
    // clang-format off
    const std::tuple<Throw, const char*, const char*, int> cases[] = {
        {[] { OW_THROW(DeviceException, "gone"); }, "DeviceException", "gone", -1},
        {[] { OW_THROW_ERR(DeviceException, "gone", 5); }, "DeviceException", "gone", 5},
        {[] { OW_THROW(DiskException, nullptr); }, "DiskException", "", -1},
        {[] { OW_THROW_ERRNO1(DeviceException, ENOENT); }, "DeviceException", "No such file or directory", ENOENT},
        {[] { OW_THROW_ERRNO_MSG1(DeviceException, "disk", ENOENT); }, "DeviceException", "disk: 2(No such file or directory)", -1},
        {[] { OW_THROW_ERRNO_MSG1(DeviceException, String("disk"), ENOENT); }, "DeviceException", "disk: 2(No such file or directory)", -1},
        {[] { errno = ENOENT; OW_THROW_ERRNO(DeviceException); }, "DeviceException", "No such file or directory", ENOENT},
    };
    // clang-format on
    for (const auto& [thrower, type, message, code] : cases) {
        try {
            thrower();
            FAIL() << message;
        } catch (const DeviceException& e) {
            EXPECT_STREQ(e.type(), type);
            EXPECT_STREQ(e.getMessage(), message);
            EXPECT_STREQ(static_cast<const std::exception&>(e).what(), message);
            EXPECT_EQ(e.getErrorCode(), code);
            EXPECT_EQ(e.getSubClassId(), -1);
            EXPECT_STREQ(e.getFile(), __FILE__);
        }
    }
}

TEST(Exception, printsWhatItHas) {
    const std::tuple<const char*, int, const char*, const char*> cases[] = {
        {"disk.cpp", 12, "gone", "disk.cpp: 12 DeviceException: gone"},
        {nullptr, 12, "gone", "[no file]: 12 DeviceException: gone"},
        {"", 0, nullptr, "[no file]: [no line] DeviceException: [no message]"}};
    for (const auto& [file, line, message, printed] : cases) {
        std::ostringstream stream;
        stream << DeviceException(file, line, message);
        EXPECT_EQ(stream.str(), printed);
    }
}

TEST(Exception, keepsItsCauseThroughCopies) {
    try {
        try {
            OW_THROWCIMMSG(CIMException::NOT_FOUND, "bin 7");
        } catch (const CIMException& e) {
            OW_THROW_ERR_SUBEX(DiskException, "outer", 3, e);
        }
    } catch (const DiskException& e) {
        const std::unique_ptr<DiskException> copy(e.clone());
        const DiskException second(*copy);
        EXPECT_STREQ(second.type(), "DiskException");
        ASSERT_NE(second.getSubException(), nullptr);
        EXPECT_STREQ(second.getSubException()->type(), "CIMException");
        EXPECT_STREQ(second.getSubException()->getMessage(), "requested object could not be found (bin 7)");
    }
}

TEST(Exception, idsTellClassesApart) {
    EXPECT_EQ(NumberedException("f", 1, "m").getSubClassId(), 2001);
    EXPECT_EQ(NumberedException("f", 1, "m", 0, nullptr, 77).getSubClassId(), 77);
    EXPECT_EQ(CIMException("f", 1, CIMException::FAILED).getSubClassId(), 1);
    EXPECT_EQ(CIMErrorException("f", 1, CIMErrorException::header_mismatch).getSubClassId(), 2);
    EXPECT_EQ(NoSuchPropertyException("f", 1, "m").getSubClassId(), 26);
}

// What old sources derive from: the constructors without a code, and with the id in front.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
struct OldException : public Exception {
    OldException() : Exception("f", 1, "m") {}
    explicit OldException(int id) : Exception(id, "f", 1, "m", 5) {}
};
#pragma GCC diagnostic pop

TEST(Exception, takesTheOldConstructors) {
    EXPECT_TRUE(OldException().getErrorCode() == -1 && OldException().getSubClassId() == -1);
    EXPECT_TRUE(OldException(7).getErrorCode() == 5 && OldException(7).getSubClassId() == 7);
}

TEST(CIMException, composesTheTextForTheClient) {
    const auto made = [](int code, const char* message) {
        return CIMException("file", 1, static_cast<CIMException::ErrNoType>(code), message);
    };
    const std::pair<int, std::string> cases[] = {
        {0, "no error"},
        {8, "operation cannot be done on class with subclasses"},
        {17, "extrinsic method does not exist"},
    };
    for (const auto& [code, text] : cases) {
        EXPECT_EQ(made(code, nullptr).getMessage(), text);
        EXPECT_EQ(made(code, "").what(), text);
        EXPECT_EQ(made(code, "<\"x\">").getMessage(), text + " (<\"x\">)");
        EXPECT_EQ(made(code, (text + " indeed").c_str()).getMessage(), text + " indeed");
        EXPECT_TRUE(made(code, "").getErrNo() == code && made(code, "").getErrorCode() == code);
    }
    EXPECT_STREQ(made(1, "General error").getMessage(), "general error (General error)");
    EXPECT_STREQ(made(18, "odd").getMessage(), "unknown error (odd)");
    EXPECT_STREQ(made(-1, nullptr).getMessage(), "unknown error");
}

TEST(CIMException, keepsTheTextOfItsFirstUse) {
    CIMException asked("file", 1, CIMException::FAILED, "m");
    EXPECT_STREQ(asked.getMessage(), "general error (m)");
    asked.setErrNo(CIMException::NOT_FOUND);
    EXPECT_STREQ(asked.getMessage(), "general error (m)");
    EXPECT_EQ(asked.getErrNo(), CIMException::NOT_FOUND);
    CIMException fresh("file", 1, CIMException::FAILED, "m");
    fresh.setErrNo(CIMException::NOT_FOUND);
    EXPECT_STREQ(fresh.getMessage(), "requested object could not be found (m)");
    asked.swap(fresh);
    EXPECT_STREQ(asked.getMessage(), "requested object could not be found (m)");
    fresh = asked;
    EXPECT_STREQ(fresh.getMessage(), asked.getMessage());
}

} // namespace
