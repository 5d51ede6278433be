// A provider's shared object.
#pragma once

#include "OW_CppProviderBaseIFC.hpp"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace cimserver::provider {

/// Why a module cannot be used; what() is for the client and names no path, details() for the log.
class ModuleError : public std::runtime_error {
  public:
    ModuleError(const std::string& reason, std::string details)
        : std::runtime_error(reason), details_(std::move(details)) {}
    const std::string& details() const { return details_; }

  private:
    std::string details_;
};

/// The file is a shared object, but not a provider module.
class NoProviderModule : public ModuleError {
  public:
    using ModuleError::ModuleError;
};

/// True when `id` can be part of a file name and of a symbol: 1 to 128 letters, digits, '_', '-' and '.', no leading
/// '.'.
bool isProviderId(const std::string& id);

/// The file of provider `id`: libID.so or ID.so, in the first folder that has either; empty when none has.
std::filesystem::path findModule(const std::vector<std::filesystem::path>& folders, const std::string& id);

/// An opened module whose version and factory have been checked. Closed at destruction: destroy its objects before it.
class Module {
  public:
    /// Throws ModuleError, of the kind NoProviderModule when there is no getOWVersion.
    Module(const std::filesystem::path& file, const std::string& id);
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// A new provider, not yet initialized. Throws ModuleError when the module returns none, or what the module throws.
    OpenWBEM::CppProviderBaseIFC* create() const;

  private:
    struct Close {
        void operator()(void* library) const;
    };

    void* symbol(const std::string& name) const;
    void checkVersion() const;

    std::filesystem::path file_;
    std::unique_ptr<void, Close> library_;
    OpenWBEM::CppProviderBaseIFC* (*factory_)() = nullptr;
};

} // namespace cimserver::provider
