#include "cimserver/provider/Environment.hpp"

#include "cimserver/cim/CimError.hpp"
#include "cimserver/common/Log.hpp"

#include "OW_Logger.hpp"
#include "OW_RepositoryIFC.hpp"

namespace cimserver::provider {

using namespace OpenWBEM;

namespace {

ELogLevel levelOfServer() {
    if (log::enabled(log::Level::Debug)) {
        return E_DEBUG_LEVEL;
    }
    if (log::enabled(log::Level::Info)) {
        return E_INFO_LEVEL;
    }
    return log::enabled(log::Level::Error) ? E_ERROR_LEVEL : E_FATAL_ERROR_LEVEL;
}

log::Level levelOf(const String& category) {
    if (category.equalsIgnoreCase(Logger::STR_FATAL_CATEGORY)) {
        return log::Level::Fatal;
    }
    if (category.equalsIgnoreCase(Logger::STR_ERROR_CATEGORY)) {
        return log::Level::Error;
    }
    return category.equalsIgnoreCase(Logger::STR_DEBUG_CATEGORY) ? log::Level::Debug : log::Level::Info;
}

class ServerLogger : public Logger {
  public:
    ServerLogger(const String& component, ELogLevel level) : Logger(component, level) {}

  protected:
    void doProcessLogMessage(const LogMessage& message) const override {
        log::write(levelOf(message.category), message.component.c_str(), message.message.c_str());
    }
    LoggerRef doClone() const override { return LoggerRef(new ServerLogger(getDefaultComponent(), getLogLevel())); }
};

} // namespace

LoggerRef makeLogger(const std::string& component) {
    return LoggerRef(new ServerLogger(String(component.c_str()), levelOfServer()));
}

Environment::Environment(CallOrigin origin, std::string component, std::shared_ptr<const ConfigItems> config)
    : origin_(std::move(origin)), component_(std::move(component)), config_(std::move(config)) {
    if (!origin_.operation) {
        origin_.operation = std::make_shared<OperationContext>();
    }
}

CIMOMHandleIFCRef Environment::getCIMOMHandle() const {
    if (!origin_.handles) {
        throw CimError(Status::NotSupported, "No CIMOM handle is available here");
    }
    return origin_.handles->makeHandle();
}

CIMOMHandleIFCRef Environment::getRepositoryCIMOMHandle() const {
    return getCIMOMHandle();
}

RepositoryIFCRef Environment::getRepository() const {
    throw CimError(Status::NotSupported, "The server has no repository that providers can reach");
}

LoggerRef Environment::getLogger() const {
    return makeLogger(component_);
}

LoggerRef Environment::getLogger(const String& componentName) const {
    return makeLogger(componentName.c_str());
}

String Environment::getConfigItem(const String& name, const String& defRetVal) const {
    const auto found = config_->find(name.c_str());
    return found == config_->end() ? defRetVal : String(found->second.c_str());
}

String Environment::getUserName() const {
    return String(origin_.user.c_str());
}

OperationContext& Environment::getOperationContext() {
    return *origin_.operation;
}

std::string Environment::described() const {
    return origin_.described() + " for user '" + origin_.user + "' in provider " +
           component_.substr(component_.find('.') + 1);
}

} // namespace cimserver::provider
