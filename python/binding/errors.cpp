#include "errors.h"

#include <cstring>

namespace korv_python {

py::object ErrorClass(const char *name)
{
    return py::module_::import("korv.errors").attr(name);
}

void Raise(const char *name, const std::string &text)
{
    RaiseObject(ErrorClass(name)(Text(text.c_str())));
}

void RaiseObject(const py::object &error)
{
    PyErr_SetObject(py::type::of(error).ptr(), error.ptr());
    throw py::error_already_set();
}

py::str Text(const char *text)
{
    PyObject *made = PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(std::strlen(text)), "replace");
    if (made == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

py::object TextOrNone(const char *text)
{
    if (text == nullptr)
        return py::none();
    return Text(text);
}

const char *Name(const std::string &name)
{
    if (name.find('\0') != std::string::npos)
        throw py::value_error("embedded null character");
    return name.c_str();
}

} // namespace korv_python
