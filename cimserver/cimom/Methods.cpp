// The extrinsic methods: Cimom::invokeMethod.
#include "cimserver/cim/CimError.hpp"
#include "cimserver/cimom/Cimom.hpp"
#include "cimserver/cimom/InstanceShape.hpp"
#include "cimserver/cimom/Request.hpp"

#include "OW_CIMValueCast.hpp"

namespace cimserver::cimom {

using provider::Access;

namespace {

CIMValue cast(const CIMValue& value, const CIMParameter& parameter, Status code) {
    if (isEmbedded(value) && parameter.getType().getType() == CIMDataType::STRING) {
        return value;
    }
    try {
        return CIMValueCast::castValueToDataType(value, parameter.getType());
    } catch (const Exception&) {
        throw CimError(code, std::string("The value of parameter ") + parameter.getName().c_str() +
                                 " cannot be converted to " + parameter.getType().toString().c_str());
    }
}

/// The position of the parameter, or the size of the array.
template <class Parameters>
std::size_t find(const Parameters& parameters, const String& name) {
    std::size_t at = 0;
    while (at < parameters.size() && !parameters[at].getName().equalsIgnoreCase(name)) {
        ++at;
    }
    return at;
}

/// All input parameters in the order of the class: those sent with their value in the declared type, others as NULL.
CIMParamValueArray inputs(const CIMMethod& method, const CIMParamValueArray& sent) {
    CIMParamValueArray left(sent);
    CIMParamValueArray result;
    for (const CIMParameter& declared : method.getINParameters()) {
        const std::size_t at = find(left, declared.getName());
        if (at < left.size()) {
            result.push_back(CIMParamValue(CIMName(left[at].getName()),
                                           cast(left[at].getValue(), declared, Status::InvalidParameter)));
            left.remove(at);
        } else if (declared.hasTrueQualifier(CIMQualifier::CIM_QUAL_REQUIRED)) {
            throw CimError(Status::InvalidParameter,
                           std::string("Parameter ") + declared.getName().c_str() + " was not specified.");
        } else {
            result.push_back(CIMParamValue(CIMName(declared.getName()), CIMValue(CIMNULL)));
        }
    }
    if (!left.empty()) {
        throw CimError(Status::InvalidParameter,
                       std::string("Unknown or duplicate parameter: ") + left[0].getName().c_str());
    }
    return result;
}

/// All output parameters in the order of the class: those that are input too with their input value, others as NULL.
CIMParamValueArray outputs(const CIMMethod& method, const CIMParamValueArray& in) {
    CIMParamValueArray result;
    for (const CIMParameter& declared : method.getOUTParameters()) {
        const std::size_t at = find(in, declared.getName());
        result.push_back(
            CIMParamValue(CIMName(declared.getName()), at < in.size() ? in[at].getValue() : CIMValue(CIMNULL)));
    }
    return result;
}

void castOutputs(const CIMMethod& method, CIMParamValueArray& out) {
    const CIMParameterArray declared = method.getOUTParameters();
    for (CIMParamValue& value : out) {
        const std::size_t at = find(declared, value.getName());
        if (at < declared.size() && value.getValue()) {
            value.setValue(cast(value.getValue(), declared[at], Status::Failed));
        }
    }
}

} // namespace

/// Throws NotFound when the provider says so. Any other failure is ignored, so that the method's own code and text
/// reach the client.
void Cimom::requireTarget(Request& request, const CIMObjectPath& target, const CIMClass& cimClass) {
    Outcome outcome;
    request.withInstances(cimClass, [&](auto& provider, const auto& env) {
        outcome = outcomeOf([&] { request.read(provider, env, target, cimClass); });
    });
    if (outcome.code == static_cast<int>(Status::NotFound)) {
        throw CimError(Status::NotFound, std::string("Instance not found: ") + target.toString().c_str());
    }
}

CIMValue Cimom::invokeMethod(const RequestContext& context, const String& ns, const CIMObjectPath& path,
                             const String& methodName, const InputReader& in, CIMParamValueArray& out) {
    Request request(*this, context, ns, Access::Write);
    const CIMClass& cimClass = request.classOf(path.getClassName(), Status::NotFound);
    const CIMObjectPath target = request.synced(path, cimClass);
    if (target.isInstancePath()) {
        requireTarget(request, target, cimClass);
    }
    const CIMMethod method = cimClass.getMethod(CIMName(methodName));
    if (!method) {
        throw CimError(Status::MethodNotFound, methodName.c_str());
    }
    CIMParamValueArray given;
    CIMValue result(CIMNULL);
    const bool served = request.withMethods(cimClass, method, [&](auto& provider, const auto& env) {
        given = inputs(method, in(method));
        out = outputs(method, given);
        request.announceChange();
        result = provider.invokeMethod(env, request.ns(), target, methodName, given, out);
        castOutputs(method, out);
    });
    if (!served) {
        throw CimError(Status::NotFound, std::string("No provider for method ") + methodName.c_str());
    }
    return result;
}

} // namespace cimserver::cimom
