#pragma once

#include "session.h"

namespace korv_python {

/* What `korv.Module` wraps: other objects of the module hold the same. */
struct Module {
    ModulePtr loaded;
};

void DefineContext(py::module_ *korv);
void DefineModule(py::module_ *korv);
void DefineTree(py::module_ *korv);

} // namespace korv_python
