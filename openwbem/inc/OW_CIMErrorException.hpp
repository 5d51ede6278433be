// Errors of the protocol between client and object manager, which carry no CIM status code.

#pragma once

#include "OW_Exception.hpp"
#include "OW_ExceptionIds.hpp"
#include "OW_config.h"

namespace OpenWBEM {

class OW_VISIBILITY_DEFAULT OW_COMMON_API CIMErrorException : public Exception {
  public:
    /// The texts that a CIMError header carries.
    static const char* const unsupported_protocol_version;
    static const char* const multiple_requests_unsupported;
    static const char* const unsupported_cim_version;
    static const char* const unsupported_dtd_version;
    static const char* const request_not_valid;
    static const char* const request_not_well_formed;
    static const char* const request_not_loosely_valid;
    static const char* const header_mismatch;
    static const char* const unsupported_operation;

    /// msg is one of the texts above.
    CIMErrorException(const char* file, int line, const char* msg);
    CIMErrorException(const CIMErrorException&) noexcept = default;
    CIMErrorException& operator=(const CIMErrorException&) noexcept = default;
    ~CIMErrorException() noexcept override;

    CIMErrorException* clone() const noexcept override;
    const char* type() const override;
};

} // namespace OpenWBEM
