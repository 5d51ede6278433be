// Defines what ClassProvider.ipp declares. Included by the provider's source with CDR_CLASS and CDR_TABLE defined.

#define CDR_PROVIDER CDR_JOIN(CDR_CLASS, Provider)

namespace {

#define CDR_COUNT_KEY(NAME) +1 // NOLINT(bugprone-macro-parentheses): one more term of a sum

// The managed class as cdroam::ClassProvider wants it described.
struct Class {
    using Object = CDR_CLASS;
    using Manager = CDR_MANAGER;
    static constexpr const char* name = CDR_TEXT(CDR_CLASS);
    static constexpr const char* source = "CDR/CDROAM/src/" CDR_TEXT(CDR_CLASS) "Provider";
    static constexpr std::size_t keyCount = 0 CDR_TABLE(CDR_NONE, CDR_NONE, CDR_COUNT_KEY, CDR_NONE);
    static constexpr auto create = &Manager::CDR_JOIN(create, CDR_CLASS);
    static constexpr auto destroy = &Manager::CDR_JOIN(destroy, CDR_CLASS);
    static const std::vector<cdroam::PropertyRow<Object>>& properties() { return CDR_PROVIDER::properties(); }
    static const std::vector<cdroam::MethodRow<Object>>& methods() { return CDR_PROVIDER::methods(); }
};

#undef CDR_COUNT_KEY

using Engine = cdroam::ClassProvider<Class>;

} // namespace

#define CDR_READ(NAME, TYPE) &cdroam::readProperty<CDR_CLASS, cdroam::cim::TYPE, &CDR_CLASS::get##NAME>
#define CDR_WRITE(NAME, TYPE) &cdroam::writeProperty<CDR_CLASS, cdroam::cim::TYPE, &CDR_CLASS::set##NAME>
#define CDR_ROW_RW(NAME, TYPE, KIND, ENTRY, CHECK)                                                                     \
    {#NAME, #TYPE, false, CDR_READ(NAME, TYPE), CDR_WRITE(NAME, TYPE), cdroam::CHECK},
#define CDR_ROW_RO(NAME, TYPE, KIND, ENTRY) {#NAME, #TYPE, false, CDR_READ(NAME, TYPE), nullptr, cdroam::Check::any()},
#define CDR_ROW_KEY(NAME) {#NAME, "string", true, CDR_READ(NAME, string), nullptr, cdroam::Check::any()},
#define CDR_ROW_METHOD(NAME) {#NAME, &CDR_CLASS::NAME},

const std::vector<cdroam::PropertyRow<CDR_CLASS>>& CDR_PROVIDER::properties() {
    static const std::vector<cdroam::PropertyRow<CDR_CLASS>> rows = {
        CDR_TABLE(CDR_ROW_RW, CDR_ROW_RO, CDR_ROW_KEY, CDR_NONE)};
    return rows;
}

const std::vector<cdroam::MethodRow<CDR_CLASS>>& CDR_PROVIDER::methods() {
    static const std::vector<cdroam::MethodRow<CDR_CLASS>> rows = {
        CDR_TABLE(CDR_NONE, CDR_NONE, CDR_NONE, CDR_ROW_METHOD)};
    return rows;
}

CDR_PROVIDER::~CDR_PROVIDER() = default;

OpenWBEM::CIMValue CDR_PROVIDER::invokeMethod(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/,
                                              const OpenWBEM::String& /*ns*/, const OpenWBEM::CIMObjectPath& path,
                                              const OpenWBEM::String& methodName,
                                              const OpenWBEM::CIMParamValueArray& /*in*/,
                                              OpenWBEM::CIMParamValueArray& /*out*/) {
    return Engine::invokeMethod(path, methodName);
}

void CDR_PROVIDER::initialize(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/) {
    // Never freed: the objects it lists live as long as the process.
    CDR_CLASS::SetInstanceManager(new CDR_IMPL_MANAGER);
}

void CDR_PROVIDER::enumInstanceNames(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& ns,
                                     const OpenWBEM::String& className, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                                     const OpenWBEM::CIMClass& /*cimClass*/) {
    Engine::enumInstanceNames(ns, className, result);
}

void CDR_PROVIDER::enumInstances(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                                 const OpenWBEM::String& /*className*/, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                                 OpenWBEM::WBEMFlags::ELocalOnlyFlag /*localOnly*/,
                                 OpenWBEM::WBEMFlags::EDeepFlag /*deep*/,
                                 OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                                 OpenWBEM::WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                                 const OpenWBEM::StringArray* /*propertyList*/,
                                 const OpenWBEM::CIMClass& /*requestedClass*/, const OpenWBEM::CIMClass& /*cimClass*/) {
    Engine::enumInstances(result);
}

OpenWBEM::CIMInstance CDR_PROVIDER::getInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/,
                                                const OpenWBEM::String& /*ns*/,
                                                const OpenWBEM::CIMObjectPath& instanceName,
                                                OpenWBEM::WBEMFlags::ELocalOnlyFlag /*localOnly*/,
                                                OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                                                OpenWBEM::WBEMFlags::EIncludeClassOriginFlag /*includeClassOrigin*/,
                                                const OpenWBEM::StringArray* /*propertyList*/,
                                                const OpenWBEM::CIMClass& /*cimClass*/) {
    return Engine::getInstance(instanceName);
}

OpenWBEM::CIMObjectPath CDR_PROVIDER::createInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/,
                                                     const OpenWBEM::String& ns,
                                                     const OpenWBEM::CIMInstance& cimInstance) {
    return Engine::createInstance(ns, cimInstance);
}

void CDR_PROVIDER::deleteInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                                  const OpenWBEM::CIMObjectPath& cop) {
    Engine::deleteInstance(cop);
}

void CDR_PROVIDER::modifyInstance(const OpenWBEM::ProviderEnvironmentIFCRef& /*env*/, const OpenWBEM::String& /*ns*/,
                                  const OpenWBEM::CIMInstance& modifiedInstance,
                                  const OpenWBEM::CIMInstance& /*previousInstance*/,
                                  OpenWBEM::WBEMFlags::EIncludeQualifiersFlag /*includeQualifiers*/,
                                  const OpenWBEM::StringArray* /*propertyList*/,
                                  const OpenWBEM::CIMClass& /*theClass*/) {
    modifyInstance(*Engine::find(modifiedInstance), modifiedInstance);
}

void CDR_PROVIDER::cleanup() {}

void CDR_PROVIDER::CDR_JOIN(CDR_CLASS, ToCIMInstance)(const OpenWBEM::String& /*ns*/, const CDR_CLASS& object,
                                                      OpenWBEM::CIMInstance& instance) const {
    Engine::toInstance(object, instance);
}

void CDR_PROVIDER::CDR_JOIN(CDR_CLASS, ToCIMObjectPath)(const CDR_CLASS& object, OpenWBEM::CIMObjectPath& path) const {
    Engine::toPath(object, path);
}

CDR_CLASS* CDR_PROVIDER::CDR_JOIN(get,
                                  CDR_JOIN(CDR_CLASS, WithCIMObjectPath))(const OpenWBEM::CIMObjectPath& path) const {
    return Engine::find(path);
}

CDR_CLASS* CDR_PROVIDER::CDR_JOIN(get,
                                  CDR_JOIN(CDR_CLASS, WithCIMInstance))(const OpenWBEM::CIMInstance& instance) const {
    return Engine::find(instance);
}

void CDR_PROVIDER::modifyInstance(CDR_CLASS& object, const OpenWBEM::CIMInstance& instance) const {
    Engine::modify(object, instance);
}

#undef CDR_READ
#undef CDR_WRITE
#undef CDR_ROW_RW
#undef CDR_ROW_RO
#undef CDR_ROW_KEY
#undef CDR_ROW_METHOD
#undef CDR_PROVIDER
#undef CDR_CLASS
#undef CDR_TABLE
