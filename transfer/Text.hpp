// Texts for people and for other programs.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace transfer {

bool holdsControl(const std::string& text);
/// The text with each control character replaced by '?': safe for a terminal, and one line.
std::string printable(std::string text);
/// The text as a JSON string with its quotes. Bytes that are not UTF-8 are read as ISO 8859-1.
std::string jsonText(const std::string& text);

/// Local time as "2026-11-22 02:00:01"; "never" for 0.
std::string timeText(std::time_t time);
/// Local time with its zone as "2026-11-22T02:00:01+00:00".
std::string isoTime(std::time_t time);
/// A CIM date-time, local with its distance from UTC in minutes: "20261122020001.000000+000".
std::string cimTime(std::time_t time);
/// Local time as "20261122-020001", for names of files.
std::string stampTime(std::time_t time);

/// "1 file", "2 files", "2 tries".
std::string counted(std::uint64_t count, const char* noun);

} // namespace transfer
