// The exported class that stands for a text resource in a list.
#include <jxdataresource.h>

// Deliberate: the number is not stored. Programs keep these objects in lists and get their texts from elsewhere.
JxDataResource::JxDataResource(unsigned short /*id*/) {}

JxDataResource::~JxDataResource() = default;
