// Adding errors and warnings to the calling thread's list, and appending texts to them.
#include <jxerrors.h>
#include <jxtasks.h>
#include <odbcinst.h>

#include <new>

namespace {

// ResourceText: a text of this library; empty when there is none with that number.
class ResourceText {
public:
    explicit ResourceText(unsigned short id) { winGetString(text_, id); }
    const unsigned char* text() const { return text_; }

private:
    unsigned char text_[256] = {};
};

// Adds an error to the list. When memory is short the list gets null, which it ignores.
JxError* record(unsigned short id, const unsigned char* text, ErrorType type) {
    return JxErrorKeeper::add(new (std::nothrow) JxError(id, text, type, 0, 0));
}

}  // namespace

JxError* addError(unsigned short id) {
    return record(id, ResourceText(id).text(), ErrorTypeError);
}

JxError* addError(unsigned short id, const unsigned char* text) {
    return record(id, text, ErrorTypeError);
}

JxError* addWarning(unsigned short id) {
    return record(id, ResourceText(id).text(), ErrorTypeWarning);
}

JxError* appendTextToLastError(unsigned short id) {
    return JxErrorKeeper::appendToLastError(ResourceText(id).text());
}

JxError* appendTextToErrorAtPos(unsigned short id, unsigned long pos) {
    auto* list = static_cast<JxList*>(mdsGetPerThreadData(PerThreadErrors));
    auto* error = list == nullptr ? nullptr : static_cast<JxError*>(list->getNodeAtPos(pos));
    if (error != nullptr)
        error->appendText(ResourceText(id).text());
    return error;
}
