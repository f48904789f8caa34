// The objects that record errors, the list that owns them, and the calling thread's list.
#include <jxerrors.h>

#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include <jxmemory.h>
#include <jxtext.h>
#include "jxutl/thread/thread_data.h"

JxObject::JxObject() = default;
JxObject::~JxObject() = default;

int JxObject::compare(const JxObject* other) const {
    const std::less<const JxObject*> before;  // orders pointers of any origin
    return before(this, other) ? -1 : before(other, this) ? 1 : 0;
}

struct JxList::Nodes {
    std::vector<JxObject*> inOrder;
};

// nodes_ is made by the first append, which can report that memory was short.
JxList::JxList() : nodes_(nullptr) {}

JxList::~JxList() {
    clear();
    delete nodes_;
}

JxObject* JxList::append(JxObject* node) {
    std::unique_ptr<JxObject> owner(node);
    if (node == nullptr)
        return nullptr;
    if (nodes_ == nullptr)
        nodes_ = new (std::nothrow) Nodes;
    if (nodes_ == nullptr)
        return nullptr;
    try {
        nodes_->inOrder.push_back(node);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return owner.release();
}

JxObject* JxList::getNodeAtPos(unsigned long position) const {
    return position < count() ? nodes_->inOrder[position] : nullptr;
}

unsigned long JxList::count() const {
    return nodes_ != nullptr ? static_cast<unsigned long>(nodes_->inOrder.size()) : 0;
}

void JxList::clear() {
    if (nodes_ == nullptr)
        return;
    // Out of the list first: a node's destructor may look at the list or add to it.
    const std::vector<JxObject*> leaving = std::exchange(nodes_->inOrder, {});
    for (JxObject* node : leaving)
        delete node;
}

JxError::JxError(unsigned short id, const unsigned char* text, ErrorType type, unsigned short detail, long value)
    : number_(id), detail_(detail), type_(type), value_(value), text_(ramAllocStr(text)) {}

JxError::~JxError() {
    ramFree(text_);
}

int JxError::compare(const JxObject* other) const {
    if (other == nullptr)
        return 1;
    const int otherNumber = static_cast<const JxError*>(other)->number_;
    return number_ - otherNumber;
}

void JxError::appendText(const unsigned char* text) {
    const std::size_t oldLength = BUTSTLEN(text_);
    const std::size_t addedLength = BUTSTLEN(text);
    if (addedLength == 0)
        return;
    // A new block, since text may be this error's own.
    auto* joined = static_cast<unsigned char*>(ramAlloc(oldLength + addedLength + 1));
    if (joined == nullptr)
        return;
    BUTMEMCP(joined, text_, oldLength);
    BUTMEMCP(joined + oldLength, text, addedLength);
    joined[oldLength + addedLength] = 0;
    ramFree(std::exchange(text_, joined));
}

unsigned short JxError::number() const {
    return number_;
}

ErrorType JxError::type() const {
    return type_;
}

unsigned short JxError::detail() const {
    return detail_;
}

long JxError::value() const {
    return value_;
}

const unsigned char* JxError::text() const {
    static constexpr unsigned char kEmpty[] = {0};
    return text_ != nullptr ? text_ : kEmpty;
}

namespace {

// Does not make the list.
JxList* existingErrors() {
    const jx::ThreadData* data = jx::existingThreadData();
    return data != nullptr ? data->errors.get() : nullptr;
}

}  // namespace

JxError* JxErrorKeeper::add(JxError* error) {
    std::unique_ptr<JxError> owner(error);
    JxList* errors = error != nullptr ? jx::threadErrors() : nullptr;
    if (errors == nullptr)
        return nullptr;
    return static_cast<JxError*>(errors->append(owner.release()));
}

JxError* JxErrorKeeper::appendToLastError(const unsigned char* text) {
    const unsigned long known = count();
    JxError* last = known != 0 ? errorAt(known - 1) : nullptr;
    if (last != nullptr)
        last->appendText(text);
    return last;
}

JxList* JxErrorKeeper::list() {
    return jx::threadErrors();
}

unsigned long JxErrorKeeper::count() {
    const JxList* errors = existingErrors();
    return errors != nullptr ? errors->count() : 0;
}

JxError* JxErrorKeeper::errorAt(unsigned long position) {
    const JxList* errors = existingErrors();
    return errors != nullptr ? static_cast<JxError*>(errors->getNodeAtPos(position)) : nullptr;
}

void JxErrorKeeper::clear() {
    if (JxList* errors = existingErrors())
        errors->clear();
}
