// Registers the texts and dialog templates of module "odbcinst" while the library is loaded.
#include "resources/strings.h"

#include "resources/templates.h"

namespace jx {

namespace {

// Registrar: registers copies, so nothing needs to be removed when the library is unloaded. When memory is short the
// texts are empty, and every call still works.
struct Registrar {
    Registrar() { (void)JXW_RegisterModule(kTextModule, kTexts, kTemplates); }
};

const Registrar registrar;

}  // namespace

}  // namespace jx
