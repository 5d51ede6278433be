#include "cimserver/schema/ClassBuilder.hpp"

#include "cimserver/common/Text.hpp"
#include "cimserver/schema/Qualifiers.hpp"
#include "cimserver/schema/Values.hpp"

#include <set>

namespace cimserver::schema {

using namespace OpenWBEM;

namespace {

class Builder {
  public:
    Builder(const ast::ClassDeclaration& declaration, const Namespace& known, const Inheritance& inheritance)
        : declaration_(declaration), known_(known), inheritance_(inheritance),
          class_(CIMName(declaration.name.c_str())) {}

    CIMClass build();

  private:
    void findSuperClass();
    void qualifyClass();
    void addFeature(const ast::Feature& feature);
    CIMProperty property(const ast::Feature& feature);
    CIMMethod method(const ast::Feature& feature);
    CIMParameter parameter(const ast::Parameter& written, const CIMMethod& inherited) const;
    void inheritFeatures();
    CIMName overridden(const ast::Feature& feature);
    void checkSameType(const ast::Feature& feature, const CIMDataType& now, const CIMDataType& before) const;
    bool inherits(const CIMName& name, bool asMethod) const {
        return super_ != nullptr && (asMethod ? bool(super_->getMethod(name)) : bool(super_->getProperty(name)));
    }
    bool inheritsUnchanged(const String& name) const {
        return ownNames_.count(folded(name.c_str())) == 0 && replacedNames_.count(folded(name.c_str())) == 0;
    }

    const ast::ClassDeclaration& declaration_;
    const Namespace& known_;
    const Inheritance& inheritance_;
    const CIMClass* super_ = nullptr;
    CIMClass class_;
    std::set<std::string> ownNames_;
    std::set<std::string> replacedNames_; ///< inherited names that a feature of another name overrides
    CIMPropertyArray properties_;
    CIMMethodArray methods_;
};

CIMClass Builder::build() {
    if (known_.findClass(declaration_.name) != nullptr) {
        fail(declaration_.location, "the class \"" + declaration_.name + "\" is declared already");
    }
    findSuperClass();
    within(declaration_.name, [&] { qualifyClass(); });
    for (const ast::Feature& feature : declaration_.features) {
        within(declaration_.name + "." + feature.name, [&] { addFeature(feature); });
    }
    inheritFeatures();
    class_.setProperties(properties_);
    class_.setMethods(methods_);
    for (const CIMProperty& property : properties_) {
        if (property.isKey()) {
            class_.setIsKeyed(true);
        }
    }
    return class_;
}

void Builder::findSuperClass() {
    if (declaration_.superClass.empty()) {
        return;
    }
    super_ = known_.findClass(declaration_.superClass);
    if (super_ == nullptr) {
        fail(declaration_.location,
             "the superclass \"" + declaration_.superClass + "\" of \"" + declaration_.name + "\" is not declared");
    }
    unsigned depth = 1;
    for (const CIMClass* c = super_; c != nullptr; c = known_.findClass(c->getSuperClass().c_str())) {
        if (++depth > kDeepestInheritance) {
            fail(declaration_.location, "classes are derived deeper than " + std::to_string(kDeepestInheritance));
        }
    }
    class_.setSuperClass(CIMName(super_->getName()));
}

void Builder::qualifyClass() {
    const CIMQualifierArray inherited = super_ != nullptr ? super_->getQualifiers() : CIMQualifierArray();
    CIMScope::Scope kind = super_ != nullptr && super_->isAssociation() ? CIMScope::ASSOCIATION : CIMScope::CLASS;
    for (const ast::QualifierUse& use : declaration_.qualifiers) {
        if (equalsIgnoringCase(use.name, CIMQualifier::CIM_QUAL_ASSOCIATION)) {
            kind = CIMScope::ASSOCIATION;
        } else if (equalsIgnoringCase(use.name, CIMQualifier::CIM_QUAL_INDICATION)) {
            kind = CIMScope::INDICATION;
        }
    }
    const CIMQualifierArray qualifiers =
        buildQualifiers(declaration_.qualifiers, known_, {CIMScope::CLASS, kind}, inherited);
    class_.setQualifiers(qualifiers);
    class_.setIsAssociation(isTrue(qualifiers, CIMQualifier::CIM_QUAL_ASSOCIATION));
}

void Builder::addFeature(const ast::Feature& feature) {
    if (!ownNames_.insert(folded(feature.name)).second) {
        fail(feature.location, "\"" + feature.name + "\" is declared twice in the class");
    }
    const bool isMethod = feature.parameters.has_value();
    if (inherits(CIMName(feature.name.c_str()), !isMethod)) {
        fail(feature.location, "\"" + feature.name + "\" is inherited as a " + (isMethod ? "property" : "method"));
    }
    if (isMethod) {
        methods_.push_back(method(feature));
    } else {
        properties_.push_back(property(feature));
    }
}

/// The name of the inherited element that the feature replaces: its own, unless "Override" names another one, as "NAME"
/// or "CLASS.NAME". A name that is not inherited is ignored: the schema may expect another edition of its superclass.
CIMName Builder::overridden(const ast::Feature& feature) {
    std::string named;
    for (const ast::QualifierUse& use : feature.qualifiers) {
        if (equalsIgnoringCase(use.name, CIMQualifier::CIM_QUAL_OVERRIDE) && use.value) {
            named = use.value->scalar.text;
        }
    }
    if (named.empty()) {
        return CIMName(feature.name.c_str());
    }
    const std::size_t dot = named.find('.');
    if (super_ == nullptr ||
        (dot != std::string::npos && !known_.isA(super_->getName(), named.substr(0, dot).c_str()))) {
        fail(feature.location, "\"" + feature.name + "\" overrides \"" + named + "\", which is not inherited");
    }
    named.erase(0, dot == std::string::npos ? 0 : dot + 1);
    const CIMName name(named.c_str());
    if (!inherits(name, feature.parameters.has_value())) {
        return CIMName(feature.name.c_str());
    }
    replacedNames_.insert(folded(named));
    return name;
}

/// A reference may be narrowed to a derived class; a class that is declared later is assumed to be derived.
void Builder::checkSameType(const ast::Feature& feature, const CIMDataType& now, const CIMDataType& before) const {
    const String target = now.getRefClassName();
    const bool narrowed = !now.isReferenceType() || known_.findClass(target.c_str()) == nullptr ||
                          known_.isA(target, before.getRefClassName());
    if (!now.equals(before) || !narrowed) {
        fail(feature.type.location, "\"" + feature.name + "\" overrides an element of another type");
    }
}

CIMProperty Builder::property(const ast::Feature& feature) {
    const CIMName name(feature.name.c_str());
    const CIMName replaced = overridden(feature);
    const CIMProperty inherited = super_ != nullptr ? super_->getProperty(replaced) : CIMProperty(CIMNULL);
    const CIMDataType type = dataType(feature.type);
    if (type.isReferenceType() && !class_.isAssociation()) {
        fail(feature.type.location, "a reference is allowed in an association only");
    }
    const CIMQualifierArray qualifiers =
        buildQualifiers(feature.qualifiers, known_,
                        {CIMScope::PROPERTY, type.isReferenceType() ? CIMScope::REFERENCE : CIMScope::PROPERTY},
                        inherited ? inherited.getQualifiers() : CIMQualifierArray());
    CIMProperty property(name, type);
    if (type.isArrayType()) {
        property.setDataSize(type.getSize());
    }
    property.setQualifiers(qualifiers).setOriginClass(CIMName(class_.getName())).setPropagated(false);
    if (inherited) {
        checkSameType(feature, type, inherited.getDataType());
        property.setOverridingProperty(replaced);
        property.setValue(inherited.getValue());
        if (type.isArrayType() && feature.type.arraySize == 0) {
            property.setDataSize(inherited.getSize());
        }
    }
    if (feature.defaultValue) {
        property.setValue(value(*feature.defaultValue, type));
    }
    return property;
}

CIMParameter Builder::parameter(const ast::Parameter& written, const CIMMethod& inherited) const {
    const CIMDataType type = dataType(written.type);
    CIMQualifierArray before;
    if (inherited) {
        for (const CIMParameter& candidate : inherited.getParameters()) {
            if (equalsIgnoringCase(candidate.getName().c_str(), written.name)) {
                before = candidate.getQualifiers();
            }
        }
    }
    CIMParameter parameter{CIMName(written.name.c_str())};
    parameter.setDataType(type);
    return parameter.setQualifiers(buildQualifiers(
        written.qualifiers, known_,
        {CIMScope::PARAMETER, type.isReferenceType() ? CIMScope::REFERENCE : CIMScope::PARAMETER}, before));
}

CIMMethod Builder::method(const ast::Feature& feature) {
    const CIMName name(feature.name.c_str());
    const CIMName replaced = overridden(feature);
    const CIMMethod inherited = super_ != nullptr ? super_->getMethod(replaced) : CIMMethod(CIMNULL);
    const CIMDataType type = dataType(feature.type);
    const CIMQualifierArray qualifiers = buildQualifiers(feature.qualifiers, known_, {CIMScope::METHOD},
                                                         inherited ? inherited.getQualifiers() : CIMQualifierArray());
    CIMMethod method(name);
    method.setReturnType(type).setQualifiers(qualifiers).setOriginClass(CIMName(class_.getName()));
    method.setPropagated(false);
    if (inherited) {
        checkSameType(feature, type, inherited.getReturnType());
        method.setOverridingMethod(replaced);
        if (feature.parameters->empty()) {
            method.setParameters(inherited.getParameters()); // old schemas do not repeat them
        }
    }
    std::set<std::string> names;
    for (const ast::Parameter& written : *feature.parameters) {
        if (!names.insert(folded(written.name)).second) {
            fail(written.location, "the parameter \"" + written.name + "\" is declared twice");
        }
        method.addParameter(parameter(written, inherited));
    }
    return method;
}

void Builder::inheritFeatures() {
    properties_.reserve(properties_.size() + inheritance_.properties.size());
    methods_.reserve(methods_.size() + inheritance_.methods.size());
    for (const CIMProperty& inherited : inheritance_.properties) {
        if (inheritsUnchanged(inherited.getName())) {
            properties_.push_back(inherited);
        }
    }
    for (const CIMMethod& inherited : inheritance_.methods) {
        if (inheritsUnchanged(inherited.getName())) {
            methods_.push_back(inherited);
        }
    }
}

/// As a subclass has it. What is propagated already has been made so for the class itself.
template <class Feature>
Feature propagated(Feature feature) {
    return feature.getPropagated()
               ? feature
               : feature.setQualifiers(propagatedQualifiers(feature.getQualifiers())).setPropagated(true);
}

} // namespace

CIMClass buildClass(const ast::ClassDeclaration& declaration, const Namespace& known, const Inheritance& inheritance) {
    return Builder(declaration, known, inheritance).build();
}

Inheritance inheritanceFrom(const CIMClass& cimClass) {
    Inheritance result;
    for (const CIMProperty& property : cimClass.getAllProperties()) {
        result.properties.push_back(propagated(property));
    }
    for (const CIMMethod& method : cimClass.getAllMethods()) {
        result.methods.push_back(propagated(method));
    }
    return result;
}

} // namespace cimserver::schema
