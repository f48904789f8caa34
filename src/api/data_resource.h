// A text resource as a list node.
#pragma once

#include <jxerrors.h>

// JxDataResource: takes a resource number and holds nothing; it orders as every JxObject does.
class JxDataResource : public JxObject {
public:
    explicit JxDataResource(unsigned short /*id*/) {}
    ~JxDataResource() override = default;
};
