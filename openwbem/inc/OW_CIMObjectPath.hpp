#pragma once
#include "OW_config.h"

#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "OW_COWIntrusiveReference.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/// The name of a class (no keys) or of an instance (at least one key), with the namespace it is in, which may be empty.
class OW_COMMON_API CIMObjectPath : public CIMBase {
    struct Data;
    typedef SafeBool<CIMObjectPath>::type safe_bool;

  public:
    CIMObjectPath();
    explicit CIMObjectPath(CIMNULL_t);
    explicit CIMObjectPath(const CIMName& className);
    explicit CIMObjectPath(const char* className);
    CIMObjectPath(const CIMName& className, const String& ns);
    CIMObjectPath(const CIMName& className, const CIMPropertyArray& keys);
    /// The class name and the key list of the instance.
    CIMObjectPath(const String& ns, const CIMInstance& instance);
    CIMObjectPath(const CIMObjectPath& other);
    ~CIMObjectPath() override;
    CIMObjectPath& operator=(const CIMObjectPath& other);

    CIMPropertyArray getKeys() const;
    /// A null property if there is no key of that name.
    CIMProperty getKey(const CIMName& name) const;
    /// Throws NoSuchPropertyException, with the name, if there is no such key.
    CIMProperty getKeyT(const CIMName& name) const;
    /// A null value if there is no key of that name, or its value is null.
    CIMValue getKeyValue(const CIMName& name) const;
    bool keyHasValue(const CIMName& name) const;

    /// Replaces the keys; qualifiers on them are left out.
    CIMObjectPath& setKeys(const CIMPropertyArray& keys);
    /// Replaces the keys with the key list of the instance.
    CIMObjectPath& setKeys(const CIMInstance& instance);
    /// Sets the value of the key, cast to its type, or appends a key of the value's type. Null clears an existing key
    /// and throws like any null object for a new one.
    CIMObjectPath& setKeyValue(const CIMName& name, const CIMValue& value);
    /// Appends a key, even a second one of that name, without its qualifiers; a null value is ignored. Use
    /// setKeyValue().
    OW_DEPRECATED CIMObjectPath& addKey(const CIMName& name, const CIMValue& value);
    OW_DEPRECATED CIMObjectPath& addKey(const CIMProperty& key);

    String getClassName() const;
    CIMObjectPath& setClassName(const CIMName& className);
    OW_DEPRECATED String getObjectName() const;
    OW_DEPRECATED CIMObjectPath& setObjectName(const CIMName& className);

    String getNameSpace() const;
    /// Removes blanks around the name and every '/' at its front.
    CIMObjectPath& setNameSpace(const String& ns);
    CIMNameSpace getFullNameSpace() const;
    /// 127.0.0.1 unless it was set.
    String getHost() const;
    CIMObjectPath& setHost(const String& host);
    CIMUrl getNameSpaceUrl() const;

    /// True if there are no keys.
    bool isClassPath() const;
    bool isInstancePath() const;

    /// Same namespace and class, ignoring case, and the same keys in any order, with values equal in type too. The host
    /// is ignored. Null equals null only.
    bool equals(const CIMObjectPath& other) const;

    /// Class.Key1="value",Key2="value": all values quoted and escaped, a null one as "null".
    String modelPath() const;

    /// Parses [protocol://host[:port]/][namespace:]Class.Key=value,... Values may be quoted and are always of type
    /// string; a missing namespace is "root", an empty text a null path. The first ':' ends the namespace, even within
    /// quotes. A key whose value's quote is never closed is dropped, and so is a single character after the last comma.
    /// Throws CIMException: INVALID_PARAMETER without '.' or keys after it, without '/' after the host and for a port
    /// that is not a number; NOT_FOUND for a key without '='.
    static CIMObjectPath parse(const String& text);

    /// Puts a backslash before '\' and '"' and writes a newline as \n.
    static String escape(const String& text);
    /// Drops each backslash and keeps the character after it: a newline escaped as \n becomes the letter n.
    static String unEscape(const String& text);

    /// Fits an instance path to the class; a class path stays unchanged. Keys that are not properties of the class are
    /// removed; key properties get the class's spelling and type, the value cast (see CIMValueCast for its exceptions);
    /// the class's other keys are appended with their default, which usually is null.
    CIMObjectPath& syncWithClass(const CIMClass& cimClass);

    void setNull() override;
    operator safe_bool() const { return SafeBool<CIMObjectPath>::of(!!data_); }
    bool operator!() const { return !data_; }

    /// /namespace:modelPath, and for another host http://host[:port]/namespace:modelPath, without port 5988
    String toString() const override;
    /// toString() escaped.
    String toMOF() const override;
    void readObject(std::istream& istrm) override;
    void writeObject(std::ostream& ostrm) const override;

    friend class CIMAccess;
    friend OW_COMMON_API bool operator<(const CIMObjectPath& x, const CIMObjectPath& y);
    friend bool operator==(const CIMObjectPath& x, const CIMObjectPath& y) { return x.equals(y); }
    friend bool operator!=(const CIMObjectPath& x, const CIMObjectPath& y) { return !x.equals(y); }

  private:
    void setFullNameSpace(const CIMNameSpace& ns);

    COWIntrusiveReference<Data> data_;
};

/// Orders by namespace, class and keys in their order; null sorts first.
OW_COMMON_API bool operator<(const CIMObjectPath& x, const CIMObjectPath& y);

} // namespace OpenWBEM
