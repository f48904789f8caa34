// What a library's file shows before it is loaded.
#pragma once

namespace jx {

// Whether the file is a library of this system with a segment beyond the file's end, as when a copy was broken off. The
// loader would map it all the same, and the process would die when it looks there. False for everything else, also for
// what cannot be read or is of another kind: the loader says so itself. The path must have a slash.
bool endsBeforeItsSegments(const char* path);

}  // namespace jx
