// The push settings' texts for a time of day and a day.
#pragma once

namespace cdroam {

/// The decimal integer at the start of the text, as atoi reads it: 0 when there is none. A number outside the range of
/// int gives the nearest int.
int leadingInteger(const char* text);

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
};

/// Hour and minute of a text "H:M": the first two tokens between colons, 0 for a missing one. Their range is not
/// checked.
TimeOfDay parseTimeOfDay(const char* text);

/// Whether each token that is present begins with a number in range: hour 0 to 23, minute 0 to 59. A token with the
/// value 0 must be "0" or "00". The empty text is a time: midnight.
bool isTimeOfDay(const char* text);

} // namespace cdroam
