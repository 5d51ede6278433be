#include "WireCase.hpp"

#include <pugixml.hpp>

#include <fstream>
#include <map>
#include <stdexcept>

namespace wire {
namespace {

using cimserver::http::Request;

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

constexpr const char* kNameSpacePath =
    "<LOCALNAMESPACEPATH><NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/></LOCALNAMESPACEPATH>";

std::string unescaped(std::string text) {
    for (std::size_t at = text.find("\\x"); at != std::string::npos; at = text.find("\\x", at + 1)) {
        const char byte = static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16));
        text.replace(at, 4, 1, byte);
    }
    return text;
}

std::string joined(pugi::xml_node localNameSpacePath) {
    std::string name;
    for (const pugi::xml_node part : localNameSpacePath.children()) {
        name += (name.empty() ? "" : "/") + std::string(part.attribute("NAME").value());
    }
    return name;
}

/// CIMObject of a method call as clients write it.
std::string objectOf(pugi::xml_node call) {
    const pugi::xml_node path = call.first_child();
    if (std::string(call.name()) == "IMETHODCALL") {
        return joined(path);
    }
    std::string object = joined(path.child("LOCALNAMESPACEPATH")) + "%3A";
    object += path.child("CLASSNAME").attribute("NAME").value();
    object += path.child("INSTANCENAME").attribute("CLASSNAME").value();
    char separator = '.';
    for (const pugi::xml_node key : path.child("INSTANCENAME").children("KEYBINDING")) {
        object += separator + std::string(key.attribute("NAME").value()) + "=\"" + key.child_value("KEYVALUE") + "\"";
        separator = ',';
    }
    return object;
}

std::string wrapped(const std::string& call) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"7\" "
           "PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>" +
           call + "</SIMPLEREQ></MESSAGE></CIM>";
}

/// Hands lines to the part of a step that they belong to.
class Reader {
  public:
    void line(const std::string& text) {
        const std::string mark = text.substr(0, 4);
        const std::string rest = text.size() > 4 ? text.substr(4) : "";
        if (mark == ">>> ") {
            steps.emplace_back().method = rest;
            part_ = Part::Head;
        } else if (steps.empty()) {
            return; // what stands before the first request is for people
        } else if (mark == "<<< ") {
            steps.back().status = rest.substr(0, 3);
            steps.back().cimError = rest.size() > 4 ? rest.substr(4) : "";
            part_ = Part::Answer;
        } else if (mark == "+++ ") {
            steps.back().logged.push_back(rest);
        } else if (mark == "--- ") {
            steps.back().notLogged.push_back(rest);
        } else {
            content(text);
        }
    }

    std::vector<Step> steps;

  private:
    enum class Part { Head, Body, Answer };

    void content(const std::string& text) {
        Step& step = steps.back();
        if (part_ == Part::Answer) {
            step.answer += text + "\n";
        } else if (part_ == Part::Body) {
            step.body += (step.body.empty() ? "" : "\n") + text;
        } else if (text.empty()) {
            part_ = Part::Body;
        } else {
            const std::size_t colon = text.find(':');
            step.headers.emplace_back(text.substr(0, colon), text.size() > colon + 2 ? text.substr(colon + 2) : "");
        }
    }

    Part part_ = Part::Head;
};

} // namespace

std::vector<Step> readCase(const std::filesystem::path& file) {
    std::ifstream in(file);
    Reader reader;
    for (std::string line; std::getline(in, line);) {
        reader.line(line);
    }
    if (reader.steps.empty()) {
        throw std::runtime_error("no request in " + file.string());
    }
    return reader.steps;
}

Request requestOf(const Step& step, const std::string& context) {
    Request request;
    request.method = step.method;
    request.target = "/cimom";
    request.peer = "192.0.2.1:4711";
    std::map<std::string, std::string> headers{{"CIMOperation", "MethodCall"}};
    std::string body = unescaped(step.body);
    replaceAll(body, "{context}", context);
    replaceAll(body, "{ns}", kNameSpacePath);
    pugi::xml_document call;
    call.load_string(body.c_str());
    const std::string root = call.document_element().name();
    if (root == "IMETHODCALL" || root == "METHODCALL") {
        headers["CIMMethod"] = call.document_element().attribute("NAME").value();
        headers["CIMObject"] = objectOf(call.document_element());
        body = wrapped(body);
    }
    for (const auto& header : step.headers) {
        headers[header.first] = header.second;
    }
    for (const auto& header : headers) {
        if (header.first == "@user") {
            request.identity.user = header.second;
        } else if (header.first == "@role") {
            request.identity.mayWrite = header.second == "write";
        } else if (!header.second.empty()) {
            request.fields.add(header.first, header.second);
        }
    }
    request.body = std::move(body);
    return request;
}

} // namespace wire
