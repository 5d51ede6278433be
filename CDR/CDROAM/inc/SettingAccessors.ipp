// Defines the accessors of an implementation whose properties are settings (Settings.hpp), from its class's table.
// Included by its source with
//   CDR_CLASS        the implementation
//   CDR_TABLE        the class's table
//   CDR_SECTION      the registry section of its entries
//   CDR_AFTER_WRITE  what gets the status of each write and returns the setter's; if not defined, the status is
//   returned
// defined; leaves all undefined. A row of a kind "Own..." has a getter of its own.

#ifndef CDR_AFTER_WRITE
#define CDR_AFTER_WRITE
#endif

#define CDR_GETTER(NAME, TYPE, KIND, KEY)                                                                              \
    int CDR_CLASS::get##NAME(cdroam::cim::TYPE::Value& value, QualifierArray& /*qualifiers*/) const {                  \
        return cdroam::readSetting<cdroam::KIND>("get" #NAME, {CDR_SECTION, KEY}, cache_.NAME, value);                 \
    }
#define CDR_SETTER(NAME, TYPE, KIND, KEY)                                                                              \
    int CDR_CLASS::set##NAME(cdroam::cim::TYPE::Value value) {                                                         \
        return CDR_AFTER_WRITE(                                                                                        \
            cdroam::writeSetting<cdroam::KIND>("set" #NAME, {CDR_SECTION, KEY}, cache_.NAME, value));                  \
    }
#define CDR_GETTER_Byte CDR_GETTER
#define CDR_GETTER_Word CDR_GETTER
#define CDR_GETTER_Integer CDR_GETTER
#define CDR_GETTER_Counter CDR_GETTER
#define CDR_GETTER_PackedDigits CDR_GETTER
#define CDR_GETTER_OwnByte CDR_NONE
#define CDR_READ_ONLY(NAME, TYPE, KIND, KEY) CDR_GETTER_##KIND(NAME, TYPE, KIND, KEY)
#define CDR_READ_WRITE(NAME, TYPE, KIND, KEY, CHECK)                                                                   \
    CDR_READ_ONLY(NAME, TYPE, KIND, KEY) CDR_SETTER(NAME, TYPE, KIND, KEY)

CDR_TABLE(CDR_READ_WRITE, CDR_READ_ONLY, CDR_NONE, CDR_NONE)

#undef CDR_GETTER
#undef CDR_SETTER
#undef CDR_GETTER_Byte
#undef CDR_GETTER_Word
#undef CDR_GETTER_Integer
#undef CDR_GETTER_Counter
#undef CDR_GETTER_PackedDigits
#undef CDR_GETTER_OwnByte
#undef CDR_READ_ONLY
#undef CDR_READ_WRITE
#undef CDR_AFTER_WRITE
#undef CDR_SECTION
#undef CDR_CLASS
#undef CDR_TABLE
