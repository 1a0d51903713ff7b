#include "base/paint.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "base/text.h"

namespace inspect {
namespace {

constexpr const char *RESET = "\033[m";

const char *CodeOf(Tone tone)
{
    switch (tone) {
        case Tone::Name:
            return "\033[1m";
        case Tone::Id:
            return "\033[36m";
        case Tone::Key:
        case Tone::Warning:
            return "\033[33m";
        case Tone::Faint:
            return "\033[2m";
        case Tone::Good:
            return "\033[32m";
        case Tone::Bad:
            return "\033[1;31m";
        default:
            return "";
    }
}

bool IsSaid(const char *variable)
{
    const char *value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool TerminalHasColors()
{
    const char *terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && (terminal == nullptr || std::string_view(terminal) != "dumb");
}

} // namespace

Paint::Paint(const std::string &when)
    : isOn_(when == "always" || (when == "auto" && !IsSaid("NO_COLOR") && TerminalHasColors()))
{
}

std::string Paint::Text(Tone tone, std::string_view text) const
{
    if (!isOn_ || tone == Tone::Plain || text.empty())
        return std::string(text);
    return std::string(CodeOf(tone)).append(text).append(RESET);
}

void PaintedLine::Add(std::string_view text, Tone tone)
{
    size_t begin = std::min(text.find_first_not_of(' '), text.size());
    size_t end = text.find_last_not_of(' ') + 1;
    width_ += Characters(text);
    if (begin == text.size()) {
        blanks_ += text.size();
        return;
    }
    line_.append(blanks_ + begin, ' ').append(paint_.Text(tone, text.substr(begin, end - begin)));
    blanks_ = text.size() - end;
}

void PaintedLine::PadTo(size_t width)
{
    if (width <= width_)
        return;
    blanks_ += width - width_;
    width_ = width;
}

void PaintedLine::Print()
{
    line_ += '\n';
    std::fwrite(line_.data(), 1, line_.size(), stdout);
    line_.clear();
    width_ = 0;
    blanks_ = 0;
}

} // namespace inspect
