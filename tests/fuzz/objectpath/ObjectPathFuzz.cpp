// Any text as an object path: parsed or refused, and what is parsed survives stream and text.
#include "../Require.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"

#include <sstream>

namespace {

using namespace OpenWBEM;

/// Whether the printed path can be read: names are printed as they are, and a line feed as a letter.
bool isReadable(const CIMObjectPath& path) {
    std::string names;
    for (const CIMProperty& key : path.getKeys()) {
        names += key.getName().c_str();
    }
    const String printed = path.modelPath();
    return names.find_first_of("\"\\,") == std::string::npos && !printed.startsWith("//") &&
           printed.indexOf("\\n") == String::npos;
}

void use(CIMObjectPath path) {
    std::stringstream stream;
    path.writeObject(stream);
    CIMObjectPath streamed;
    streamed.readObject(stream);
    require(streamed == path && !(streamed < path), "the stream gives the same path");
    path.toMOF();
    path.setNameSpace("printed");
    require(!isReadable(path) || CIMObjectPath::parse("printed:" + path.modelPath()) == path,
            "the text gives the same path");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const CIMObjectPath path = CIMObjectPath::parse(std::string(textOf(data, size)).c_str());
        if (path) {
            use(path);
        }
    } catch (const CIMException& refused) {
        require(refused.getErrNo() == CIMException::INVALID_PARAMETER || refused.getErrNo() == CIMException::NOT_FOUND,
                "a refusal is of the two that are documented");
    }
    return 0;
}
