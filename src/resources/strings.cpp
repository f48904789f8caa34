// Registers the texts and dialog templates of module "odbcinst" while the library is loaded.
#include "resources/strings.h"

#include "resources/templates.h"

namespace jx {

namespace {

// Registrar: what it registers is copied, so there is nothing to take back when the library goes. Without memory the
// texts stay empty and every call still works.
struct Registrar {
    Registrar() { (void)JXW_RegisterModule(kTextModule, kTexts, kTemplates); }
};

const Registrar registrar;

}  // namespace

}  // namespace jx
