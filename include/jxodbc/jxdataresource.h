/* A list node that stands for a text resource. It keeps nothing: the number is ignored.
 *
 *     JxList list;
 *     list.append(new JxDataResource(JxTextUnknownDataSource));
 *
 * C++ only; in C this header is empty. */
#ifndef JXDATARESOURCE_H
#define JXDATARESOURCE_H

#include "jxerrors.h"

#ifdef __cplusplus

/* JxDataResource: compares as every JxObject does. An object belongs to one thread at a time; nothing can fail. */
class JX_EXPORT JxDataResource : public JxObject {
public:
    /* id is the number of a text resource; it is not kept. */
    explicit JxDataResource(unsigned short id);
    ~JxDataResource() override;
};

#endif

#endif
