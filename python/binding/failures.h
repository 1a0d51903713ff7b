#pragma once

#include <korv_lib_yang.h>

#include "errors.h"

namespace korv_python {

/* The exception for a load that has just failed, with the reasons that the library gives. */
py::object LoadError(TELMYANG_LOCAL_DATA_S *local, const char *module, const char *revision);

} // namespace korv_python
