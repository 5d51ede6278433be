// A CIM-XML request message: one call of an operation or of a method, found in the document but not yet interpreted.
#pragma once

#include "cimserver/cimxml/WellFormedness.hpp"
#include "cimserver/cimxml/XmlDocument.hpp"

#include <string>
#include <string_view>

namespace cimserver::cimxml {

/// What the reply repeats of the request; valid as long as its message.
struct MessageFrame {
    std::string_view id;
    std::string_view protocolVersion = "1.0";
    std::string_view cimVersion = "2.0";
    std::string dtdVersion = "2.0";
};

/// The message of one HTTP request. Nodes live as long as the object.
class RequestMessage {
  public:
    /// Reads and checks well-formedness, versions, a single request, and the rules of CIM-XML, in this order. Throws
    /// HttpError.
    RequestMessage(std::string_view body, const XmlLimits& limits);

    const MessageFrame& frame() const { return frame_; }
    /// True for a method of a class, false for an operation of the protocol itself.
    bool isMethodCall() const { return std::string_view(call_.name()) == "METHODCALL"; }
    /// Name of the operation or method as sent.
    std::string_view name() const { return name_; }
    /// IMETHODCALL or METHODCALL.
    pugi::xml_node call() const { return call_; }
    /// "root/cimv2"
    const std::string& nameSpace() const { return nameSpace_; }
    /// CLASSNAME or INSTANCENAME of a method call.
    pugi::xml_node target() const { return target_; }

  private:
    void readFrame(pugi::xml_node cim);

    XmlDocument document_;
    MessageFrame frame_;
    pugi::xml_node call_;
    std::string_view name_;
    pugi::xml_node target_;
    std::string nameSpace_;
};

/// The namespace's name from a LOCALNAMESPACEPATH.
std::string nameSpaceOf(pugi::xml_node localNameSpacePath);

/// Whether a version such as "1.0" has this major version; false for a text that is not a version.
bool hasMajorVersion(std::string_view version, char major);

} // namespace cimserver::cimxml
