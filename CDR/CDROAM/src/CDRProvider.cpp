#include "CDRProvider.hpp"

#include "CDROAMWrap.hpp"
#include "CFG_Exception.hpp"
#include "QTX_CDRPullStatisticsProvider.hpp"
#include "QTX_CDRPushSettingProvider.hpp"
#include "QTX_CDRPushStatisticsProvider.hpp"
#include "QTX_CDRServiceAccessBinProvider.hpp"
#include "QTX_CDRServicePrefixBinProvider.hpp"
#include "QTX_CDRServiceProvider.hpp"
#include "RequestLock.hpp"

#include "OW_CIM.hpp"
#include "OW_Logger.hpp"

#include <cstdio>

using namespace OpenWBEM;

// The per-class providers; made in this order when the library is loaded, destroyed in the reverse order.
QTX_CDRPushSettingProvider QTX_CDRPushSettingProv;
QTX_CDRPushStatisticsProvider QTX_CDRPushStatisticsProv;
QTX_CDRPullStatisticsProvider QTX_CDRPullStatisticsProv;
QTX_CDRServiceProvider QTX_CDRServiceProv;
QTX_CDRServicePrefixBinProvider QTX_CDRServicePrefixBinProv;
QTX_CDRServiceAccessBinProvider QTX_CDRServiceAccessBinProv;

const char* const QTX_CDRPushSettingName = "QTX_CDRPushSetting";
const char* const QTX_CDRPushStatisticsName = "QTX_CDRPushStatistics";
const char* const QTX_CDRPullStatisticsName = "QTX_CDRPullStatistics";
const char* const QTX_CDRServiceName = "QTX_CDRService";
const char* const QTX_CDRServicePrefixBinName = "QTX_CDRServicePrefixBin";
const char* const QTX_CDRServiceAccessBinName = "QTX_CDRServiceAccessBin";

const char* UnknownStdException = "Unknown std::exception caught in CDRProvider\n";
const char* UnknownException = "Unknown throw caught in CDRProvider\n";

CDROAMWrap* myInstance = nullptr;

namespace {

constexpr const char* kSource = "CDR/CDROAM/src/CDRProvider";

// A CIM class and what serves it.
struct Route {
    const char* className;
    CppInstanceProviderIFC& instances;
    CppMethodProviderIFC& methods;
    void (*cleanup)();
};

template <auto& provider>
Route routeTo(const char* className) {
    return {className, provider, provider, [] { provider.cleanup(); }};
}

const Route kRoutes[] = {
    routeTo<QTX_CDRPushSettingProv>(QTX_CDRPushSettingName),
    routeTo<QTX_CDRPushStatisticsProv>(QTX_CDRPushStatisticsName),
    routeTo<QTX_CDRPullStatisticsProv>(QTX_CDRPullStatisticsName),
    routeTo<QTX_CDRServiceProv>(QTX_CDRServiceName),
    routeTo<QTX_CDRServicePrefixBinProv>(QTX_CDRServicePrefixBinName),
    routeTo<QTX_CDRServiceAccessBinProv>(QTX_CDRServiceAccessBinName),
};

// What differs between operations: the name in messages, and the source lines that the CIM errors carry. The lines are
// fixed: support staff knows the errors by them. An operation with kNone for a framework exception treats it like any
// other std::exception.
struct Operation {
    const char* fragment;
    int readError;
    int writeError;
    int stdException;
    int otherThrow;
    int unknownClass;
};

constexpr int kNone = 0;
constexpr Operation kEnumInstanceNames{" while performing enumInstanceNames operation on ", 142, kNone, 157, 165, 170};
constexpr Operation kEnumInstances{" while performing enumInstances operation on ", 245, kNone, 260, 268, 273};
constexpr Operation kGetInstance{" while performing getInstance operation on ", 342, kNone, 357, 365, 369};
constexpr Operation kCreateInstance{" while performing createInstance operation on ", kNone, 429, 444, 452, 457};
constexpr Operation kDeleteInstance{" while performing deleteInstance operation on ", kNone, 514, 529, 537, 542};
constexpr Operation kModifyInstance{" while performing modifyInstance operation on ", kNone, 607, 622, 630, 635};
constexpr Operation kInvokeMethod{" while performing invokeMethod operation on ", 692, 696, 711, 719, 722};

[[noreturn]] void throwInvalidClass(int line) {
    throw CIMException(kSource, line, CIMException::INVALID_CLASS);
}

void logError(const ProviderEnvironmentIFCRef& env, const String& text) {
    if (!env) {
        return;
    }
// Deprecated in favour of getLogger(component), but only this one logs under the object manager's own component.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const LoggerRef logger = env->getLogger();
#pragma GCC diagnostic pop
    if (logger) {
        logger->logError(text);
    }
}

// The class name for a message; empty when the request is too broken to have one.
template <class ClassName>
String nameForMessage(ClassName className) {
    try {
        return className();
    } catch (const std::exception&) {
        return String();
    }
}

[[noreturn]] void throwUnexpected(const ProviderEnvironmentIFCRef& env, int line, const String& text) {
    logError(env, text);
    throw CIMException(kSource, line, CIMException::FAILED, text.c_str());
}

// Calls `call` with the route of the class that `className` returns, and translates what it throws. The comparison is
// case-sensitive; `className` is called for each, inside the translation, because it may throw.
template <class ClassName, class Call>
auto dispatch(const Operation& operation, const ProviderEnvironmentIFCRef& env, ClassName className, Call call) {
    const cdroam::RequestLock lock;
    const auto unexpected = [&](const std::exception& e) {
        throwUnexpected(env, operation.stdException,
                        UnknownStdException + (operation.fragment + nameForMessage(className)) + "\n" + e.what() +
                            "\n");
    };
    const auto frameworkError = [&](int line, const std::exception& e) {
        if (line == kNone) {
            unexpected(e);
        }
        throw CIMException(kSource, line, CIMException::FAILED, "");
    };
    try {
        for (const Route& route : kRoutes) {
            if (className().equals(route.className)) {
                return call(route);
            }
        }
    } catch (const CFG_ReadError& e) {
        frameworkError(operation.readError, e);
    } catch (const CFG_WriteError& e) {
        frameworkError(operation.writeError, e);
    } catch (const CIMException&) {
        throw;
    } catch (const std::exception& e) {
        unexpected(e);
    } catch (...) {
        throwUnexpected(env, operation.otherThrow,
                        UnknownException + (operation.fragment + nameForMessage(className)) + "\n");
    }
    throwInvalidClass(operation.unknownClass);
}

} // namespace

CppProviderBaseIFC* createProviderCDRProvider() {
    return new CDRProvider;
}

const char* getOWVersion() {
    return "3.0.3";
}

CDRProvider::~CDRProvider() = default;

void CDRProvider::initialize(const ProviderEnvironmentIFCRef& env) {
    const cdroam::RequestLock lock;
    for (const Route& route : kRoutes) {
        route.instances.initialize(env);
    }
    (void)std::printf("begin to create instance in initialize() ");
    myInstance = new CDROAMWrap;
    (void)std::printf("finish to create instance in initialize() ");
}

void CDRProvider::cleanup() {
    for (const Route& route : kRoutes) {
        route.cleanup();
    }
}

void CDRProvider::enumInstanceNames(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                                    CIMObjectPathResultHandlerIFC& result, const CIMClass& cimClass) {
    dispatch(
        kEnumInstanceNames, env, [&] { return className; },
        [&](const Route& route) { route.instances.enumInstanceNames(env, ns, className, result, cimClass); });
}

void CDRProvider::enumInstances(const ProviderEnvironmentIFCRef& env, const String& ns, const String& className,
                                CIMInstanceResultHandlerIFC& result, WBEMFlags::ELocalOnlyFlag localOnly,
                                WBEMFlags::EDeepFlag deep, WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin, const StringArray* propertyList,
                                const CIMClass& requestedClass, const CIMClass& cimClass) {
    dispatch(
        kEnumInstances, env, [&] { return className; },
        [&](const Route& route) {
            route.instances.enumInstances(env, ns, className, result, localOnly, deep, includeQualifiers,
                                          includeClassOrigin, propertyList, requestedClass, cimClass);
        });
}

CIMInstance CDRProvider::getInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                     const CIMObjectPath& instanceName, WBEMFlags::ELocalOnlyFlag localOnly,
                                     WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                     WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                     const StringArray* propertyList, const CIMClass& cimClass) {
    return dispatch(
        kGetInstance, env, [&] { return instanceName.getClassName(); },
        [&](const Route& route) {
            return route.instances.getInstance(env, ns, instanceName, localOnly, includeQualifiers, includeClassOrigin,
                                               propertyList, cimClass);
        });
}

CIMObjectPath CDRProvider::createInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                          const CIMInstance& cimInstance) {
    return dispatch(
        kCreateInstance, env, [&] { return cimInstance.getClassName(); },
        [&](const Route& route) { return route.instances.createInstance(env, ns, cimInstance); });
}

void CDRProvider::deleteInstance(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& cop) {
    dispatch(
        kDeleteInstance, env, [&] { return cop.getClassName(); },
        [&](const Route& route) { route.instances.deleteInstance(env, ns, cop); });
}

void CDRProvider::modifyInstance(const ProviderEnvironmentIFCRef& env, const String& ns,
                                 const CIMInstance& modifiedInstance, const CIMInstance& previousInstance,
                                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers, const StringArray* propertyList,
                                 const CIMClass& theClass) {
    dispatch(
        kModifyInstance, env, [&] { return modifiedInstance.getClassName(); },
        [&](const Route& route) {
            route.instances.modifyInstance(env, ns, modifiedInstance, previousInstance, includeQualifiers, propertyList,
                                           theClass);
        });
}

CIMValue CDRProvider::invokeMethod(const ProviderEnvironmentIFCRef& env, const String& ns, const CIMObjectPath& path,
                                   const String& methodName, const CIMParamValueArray& in, CIMParamValueArray& out) {
    return dispatch(
        kInvokeMethod, env, [&] { return path.getClassName(); },
        [&](const Route& route) { return route.methods.invokeMethod(env, ns, path, methodName, in, out); });
}

void CDRProvider::associators(const ProviderEnvironmentIFCRef& /*env*/, CIMInstanceResultHandlerIFC& /*result*/,
                              const String& /*ns*/, const CIMObjectPath& /*objectName*/, const String& /*assocClass*/,
                              const String& /*resultClass*/, const String& /*role*/, const String& /*resultRole*/,
                              WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                              WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                              const StringArray* /*propertyList*/) {
    throwInvalidClass(787);
}

void CDRProvider::associatorNames(const ProviderEnvironmentIFCRef& /*env*/, CIMObjectPathResultHandlerIFC& /*result*/,
                                  const String& /*ns*/, const CIMObjectPath& /*objectName*/,
                                  const String& /*assocClass*/, const String& /*resultClass*/, const String& /*role*/,
                                  const String& /*resultRole*/) {
    throwInvalidClass(845);
}

void CDRProvider::references(const ProviderEnvironmentIFCRef& /*env*/, CIMInstanceResultHandlerIFC& /*result*/,
                             const String& /*ns*/, const CIMObjectPath& /*objectName*/, const String& /*resultClass*/,
                             const String& /*role*/, WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                             WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                             const StringArray* /*propertyList*/) {
    throwInvalidClass(905);
}

void CDRProvider::referenceNames(const ProviderEnvironmentIFCRef& /*env*/, CIMObjectPathResultHandlerIFC& /*result*/,
                                 const String& /*ns*/, const CIMObjectPath& /*objectName*/,
                                 const String& /*resultClass*/, const String& /*role*/) {
    throwInvalidClass(959);
}
