// The store as an installation sees it: which calls it is given, in which order.
#pragma once

#include <string>
#include <vector>

namespace jx::test {

// RecordedStore: while it lives, it keeps every profile call of the process on its way to the store. One at a time.
class RecordedStore {
public:
    RecordedStore();
    ~RecordedStore();
    RecordedStore(const RecordedStore&) = delete;
    RecordedStore& operator=(const RecordedStore&) = delete;

    // One text a call, files without their directory: "get FILE 'section' 'key' 'fallback' SIZE", "put FILE 'section'
    // 'key' 'value'", "open FILE", "close"; null is (null), and a file behind a cache is "cache".
    std::vector<std::string> calls;
};

}  // namespace jx::test
