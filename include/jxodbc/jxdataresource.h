/* A text resource as a node of a list: it takes a resource number and holds nothing.
 *
 *     list.append(new JxDataResource(55));
 *
 * C++ only; in C this header is empty. */
#ifndef JXDATARESOURCE_H
#define JXDATARESOURCE_H

#include "jxerrors.h"

#ifdef __cplusplus

/* JxDataResource: orders as every JxObject does. Each object belongs to one thread at a time; nothing can fail. */
class JX_EXPORT JxDataResource : public JxObject {
public:
    /* The number of a string resource, which is ignored. */
    explicit JxDataResource(unsigned short id);
    ~JxDataResource() override;
};

#endif

#endif
