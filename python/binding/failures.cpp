#include "failures.h"

#include <exception>
#include <new>

namespace korv_python {
namespace {

py::object FileOrNone(const char *file)
{
    if (file == nullptr)
        return py::none();
    PyObject *name = PyUnicode_DecodeFSDefault(file);
    if (name == nullptr)
        throw py::error_already_set();
    return py::reinterpret_steal<py::object>(name);
}

py::object Failure(const YANGLIB_LOAD_FAILURE_S &failure)
{
    using namespace py::literals;
    return ErrorClass("Failure")(
        "refused_by"_a = failure.uiRefusedBy == YANGLIB_REFUSED_BY_SCHEMA ? "schema" : "library",
        "module"_a = Text(failure.pcModule), "file"_a = FileOrNone(failure.pcFile), "line"_a = failure.uiLine,
        "column"_a = failure.uiColumn, "text"_a = Text(failure.pcText), "sentence"_a = Text(failure.pcSentence),
        "class_path"_a = TextOrNone(failure.pcClassPath), "leaf"_a = TextOrNone(failure.pcLeaf),
        "statement"_a = TextOrNone(failure.pcStatement), "argument"_a = TextOrNone(failure.pcArgument));
}

/* What the callback makes, and what it could not make: no exception may go through the library. */
struct Reasons {
    py::list failures;
    std::exception_ptr error;
};

uint32_t Add(const YANGLIB_LOAD_FAILURE_S *failure, void *cookie)
{
    auto *reasons = static_cast<Reasons *>(cookie);
    try {
        reasons->failures.append(Failure(*failure));
        return 0;
    } catch (...) {
        reasons->error = std::current_exception();
        return 1;
    }
}

} // namespace

py::object LoadError(TELMYANG_LOCAL_DATA_S *local, const char *module, const char *revision)
{
    Reasons reasons;
    uint32_t result = YANGLIB_ScanLoadFailures(local, module, revision, Add, &reasons);
    if (reasons.error)
        std::rethrow_exception(reasons.error);
    if (result == KORV_NO_MEMORY)
        throw std::bad_alloc();
    return ErrorClass("LoadError")(Text(module), reasons.failures);
}

} // namespace korv_python
