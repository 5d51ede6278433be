// Defines what ManagedClass.ipp declares. Included by the class's source with CDR_CLASS and CDR_TABLE defined, and
//   CDR_BASE_READ_STATUS  what the class's own getters return, 100 if not defined

#ifndef CDR_BASE_READ_STATUS
#define CDR_BASE_READ_STATUS 100
#endif

CDR_MANAGER CDR_CLASS::defaultInstanceManager;
CDR_MANAGER* CDR_CLASS::theInstanceManager = &CDR_CLASS::defaultInstanceManager;

namespace {

// The keys one after the other, as the object's getters give them.
std::string compositeKey(const CDR_CLASS& object) {
    std::string composite;
#define CDR_APPEND_KEY(NAME)                                                                                           \
    {                                                                                                                  \
        std::string key;                                                                                               \
        QualifierArray ignored;                                                                                        \
        (void)object.get##NAME(key, ignored);                                                                          \
        composite += key;                                                                                              \
    }
    CDR_TABLE(CDR_NONE, CDR_NONE, CDR_APPEND_KEY, CDR_NONE)
#undef CDR_APPEND_KEY
    return composite;
}

} // namespace

CDR_MANAGER::CDR_MANAGER() = default;

CDR_MANAGER::~CDR_MANAGER() = default;

void CDR_MANAGER::init() {}

CDR_CLASS* CDR_MANAGER::CDR_JOIN(create, CDR_CLASS)(CDR_UNNAMED_KEY_PARAMETERS) {
    throw CFG_InstanceCreationFailed();
}

void CDR_MANAGER::CDR_JOIN(destroy, CDR_CLASS)(CDR_CLASS* /*object*/) {
    throw CFG_InstanceDeletionFailed();
}

void CDR_MANAGER::add(CDR_CLASS* object) {
    table_.add(compositeKey(*object), object);
}

void CDR_MANAGER::remove(CDR_CLASS* object) {
    table_.remove(compositeKey(*object));
}

CDR_CLASS* CDR_MANAGER::get(CDR_KEY_PARAMETERS) {
    return table_.get(cdroam::concatenated({CDR_KEY_ARGUMENTS}));
}

void CDR_MANAGER::startIteration() {
    table_.startIteration();
}

bool CDR_MANAGER::hasNext() {
    return table_.hasNext();
}

CDR_CLASS* CDR_MANAGER::next() {
    return table_.next();
}

void CDR_MANAGER::endIteration() {
    table_.endIteration();
}

CDR_CLASS* CDR_IMPL_MANAGER::CDR_JOIN(create, CDR_CLASS)(CDR_KEY_PARAMETERS) {
    return CDR_MANAGER::CDR_JOIN(create, CDR_CLASS)(CDR_KEY_ARGUMENTS);
}

void CDR_IMPL_MANAGER::CDR_JOIN(destroy, CDR_CLASS)(CDR_CLASS* object) {
    CDR_MANAGER::CDR_JOIN(destroy, CDR_CLASS)(object);
}

// The key getters are never overridden, so that the object can be listed from its base's constructor and taken off the
// list in its destructor.
CDR_CLASS::CDR_CLASS(CDR_KEY_PARAMETERS) : keys_{CDR_KEY_ARGUMENTS} {
    theInstanceManager->add(this);
}

CDR_CLASS::~CDR_CLASS() {
    theInstanceManager->remove(this);
}

int CDR_CLASS::startChange() {
    return 0;
}

int CDR_CLASS::endChange() {
    return 0;
}

#define CDR_BASE_RO(NAME, TYPE, ...)                                                                                   \
    int CDR_CLASS::get##NAME(cdroam::cim::TYPE::Value& /*value*/, QualifierArray& /*qualifiers*/) const {              \
        return CDR_BASE_READ_STATUS;                                                                                   \
    }
#define CDR_BASE_RW(NAME, TYPE, ...)                                                                                   \
    CDR_BASE_RO(NAME, TYPE, )                                                                                          \
    int CDR_CLASS::set##NAME(cdroam::cim::TYPE::Value /*value*/) {                                                     \
        return 101;                                                                                                    \
    }
#define CDR_BASE_KEY(NAME)                                                                                             \
    int CDR_CLASS::get##NAME(std::string& value, QualifierArray& /*qualifiers*/) const {                               \
        value = keys_.NAME;                                                                                            \
        return 0;                                                                                                      \
    }

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes values
CDR_TABLE(CDR_BASE_RW, CDR_BASE_RO, CDR_BASE_KEY, CDR_NONE)

void CDR_CLASS::SetInstanceManager(CDR_MANAGER* manager) {
    theInstanceManager = manager;
    manager->init();
}

void CDR_CLASS::ClearInstanceManager() {
    theInstanceManager = &defaultInstanceManager;
}

CDR_MANAGER* CDR_CLASS::getInstanceManager() {
    return theInstanceManager;
}

#undef CDR_BASE_RO
#undef CDR_BASE_RW
#undef CDR_BASE_KEY
#undef CDR_BASE_READ_STATUS
#undef CDR_CLASS
#undef CDR_TABLE
