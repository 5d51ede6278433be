// What the process keeps of the memory that it used once.
#pragma once

namespace cimserver {

/// Gives large texts back to the system as soon as they are freed, instead of keeping room for them in the heap.
void boundHeap();

/// Gives back what only the start needed: free parts of the heap, such as the schema's text, and pages of programs and
/// libraries, which come back from the files when they are used again. Pages that were written to, be it by a debugger
/// that sets a breakpoint, stay.
void giveBackStart();

} // namespace cimserver
