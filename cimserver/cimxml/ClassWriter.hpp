// Writes classes and qualifier declarations as CIM-XML elements.
#pragma once

#include "ObjectWriter.hpp"

#include "OW_CIM.hpp"

namespace cimserver::cimxml {

/// What of a class is wanted.
struct ClassForm {
    bool localOnly = false; ///< without what is inherited unchanged
    ObjectForm object;
    const OpenWBEM::StringArray* propertyList = nullptr; ///< null: all properties
};

/// CLASS
void writeClass(XmlWriter& writer, const OpenWBEM::CIMClass& cimClass, const ClassForm& form);

/// QUALIFIER.DECLARATION
void writeQualifierDeclaration(XmlWriter& writer, const OpenWBEM::CIMQualifierType& declaration);

} // namespace cimserver::cimxml
