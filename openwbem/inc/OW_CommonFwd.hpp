// Forward declarations and typedefs of the classes that do not belong to the CIM model.

#pragma once

#include "OW_ArrayFwd.hpp"
#include "OW_IntrusiveReference.hpp"
#include "OW_config.h"

namespace OpenWBEM {

template <class T>
class Enumeration;
template <class T>
class Reference;

class Bool;
class Char16;
class DateTime;
class Exception;
class Format;
class Logger;
class OperationContext;
class SharedLibrary;
class String;
class StringBuffer;
class Thread;
struct LogMessage;

typedef IntrusiveReference<Logger> LoggerRef;
typedef IntrusiveReference<SharedLibrary> SharedLibraryRef;
typedef Array<String> StringArray;
typedef Array<Char16> Char16Array;
typedef Array<Bool> BoolArray;
typedef Enumeration<String> StringEnumeration;

} // namespace OpenWBEM
