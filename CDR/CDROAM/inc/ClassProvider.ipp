// Declares the provider of a managed class. Included by the provider's header with CDR_CLASS defined; leaves it
// undefined.

#define CDR_PROVIDER CDR_JOIN(CDR_CLASS, Provider)

/// Serves the instance and method operations of the CIM class of that name, over the live objects of the managed class.
/// Every error is an OpenWBEM::CIMException that carries the provider's source path; what the framework throws passes
/// through. Request flags, property lists and the classes handed in are not looked at.
class CDR_PROVIDER : public OpenWBEM::CppMethodProviderIFC, public OpenWBEM::CppInstanceProviderIFC {
  public:
    ~CDR_PROVIDER() override;

    /// CIM error 17 for an unknown method, 6 for an unknown object; otherwise the operation's result as uint32.
    OpenWBEM::CIMValue invokeMethod(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                    const OpenWBEM::CIMObjectPath& path, const OpenWBEM::String& methodName,
                                    const OpenWBEM::CIMParamValueArray& in, OpenWBEM::CIMParamValueArray& out) override;
    /// Installs a new instance manager: objects made before are not seen any more.
    void initialize(const OpenWBEM::ProviderEnvironmentIFCRef& env) override;
    void enumInstanceNames(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                           const OpenWBEM::String& className, OpenWBEM::CIMObjectPathResultHandlerIFC& result,
                           const OpenWBEM::CIMClass& cimClass) override;
    void enumInstances(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                       const OpenWBEM::String& className, OpenWBEM::CIMInstanceResultHandlerIFC& result,
                       OpenWBEM::WBEMFlags::ELocalOnlyFlag localOnly, OpenWBEM::WBEMFlags::EDeepFlag deep,
                       OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                       OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                       const OpenWBEM::StringArray* propertyList, const OpenWBEM::CIMClass& requestedClass,
                       const OpenWBEM::CIMClass& cimClass) override;
    /// CIM error 6 for an unknown object.
    OpenWBEM::CIMInstance getInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                      const OpenWBEM::CIMObjectPath& instanceName,
                                      OpenWBEM::WBEMFlags::ELocalOnlyFlag localOnly,
                                      OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                      OpenWBEM::WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                      const OpenWBEM::StringArray* propertyList,
                                      const OpenWBEM::CIMClass& cimClass) override;
    /// CIM error 7: the set of objects is fixed.
    OpenWBEM::CIMObjectPath createInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                                           const OpenWBEM::CIMInstance& cimInstance) override;
    /// CIM error 6 for an unknown object, 7 for a known one.
    void deleteInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                        const OpenWBEM::CIMObjectPath& cop) override;
    /// CIM error 6 for an unknown object; otherwise as the other modifyInstance.
    void modifyInstance(const OpenWBEM::ProviderEnvironmentIFCRef& env, const OpenWBEM::String& ns,
                        const OpenWBEM::CIMInstance& modifiedInstance, const OpenWBEM::CIMInstance& previousInstance,
                        OpenWBEM::WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                        const OpenWBEM::StringArray* propertyList, const OpenWBEM::CIMClass& theClass) override;

    /// Does nothing: the installed manager and its objects stay.
    void cleanup();

    /// Fills the instance with the object's properties and keys; a property that cannot be read is left out.
    void CDR_JOIN(CDR_CLASS, ToCIMInstance)(const OpenWBEM::String& ns, const CDR_CLASS& object,
                                            OpenWBEM::CIMInstance& instance) const;
    /// Replaces the path's keys by the object's.
    void CDR_JOIN(CDR_CLASS, ToCIMObjectPath)(const CDR_CLASS& object, OpenWBEM::CIMObjectPath& path) const;
    /// The object that the path's keys name; CIM error 6 when a key is absent or null or there is none.
    CDR_CLASS* CDR_JOIN(get, CDR_JOIN(CDR_CLASS, WithCIMObjectPath))(const OpenWBEM::CIMObjectPath& path) const;
    /// The object that the instance's key properties name, with the same errors.
    CDR_CLASS* CDR_JOIN(get, CDR_JOIN(CDR_CLASS, WithCIMInstance))(const OpenWBEM::CIMInstance& instance) const;
    /// Applies the instance's properties to the object, in their order. CIM error 4 for a refused value, 1 with the
    /// status as message for a failure; what was applied before stays.
    void modifyInstance(CDR_CLASS& object, const OpenWBEM::CIMInstance& instance) const;

    /// The class's properties as its instances show them.
    static const std::vector<cdroam::PropertyRow<CDR_CLASS>>& properties();
    static const std::vector<cdroam::MethodRow<CDR_CLASS>>& methods();
};

#undef CDR_PROVIDER
#undef CDR_CLASS
