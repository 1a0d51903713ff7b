/* The extension module korv._korv: what its classes are is in korv/_korv.pyi. */
#include "korv_module.h"

PYBIND11_MODULE(_korv, korv)
{
    korv.attr("__version__") = KORV_LIB_YANG_VERSION;
    korv_python::DefineTree(&korv);
    korv_python::DefineModule(&korv);
    korv_python::DefineContext(&korv);
    for (const char *name : {"Augment", "Context", "Leaf", "Module", "Node", "Walk"})
        korv.attr(name).attr("__module__") = "korv"; /* where programs find them */
}
