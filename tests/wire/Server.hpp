// Everything behind the transport: a real object manager over the test provider.
#pragma once

#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/Interop.hpp"
#include "cimserver/cimxml/Dispatcher.hpp"
#include "cimserver/provider/ProviderHost.hpp"
#include "cimserver/schema/Repository.hpp"

#include <optional>

namespace wire {

class Server {
  public:
    explicit Server(const cimserver::cimxml::DispatcherSettings& settings = {}) {
        host_.scan();
        cimserver::cimom::addInterop(repository_, host_);
        repository_.compileFile(TEST_PROVIDER_MOF, "root/cimv2");
        dispatcher_.emplace(cimom_, settings);
    }

    cimserver::http::Response handle(const cimserver::http::Request& request) { return dispatcher_->handle(request); }
    auto errors() const { return dispatcher_->errors(); }

  private:
    static cimserver::provider::HostSettings settings() {
        cimserver::provider::HostSettings settings;
        settings.folders = {TEST_PROVIDER_FOLDER};
        return settings;
    }

    cimserver::schema::Repository repository_;
    cimserver::provider::ProviderHost host_{settings()};
    cimserver::cimom::Cimom cimom_{repository_, host_, {}};
    std::optional<cimserver::cimxml::Dispatcher> dispatcher_;
};

} // namespace wire
