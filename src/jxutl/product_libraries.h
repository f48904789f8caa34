// Which files are the libraries of this product.
#pragma once

#include <sys/stat.h>

namespace jx {

// True for a file that is, by device and inode, the utility library itself or one of the product's libraries beside it;
// so no link and no other spelling of a path hides one. A library that cannot be looked at counts as absent. Any
// thread; errno may change.
bool isProductLibrary(const struct stat& file);

}  // namespace jx
