// The exported class that stands for a text resource in a list.
#include <jxdataresource.h>

// Deliberate: the number is not kept. Lists of programs hold these objects, and what they show comes from elsewhere.
JxDataResource::JxDataResource(unsigned short /*id*/) {}

JxDataResource::~JxDataResource() = default;
