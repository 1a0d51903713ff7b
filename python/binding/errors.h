#pragma once

#include <pybind11/pybind11.h>

#include <string>

/* The exceptions of korv/errors.py, raised from C++. */
namespace korv_python {

namespace py = pybind11;

/* A class of korv.errors. */
py::object ErrorClass(const char *name);

[[noreturn]] void Raise(const char *name, const std::string &text);
/* Raises what the class makes of the arguments. */
[[noreturn]] void RaiseObject(const py::object &error);

/* A text of the library, whatever bytes a model brought into it. */
py::str Text(const char *text);
/* The same, or None for null. */
py::object TextOrNone(const char *text);
/* A name as the library takes it: without zeros, which would end it early. */
const char *Name(const std::string &name);

} // namespace korv_python
