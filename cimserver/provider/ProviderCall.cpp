#include "cimserver/provider/ProviderCall.hpp"

#include "OW_CIMException.hpp"

namespace cimserver::provider {

using namespace OpenWBEM;

namespace {

/// Carries the text of a foreign exception unchanged, where CIMException would put its own before it.
class ForeignException : public CIMException {
  public:
    explicit ForeignException(const char* text)
        : CIMException(__FILE__, __LINE__, CIMException::FAILED, text), text_(text) {}

    const char* getMessage() const override { return text_.empty() ? CIMException::getMessage() : text_.c_str(); }
    ForeignException* clone() const throw() override { return new (std::nothrow) ForeignException(*this); }

  private:
    String text_;
};

const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace

ProviderCall::ProviderCall(Gate::Pass pass, CppProviderBaseIFC& provider, ProviderEnvironmentIFCRef env)
    : pass_(std::move(pass)), provider_(&provider), env_(std::move(env)) {}

void rethrowAsCimException() {
    try {
        throw;
    } catch (const CIMException&) {
        throw;
    } catch (const Exception& foreign) {
        throw ForeignException(orEmpty(foreign.getMessage()));
    } catch (const std::exception& foreign) {
        throw ForeignException(orEmpty(foreign.what()));
    } catch (...) {
        throw ForeignException("Unknown Exception");
    }
}

} // namespace cimserver::provider
