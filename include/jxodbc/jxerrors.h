/* Errors and warnings recorded per thread, and texts with parameters.
 *
 *     addError(JxTextAddFailed);
 *     for (unsigned long at = 0; at < JxErrorKeeper::count(); ++at)
 *         puts(reinterpret_cast<const char*>(JxErrorKeeper::errorAt(at)->text()));
 *     JxErrorKeeper::clear();
 *
 * C++ only; in C this header is empty.
 * Threads  an object belongs to the thread that made it; nothing is locked.
 * Failure  no call throws; only the results below show that memory was short.
 * Owner    objects handed over are made with new and released with delete. The code of a program's own classes must
 *          stay loaded as long as objects of theirs are in a list. */
#ifndef JXERRORS_H
#define JXERRORS_H

#include <stddef.h>

#include "jxexport.h"

#ifdef __cplusplus

/* Base of what a JxList can hold. */
class JX_EXPORT JxObject {
public:
    JxObject();
    virtual ~JxObject();

    /* Less than, equal to or greater than 0 as this object orders before, with or after other; null orders first. The
     * base class orders by address. */
    virtual int compare(const JxObject* other) const;

    JxObject(const JxObject&) = delete;
    JxObject& operator=(const JxObject&) = delete;
};

/* An ordered list that owns its nodes. */
class JX_EXPORT JxList : public JxObject {
public:
    JxList();
    ~JxList() override;

    /* Appends node, takes ownership and returns it; put a node into one list only, and once. Null for a null node, and
     * when memory is short: node is then released. */
    JxObject* append(JxObject* node);

    /* The node at position (0 is the oldest), still owned by the list; null outside the list. */
    JxObject* getNodeAtPos(unsigned long position) const;

    unsigned long count() const;

    /* Releases every node, the oldest first. */
    void clear();

private:
    struct Nodes;
    Nodes* nodes_;
};

/* What a recorded text is. */
enum ErrorType { ErrorTypeError = 0, ErrorTypeWarning = 1 };

/* One recorded error or warning: a number, a text that can be extended, a kind. */
class JX_EXPORT JxError : public JxObject {
public:
    /* Copies text; it is empty for null or when memory is short. detail and value are kept for the caller. */
    JxError(unsigned short id, const unsigned char* text, ErrorType type, unsigned short detail, long value);
    ~JxError() override;

    /* By number; other must be a JxError too, or null. */
    int compare(const JxObject* other) const override;

    /* Appends a copy of text to the error's own. Null is ignored; when memory is short the text stays as it is. */
    void appendText(const unsigned char* text);

    unsigned short number() const;
    ErrorType type() const;
    unsigned short detail() const;
    long value() const;

    /* Never null; owned by the error, valid until the next appendText. */
    const unsigned char* text() const;

private:
    unsigned short number_;
    unsigned short detail_;
    ErrorType type_;
    long value_;
    unsigned char* text_;
};

/* The calling thread's list of errors, which is slot PerThreadErrors of jxtasks.h. It is released when the thread ends.
 */
class JX_EXPORT JxErrorKeeper {
public:
    /* Appends error to the list, takes ownership and returns it. Null for a null error, and when memory is short: error
     * is then released. */
    static JxError* add(JxError* error);

    /* Appends text (null is ignored) to the newest error and returns that error; null when there is none. */
    static JxError* appendToLastError(const unsigned char* text);

    /* The thread's list, oldest first; null when memory is short. Owned by the thread. */
    static JxList* list();

    /* The number of errors recorded on this thread. */
    static unsigned long count();

    /* The error at position (0 is the oldest), owned by the list; null outside the list. */
    static JxError* errorAt(unsigned long position);

    /* Releases the thread's errors. */
    static void clear();
};

/* A text with numbered places, such as "Cannot load %1.". A place is a % and a number from 1 to 999 999 999 without
 * leading zeros; "%10" is the tenth place, not the first and a 0. Every other % is text. */
class JX_EXPORT JxParamString {
public:
    JxParamString();
    ~JxParamString();
    JxParamString(const JxParamString&) = delete;
    JxParamString& operator=(const JxParamString&) = delete;

    /* Starts again from a copy of pattern (null: empty). 1, or 0 when memory is short: the text is then empty. */
    int initialize(const unsigned char* pattern);

    /* Puts text (null: empty) into the next place: the first call fills every "%1", the second every "%2" and so on.
     * Text that was put in is not searched for places. A pattern without that place stays as it is; a place not filled
     * stays in the text. text may be this object's own text. 1, or 0 when memory is short: the text is then as it was.
     */
    int setParam(const unsigned char* text);

    /* The text so far, length() bytes and a NUL; never null, owned by the object, valid until the next change. */
    const unsigned char* text() const;
    size_t length() const;

private:
    struct State;
    State* state_;
};

#endif

#endif
