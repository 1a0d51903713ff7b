#include "base/progress.h"

#include <unistd.h>

#include <cstdio>

#include "base/text.h"

namespace inspect {
namespace {

constexpr std::chrono::seconds QUIET(1);
constexpr const char *ERASE = "\r\033[K";

} // namespace

Progress::Progress() : isTerminal_(isatty(STDERR_FILENO) == 1) {}

void Progress::Show(size_t number, size_t total, const std::string &what)
{
    if (total < 2 || !isTerminal_ || std::chrono::steady_clock::now() - begin_ < QUIET)
        return;
    std::fprintf(stderr, "%s[%zu/%zu] %s", ERASE, number, total, Printable(what).c_str());
    isShown_ = true;
}

void Progress::Clear()
{
    if (isShown_)
        std::fputs(ERASE, stderr);
    isShown_ = false;
}

} // namespace inspect
