#include "lines.h"

#include <new>
#include <utility>

#include "errors.h"

namespace korv_python {
namespace {

constexpr uint32_t ERROR_LEVEL = 0;
constexpr uint32_t PROGRESS_LEVEL = 2;

/* Levels of the module logging. */
constexpr int LOGGING_DEBUG = 10;
constexpr int LOGGING_INFO = 20;
constexpr int LOGGING_ERROR = 40;

py::object Logger()
{
    return py::module_::import("logging").attr("getLogger")("korv");
}

} // namespace

std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> Lines::Hooks() const
{
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> hooks = {};
    for (uint32_t level = 0; level < hooks.size(); ++level)
        hooks[level] = {level, Print, IsOpen};
    return hooks;
}

void Lines::Listen()
{
    lines_.clear();
    py::object isEnabledFor = Logger().attr("isEnabledFor");
    open_[ERROR_LEVEL] = py::cast<bool>(isEnabledFor(LOGGING_ERROR));
    open_[PROGRESS_LEVEL] = py::cast<bool>(isEnabledFor(LOGGING_DEBUG));
}

void Lines::Tell(bool failed)
{
    open_ = {};
    std::vector<Line> lines = std::exchange(lines_, {});
    if (lines.empty())
        return;
    py::object log = Logger().attr("log");
    int errorLevel = failed ? LOGGING_ERROR : LOGGING_INFO;
    for (const Line &line : lines)
        log(line.level == ERROR_LEVEL ? errorLevel : LOGGING_DEBUG, "%s", Text(line.text.c_str()));
}

void Lines::Print(uint64_t lines, uint32_t level, const char *, const char *text)
{
    try {
        reinterpret_cast<Lines *>(lines)->lines_.push_back({level, text});
    } catch (const std::bad_alloc &) {
        /* a line less; nothing may be thrown through the library */
    }
}

uint32_t Lines::IsOpen(uint64_t lines, uint32_t level)
{
    return level < KORV_LOG_LEVEL_NUM && reinterpret_cast<Lines *>(lines)->open_[level];
}

} // namespace korv_python
