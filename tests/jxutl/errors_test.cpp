// Recorded errors: objects, lists and the thread's list.
#include <jxerrors.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <jxmemory.h>
#include "allocations.h"

namespace {

using jx::test::ShortMemory;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

std::string text(const JxError& error) {
    return reinterpret_cast<const char*>(error.text());
}

JxError* newError(unsigned short id, const char* text = nullptr) {
    return new JxError(id, bytes(text), ErrorTypeError, 0, 0);
}

// Node: records its release.
class Node : public JxObject {
public:
    Node(int id, std::vector<int>& released) : id_(id), released_(released) {}
    ~Node() override { released_.push_back(id_); }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

private:
    int id_;
    std::vector<int>& released_;
};

static_assert(!std::is_copy_constructible_v<JxObject> && !std::is_copy_assignable_v<JxObject>);
static_assert(std::has_virtual_destructor_v<JxObject>);

TEST(Object, OrdersByAddress) {
    const JxObject pair[2];
    EXPECT_EQ(pair[0].compare(&pair[0]), 0);
    EXPECT_LT(pair[0].compare(&pair[1]), 0);
    EXPECT_GT(pair[1].compare(&pair[0]), 0);
    EXPECT_GT(pair[0].compare(nullptr), 0);
}

TEST(List, KeepsTheOrderOfAppending) {
    std::vector<int> released;
    JxList list;
    JxObject* nodes[3];
    for (int i = 0; i < 3; ++i) {
        nodes[i] = new Node(i, released);
        EXPECT_EQ(list.append(nodes[i]), nodes[i]);
    }
    EXPECT_EQ(list.count(), 3UL);
    for (unsigned long i = 0; i < 3; ++i)
        EXPECT_EQ(list.getNodeAtPos(i), nodes[i]);
    EXPECT_TRUE(released.empty());
}

TEST(List, HasNothingOutsideItself) {
    JxList list;
    EXPECT_EQ(list.count(), 0UL);
    EXPECT_EQ(list.getNodeAtPos(0), nullptr);
    list.append(newError(1));
    EXPECT_EQ(list.getNodeAtPos(1), nullptr);
    EXPECT_EQ(list.getNodeAtPos(ULONG_MAX), nullptr);
}

TEST(List, IgnoresNull) {
    JxList list;
    EXPECT_EQ(list.append(nullptr), nullptr);
    EXPECT_EQ(list.count(), 0UL);
}

TEST(List, ReleasesItsNodesOnceAndInOrder) {
    std::vector<int> released;
    {
        JxList list;
        for (int i = 0; i < 3; ++i)
            list.append(new Node(i, released));
        list.clear();
        EXPECT_EQ(released, (std::vector{0, 1, 2}));
        EXPECT_EQ(list.count(), 0UL);
        list.clear();
        list.append(new Node(3, released));
    }
    EXPECT_EQ(released, (std::vector{0, 1, 2, 3}));
}

TEST(List, HoldsLists) {
    std::vector<int> released;
    {
        JxList outer;
        auto* inner = new JxList;
        inner->append(new Node(1, released));
        outer.append(inner);
    }
    EXPECT_EQ(released, std::vector{1});
}

// Adder: adds a node to its list while it is released.
class Adder : public JxObject {
public:
    explicit Adder(JxList& list) : list_(list) {}
    ~Adder() override { list_.append(newError(9)); }
    Adder(const Adder&) = delete;
    Adder& operator=(const Adder&) = delete;

private:
    JxList& list_;
};

TEST(List, ANodeMayAddToTheListThatReleasesIt) {
    JxList list;
    list.append(new Adder(list));
    list.append(newError(1));
    list.clear();
    EXPECT_EQ(list.count(), 1UL);
}

TEST(List, WithoutMemoryANodeIsReleasedAndNullReturned) {
    jx::test::failEachAllocation([](ShortMemory& memory) {
        std::vector<int> released;
        released.reserve(8);
        JxList list;
        JxObject* node = new Node(1, released);
        memory.begin();
        const JxObject* appended = list.append(node);
        const bool failed = memory.end();
        EXPECT_EQ(appended == nullptr, failed);
        EXPECT_EQ(list.count(), failed ? 0UL : 1UL);
        EXPECT_EQ(released.size(), failed ? 1U : 0U);
    });
}

TEST(List, WithoutMemoryTheOtherNodesStay) {
    jx::test::failEachAllocation([](ShortMemory& memory) {
        JxList list;
        for (unsigned short i = 0; i < 4; ++i)
            list.append(newError(i));
        JxObject* node = newError(4);
        memory.begin();
        const bool appended = list.append(node) != nullptr;
        memory.end();
        EXPECT_EQ(list.count(), appended ? 5UL : 4UL);
        EXPECT_EQ(static_cast<JxError*>(list.getNodeAtPos(3))->number(), 3);
    });
}

TEST(Error, KeepsWhatItWasMadeWith) {
    const JxError error(65535, bytes("disk full"), ErrorTypeWarning, 12, LONG_MIN);
    EXPECT_EQ(error.number(), 65535);
    EXPECT_EQ(error.type(), ErrorTypeWarning);
    EXPECT_EQ(error.detail(), 12);
    EXPECT_EQ(error.value(), LONG_MIN);
    EXPECT_EQ(text(error), "disk full");
}

TEST(Error, CopiesItsText) {
    unsigned char mine[] = "before";
    const JxError error(1, mine, ErrorTypeError, 0, 0);
    mine[0] = 'X';
    EXPECT_EQ(text(error), "before");
}

TEST(Error, ANullTextIsEmptyAndCanBeExtended) {
    JxError error(1, nullptr, ErrorTypeError, 0, 0);
    EXPECT_EQ(text(error), "");
    error.appendText(nullptr);
    error.appendText(bytes(""));
    EXPECT_EQ(text(error), "");
    error.appendText(bytes("now"));
    EXPECT_EQ(text(error), "now");
}

TEST(Error, TextsAreAppendedInOrder) {
    JxError error(1, bytes("a"), ErrorTypeError, 0, 0);
    error.appendText(bytes("bc"));
    error.appendText(bytes(std::string(70000, 'd').c_str()));
    EXPECT_EQ(text(error), "abc" + std::string(70000, 'd'));
}

TEST(Error, ItsOwnTextCanBeAppended) {
    JxError error(1, bytes("ab"), ErrorTypeError, 0, 0);
    error.appendText(error.text());
    error.appendText(error.text() + 3);
    EXPECT_EQ(text(error), "ababb");
}

TEST(Error, OrdersByNumber) {
    const JxError low(0, nullptr, ErrorTypeError, 0, 0);
    const JxError high(65535, nullptr, ErrorTypeError, 0, 0);
    const JxError equal(65535, bytes("other text"), ErrorTypeWarning, 1, 1);
    EXPECT_LT(low.compare(&high), 0);
    EXPECT_GT(high.compare(&low), 0);
    EXPECT_EQ(high.compare(&equal), 0);
    EXPECT_GT(low.compare(nullptr), 0);
}

TEST(Error, WithoutMemoryTheTextIsEmptyThenAsItWas) {
    EXPECT_EQ(jx::test::failEachAllocation([](ShortMemory& memory) {
                  memory.begin();
                  JxError error(5, bytes("made"), ErrorTypeWarning, 0, 0);
                  const std::size_t made = text(error).size();
                  error.appendText(bytes("+"));
                  const bool failed = memory.end();
                  const std::string expected = made == 0 ? "" : "made";
                  EXPECT_EQ(text(error) == "made+", !failed);
                  EXPECT_EQ(text(error).substr(0, made), expected);
                  EXPECT_EQ(error.number(), 5);
              }),
              2);
}

// Runs check on a thread that has no errors yet.
template <class Check>
void onNewThread(Check check) {
    std::thread(check).join();
}

TEST(ErrorKeeper, RecordsInOrder) {
    onNewThread([] {
        JxError* first = newError(1, "one");
        JxError* second = newError(2, "two");
        EXPECT_EQ(JxErrorKeeper::add(first), first);
        EXPECT_EQ(JxErrorKeeper::add(second), second);
        EXPECT_EQ(JxErrorKeeper::count(), 2UL);
        EXPECT_EQ(JxErrorKeeper::errorAt(0), first);
        EXPECT_EQ(JxErrorKeeper::errorAt(1), second);
        EXPECT_EQ(JxErrorKeeper::errorAt(2), nullptr);
        EXPECT_EQ(JxErrorKeeper::list()->getNodeAtPos(1), second);
    });
}

TEST(ErrorKeeper, IgnoresNull) {
    onNewThread([] {
        EXPECT_EQ(JxErrorKeeper::add(nullptr), nullptr);
        EXPECT_EQ(JxErrorKeeper::count(), 0UL);
        EXPECT_EQ(JxErrorKeeper::list()->count(), 0UL);
    });
}

TEST(ErrorKeeper, AppendsToTheNewest) {
    onNewThread([] {
        JxError* first = JxErrorKeeper::add(newError(1, "one"));
        JxError* second = JxErrorKeeper::add(newError(2, "two"));
        EXPECT_EQ(JxErrorKeeper::appendToLastError(bytes("!")), second);
        EXPECT_EQ(text(*first), "one");
        EXPECT_EQ(text(*second), "two!");
        EXPECT_EQ(JxErrorKeeper::appendToLastError(nullptr), second);
        EXPECT_EQ(text(*second), "two!");
    });
}

TEST(ErrorKeeper, AppendsNothingWithoutAnError) {
    onNewThread([] {
        EXPECT_EQ(JxErrorKeeper::appendToLastError(bytes("!")), nullptr);
        EXPECT_NE(JxErrorKeeper::list(), nullptr);
        EXPECT_EQ(JxErrorKeeper::appendToLastError(bytes("!")), nullptr);
    });
}

TEST(ErrorKeeper, ClearForgetsTheErrorsAndKeepsTheList) {
    onNewThread([] {
        JxErrorKeeper::clear();
        JxErrorKeeper::add(newError(1));
        const JxList* list = JxErrorKeeper::list();
        JxErrorKeeper::clear();
        EXPECT_EQ(JxErrorKeeper::count(), 0UL);
        EXPECT_EQ(JxErrorKeeper::list(), list);
    });
}

TEST(ErrorKeeper, WithoutMemoryTheErrorIsReleasedAndNullReturned) {
    EXPECT_GE(jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
                  JxError* error = newError(1, "text");
                  memory.begin();
                  const JxError* added = JxErrorKeeper::add(error);
                  const bool failed = memory.end();
                  EXPECT_EQ(added == nullptr, failed);
                  EXPECT_EQ(JxErrorKeeper::count(), failed ? 0UL : 1UL);
              }),
              4);
}

TEST(ErrorKeeper, WithoutMemoryTheNewestKeepsItsText) {
    jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
        JxErrorKeeper::add(newError(1, "text"));
        memory.begin();
        const JxError* last = JxErrorKeeper::appendToLastError(bytes("more"));
        const bool failed = memory.end();
        ASSERT_NE(last, nullptr);
        EXPECT_EQ(text(*last), failed ? "text" : "textmore");
    });
}

}  // namespace
