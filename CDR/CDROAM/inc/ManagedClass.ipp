// Declares a managed class and its two instance managers. Included by the class's header with
//   CDR_CLASS  the class's name
//   CDR_TABLE  its table (ManagedClass.hpp)
// defined; leaves both undefined. The order of the virtual functions is part of the interface.

class CDR_CLASS;

/// The list of the live objects of the class, by their keys. Does not own them, takes no lock.
class CDR_MANAGER {
  public:
    CDR_MANAGER();
    CDR_MANAGER(const CDR_MANAGER&) = delete;
    CDR_MANAGER& operator=(const CDR_MANAGER&) = delete;
    virtual ~CDR_MANAGER();

    virtual void init();
    /// Creates an object. Here: always throws CFG_InstanceCreationFailed.
    virtual CDR_CLASS* CDR_JOIN(create, CDR_CLASS)(CDR_KEY_PARAMETERS);
    /// Deletes an object. Here: always throws CFG_InstanceDeletionFailed.
    virtual void CDR_JOIN(destroy, CDR_CLASS)(CDR_CLASS* object);
    /// Lists the object under its keys; one already listed under the same keys is replaced.
    virtual void add(CDR_CLASS* object);
    /// Takes the object's keys off the list.
    virtual void remove(CDR_CLASS* object);
    /// Throws CFG_NoInstance when there is no such object. Keys that read the same one after the other are the same.
    virtual CDR_CLASS* get(CDR_KEY_PARAMETERS);

    // One iteration at a time, in byte-wise key order: startIteration, next while hasNext, endIteration.
    virtual void startIteration();
    virtual bool hasNext();
    /// Throws CFG_NoInstance at the end.
    virtual CDR_CLASS* next();
    virtual void endIteration();

  private:
    cdroam::InstanceTable<CDR_CLASS> table_;
};

/// The manager that the class's provider installs; it cannot create or delete either.
class CDR_IMPL_MANAGER : public CDR_MANAGER {
  public:
    CDR_CLASS* CDR_JOIN(create, CDR_CLASS)(CDR_KEY_PARAMETERS) override;
    void CDR_JOIN(destroy, CDR_CLASS)(CDR_CLASS* object) override;
};

/// The managed object: a getter for each property, a setter for each that can be modified, an operation for each
/// method. Getters and setters return 0 or a status; this class's own can neither read nor write. An object lists
/// itself with the current instance manager as long as it lives.
class CDR_CLASS {
  public:
    explicit CDR_CLASS(CDR_KEY_PARAMETERS);
    CDR_CLASS(const CDR_CLASS&) = delete;
    CDR_CLASS& operator=(const CDR_CLASS&) = delete;
    virtual ~CDR_CLASS();

    // The bracket around a group of changes.
    virtual int startChange();
    virtual int endChange();

    CDR_TABLE(CDR_SLOTS_RW, CDR_SLOTS_RO, CDR_SLOTS_KEY, CDR_SLOTS_METHOD)

    /// Makes the manager the current one and calls its init(); the previous one is left alone.
    static void SetInstanceManager(CDR_MANAGER* manager);
    /// Makes the default manager the current one again.
    static void ClearInstanceManager();
    static CDR_MANAGER* getInstanceManager();

  private:
#define CDR_KEY_FIELD(NAME) const std::string NAME;
    struct {
        CDR_TABLE(CDR_NONE, CDR_NONE, CDR_KEY_FIELD, CDR_NONE)
    } keys_;
#undef CDR_KEY_FIELD

    static CDR_MANAGER* theInstanceManager;
    static CDR_MANAGER defaultInstanceManager;
};

#undef CDR_CLASS
#undef CDR_TABLE
