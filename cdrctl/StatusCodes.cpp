#include "cdrctl/StatusCodes.hpp"

#include "OW_CIMException.hpp"
#include "StatusRow.hpp"
#include "StatusText.hpp"
#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Text.hpp"

#include <charconv>

namespace cdrctl {

using zpo::StatusRow;

namespace {

constexpr StatusRow kModuleRows[] = {
    {100, "", "a value could not be read from the registry",
     "CdrOAM.log names the entry and the platform's status; explain that one with cdrctl status"},
    {101, "", "a value could not be written to the registry; it is unchanged",
     "CdrOAM.log names the entry and the platform's status (often 0x20000B, full, or 0x200009, not writable)"},
    {301, "", "the value was refused: it is outside its range or not in its form",
     "see the ranges by cdrctl show; CLASSES.md has all of them"},
};

constexpr StatusRow kCimRows[] = {
    {1, "CIM_ERR_FAILED", "",
     "the text in brackets is the provider's; a number there can be explained by cdrctl status"},
    {2, "CIM_ERR_ACCESS_DENIED", "", "the user's role is read; changes need a user with the role write"},
    {3, "CIM_ERR_INVALID_NAMESPACE", "", "give the server's namespace by --namespace; usually it is root/cimv2"},
    {4, "CIM_ERR_INVALID_PARAMETER", "", "the text names the value that is wrong"},
    {5, "CIM_ERR_INVALID_CLASS", "", "the server was started without the schema QTX_CDR.mof, or the name is wrong"},
    {6, "CIM_ERR_NOT_FOUND", "", "the object or class does not exist; check key and spelling"},
    {7, "CIM_ERR_NOT_SUPPORTED", "", "objects of these classes are neither created nor deleted"},
    {8, "CIM_ERR_CLASS_HAS_CHILDREN", "", ""},
    {9, "CIM_ERR_CLASS_HAS_INSTANCES", "", ""},
    {10, "CIM_ERR_INVALID_SUPERCLASS", "", ""},
    {11, "CIM_ERR_ALREADY_EXISTS", "", ""},
    {12, "CIM_ERR_NO_SUCH_PROPERTY", "", "the text names the property; cdrctl show lists those there are"},
    {13, "CIM_ERR_TYPE_MISMATCH", "", "the value is not of the property's type"},
    {14, "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED", "", ""},
    {15, "CIM_ERR_INVALID_QUERY", "", ""},
    {16, "CIM_ERR_METHOD_NOT_AVAILABLE", "", ""},
    {17, "CIM_ERR_METHOD_NOT_FOUND", "", "methods are spelled exactly as in the schema"},
    {21, "CIM_ERR_INVALID_ENUMERATION_CONTEXT", "", "the enumeration has ended or expired; begin it again"},
    {22, "CIM_ERR_INVALID_OPERATION_TIMEOUT", "", ""},
    {26, "CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED", "", ""},
    {27, "CIM_ERR_SERVER_LIMITS_EXCEEDED", "", "too many open enumerations, or too large an answer; try again"},
};

constexpr StatusRow kHttpRows[] = {
    {400, "", "the server could not understand the request", "the header CIMError and the server's log tell why"},
    {401, "", "a user and password are needed, or they are wrong", "--user NAME; see the server's log"},
    {403, "", "the server refuses this client", "see the server's log"},
    {404, "", "the server has nothing under this path", "the path is /cimom"},
    {413, "", "the request is longer than the server takes", "--max-body of the server"},
    {414, "", "the address line is longer than the server takes", "--max-head of the server"},
    {421, "", "the server does not know the name by which it was called", "--host-name of the server, or a user file"},
    {431, "", "the header is longer than the server takes", "--max-head of the server"},
    {501, "", "the server does not offer that", ""},
    {503, "", "the server has no room: too many connections or too little memory", "try again; see the server's log"},
};

/// A number of 32 bits; what is no number is sought as a name.
std::optional<std::uint32_t> numberOf(const std::string& code) {
    const bool hex = code.size() > 2 && code[0] == '0' && (code[1] == 'x' || code[1] == 'X');
    const char* const end = code.data() + code.size();
    std::uint32_t number = 0;
    const auto [rest, error] = std::from_chars(code.data() + (hex ? 2 : 0), end, number, hex ? 16 : 10);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

/// The platform's statuses come in groups of less than 32, one for each part.
std::optional<std::uint32_t> numberOfName(const std::string& name) {
    const auto is = [&name](const StatusRow* row) {
        return row != nullptr && cimserver::equalsIgnoringCase(row->name, name);
    };
    for (const std::uint32_t group : {0x200000U, 0x210000U, 0x220000U, 0x230000U, 0x300000U}) {
        for (std::uint32_t number = group; number < group + 32; ++number) {
            if (is(zpo::findStatus(number))) {
                return number;
            }
        }
    }
    for (const StatusRow& row : kCimRows) {
        if (is(&row)) {
            return row.status;
        }
    }
    return std::nullopt;
}

StatusMeaning meaning(const char* source, const StatusRow& row) {
    return {row.status, source, row.name, row.text, row.advice};
}

void addIf(std::vector<StatusMeaning>& meanings, const char* source, const StatusRow* row) {
    if (row != nullptr) {
        meanings.push_back(meaning(source, *row));
    }
}

} // namespace

std::vector<StatusMeaning> meaningsOf(const std::string& code) {
    const auto number = numberOf(code);
    const auto status = number ? number : numberOfName(code);
    std::vector<StatusMeaning> meanings;
    if (!status) {
        return meanings;
    }
    addIf(meanings, "platform", zpo::findStatus(*status));
    addIf(meanings, "CDR module", zpo::findRow(kModuleRows, *status));
    addIf(meanings, "HTTP", zpo::findRow(kHttpRows, *status));
    if (const StatusRow* const row = zpo::findRow(kCimRows, *status)) {
        meanings.push_back(meaning("CIM", *row));
        meanings.back().text = cimserver::CimError(static_cast<cimserver::Status>(*status), "").getMessage();
    }
    return meanings;
}

std::optional<StatusMeaning> moduleStatusIn(std::string_view text) {
    for (const StatusRow& row : kModuleRows) {
        if (text.find("(" + std::to_string(row.status) + ")") != std::string_view::npos) {
            return meaning("CDR module", row);
        }
    }
    return std::nullopt;
}

} // namespace cdrctl
