// The subclass ids of the library's exceptions.

#pragma once

#include "OW_config.h"

namespace OpenWBEM {

/// What Exception::getSubClassId() returns for each class.
namespace ExceptionIds {

static const int CIMExceptionId = 1;
static const int CIMErrorExceptionId = 2;
static const int HTTPExceptionId = 3;
static const int XMLParseExceptionId = 4;
static const int AssertionExceptionId = 5;
static const int ValueCastExceptionId = 6;
static const int AuthenticationExceptionId = 7;
static const int CIMProtocolExceptionId = 8;
static const int UnknownHostExceptionId = 9;
static const int SocketAddressExceptionId = 10;
static const int SocketExceptionId = 11;
static const int SocketTimeoutExceptionId = 12;
static const int ConditionLockExceptionId = 13;
static const int ConditionResourceExceptionId = 14;
static const int ConfigExceptionId = 15;
static const int NULLCOWReferenceExceptionId = 16;
static const int DateTimeExceptionId = 17;
static const int EnumerationExceptionId = 18;
static const int ExecTimeoutExceptionId = 19;
static const int ExecBufferFullExceptionId = 20;
static const int ExecErrorExceptionId = 21;
static const int IOExceptionId = 22;
static const int BadCIMSignatureExceptionId = 23;
static const int LoggerExceptionId = 24;
static const int DeadlockExceptionId = 25;
static const int NoSuchPropertyExceptionId = 26;
static const int NoSuchProviderExceptionId = 27;
static const int NoSuchQualifierExceptionId = 28;
static const int NULLValueExceptionId = 29;
static const int ContextDataNotFoundExceptionId = 30;
static const int OutOfBoundsExceptionId = 31;
static const int FileSystemExceptionId = 32;
static const int RWLockerExceptionId = 33;
static const int NULLReferenceExceptionId = 34;
static const int SelectExceptionId = 35;
static const int SharedLibraryExceptionId = 36;
static const int StringConversionExceptionId = 37;
static const int TimeoutExceptionId = 38;
static const int ThreadExceptionId = 39;
static const int CancellationDeniedExceptionId = 40;
static const int ThreadBarrierExceptionId = 41;
static const int MalformedURLExceptionId = 42;
static const int UUIDExceptionId = 43;
static const int UnnamedPipeExceptionId = 44;
static const int InvalidUTF8ExceptionId = 45;
static const int CmdLineParserExceptionId = 46;
static const int NULLCOWIntrusiveReferenceExceptionId = 47;
static const int LogMessagePatternFormatterExceptionId = 48;
static const int CIMDateTimeExceptionId = 49;

} // namespace ExceptionIds

} // namespace OpenWBEM
