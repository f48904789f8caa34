// Texts at the end of readable memory.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string_view>

namespace jx::test {

// PageEdge: a writable copy of bytes at the end of a page; the next page is not readable. A read past the copy ends the
// test program, in every build.
class PageEdge {
public:
    explicit PageEdge(std::string_view bytes)
        : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))), pages_(bytes.size() / page_ + 2) {
        base_ = static_cast<char*>(
            mmap(nullptr, pages_ * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        begin_ = base_ + (pages_ - 1) * page_ - bytes.size();
        if (base_ == MAP_FAILED || mprotect(base_ + (pages_ - 1) * page_, page_, PROT_NONE) != 0)
            ADD_FAILURE() << "no guarded page";
        else
            std::memcpy(begin_, bytes.data(), bytes.size());
    }
    ~PageEdge() { munmap(base_, pages_ * page_); }
    PageEdge(const PageEdge&) = delete;
    PageEdge& operator=(const PageEdge&) = delete;

    char* data() { return begin_; }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(begin_); }

private:
    std::size_t page_;
    std::size_t pages_;
    char* base_;
    char* begin_;
};

}  // namespace jx::test
