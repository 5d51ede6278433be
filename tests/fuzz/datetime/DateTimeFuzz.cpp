// Any text as a date-time: read or refused, and what is read survives text and stream.
#include "../Require.hpp"

#include "OW_CIMDateTime.hpp"
#include "OW_DateTime.hpp"

#include <sstream>

namespace {

using namespace OpenWBEM;

void readCimDateTime(const String& text) {
    const CIMDateTime read(text);
    require(CIMDateTime(read.toString()) == read, "the text gives the same date-time");
    std::stringstream stream;
    read.writeObject(stream);
    CIMDateTime streamed;
    streamed.readObject(stream);
    require(streamed == read && !(streamed < read), "the stream gives the same date-time");
    read.toDateTime().toString(DateTime::E_UTC_TIME);
}

void readDateTime(const String& text) {
    DateTime read(text);
    require(CIMDateTime(read).toDateTime() == read, "the fields give the same time");
    read.addMonths(static_cast<int>(text.length()));
    read.toString(DateTime::DEFAULT_FORMAT);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(textOf(data, size));
    for (const auto use : {readCimDateTime, readDateTime}) {
        try {
            use(String(bytes.c_str()));
        } catch (const CIMDateTimeException&) {
        } catch (const DateTimeException&) {
        }
    }
    return 0;
}
