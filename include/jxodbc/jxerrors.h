/* Errors and warnings recorded per thread, and texts with parameters.
 *
 * Objects belong to the thread that made them; nothing here locks. Memory that runs short shows in the results told
 * below and nowhere else: no call throws. Objects handed over are made with new and released with delete; a program's
 * own classes must stay loaded as long as objects of theirs are in a list. */
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

    /* Below, equal to or above 0 as this object orders before, with or after other; null orders first. The base orders
     * by address. */
    virtual int compare(const JxObject* other) const;

    JxObject(const JxObject&) = delete;
    JxObject& operator=(const JxObject&) = delete;
};

/* An ordered list that owns its nodes. */
class JX_EXPORT JxList : public JxObject {
public:
    JxList();
    ~JxList() override;

    /* Appends node and takes ownership; returns it. A node goes into one list, once. A null node is ignored and null
     * returned. When memory is short the node is released and null returned. */
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
    /* text may be null and is copied (when memory is short the text is empty); the two last values are kept for the
     * caller. */
    JxError(unsigned short id, const unsigned char* text, ErrorType type, unsigned short detail, long value);
    ~JxError() override;

    /* By number; other must be a JxError too, or null. */
    int compare(const JxObject* other) const override;

    /* Appends a copy of text to the error's own; null is ignored, and when memory is short the text stays as it is. */
    void appendText(const unsigned char* text);

    unsigned short number() const;
    ErrorType type() const;
    unsigned short detail() const;
    long value() const;

    /* Owned by the error and valid until the next appendText; never null. */
    const unsigned char* text() const;

private:
    unsigned short number_;
    unsigned short detail_;
    ErrorType type_;
    long value_;
    unsigned char* text_;
};

/* The calling thread's list of errors: the JxList of slot PerThreadErrors of jxtasks.h. Each thread has its own; it
 * ends with the thread. */
class JX_EXPORT JxErrorKeeper {
public:
    /* Appends error to the list and takes ownership; a null error is ignored and null returned. Returns error, or null
     * when memory was short (the error is released then). */
    static JxError* add(JxError* error);

    /* Appends text (null: nothing) to the newest error and returns that error; null when there is none. */
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
 * leading zeros, read as far as its digits go ("%10" is the tenth place); every other % is text. */
class JX_EXPORT JxParamString {
public:
    JxParamString();
    ~JxParamString();
    JxParamString(const JxParamString&) = delete;
    JxParamString& operator=(const JxParamString&) = delete;

    /* Starts again from a copy of pattern (null: empty). Returns 1, or 0 when memory is short (the text is then empty).
     */
    int initialize(const unsigned char* pattern);

    /* Puts text (null: empty) into the next place: the first call fills "%1", the second "%2" and so on, wherever and
     * however often it stands; what is put in is never searched again. A pattern without the place stays as it is, and
     * a place that was not filled is shown as it stands. text may be this object's own text.
     * Returns 1, or 0 when memory is short (the text is then as it was). */
    int setParam(const unsigned char* text);

    /* The text so far, ended with NUL at length(); never null, valid until the next change. */
    const unsigned char* text() const;
    size_t length() const;

private:
    struct State;
    State* state_;
};

#endif

#endif
