#include "failures.h"

#include "source.h"

namespace qxyang {

void Failures::Begin(std::string_view module) noexcept
{
    failures_.clear();
    count_ = 0;
    outOfMemory_ = false;
    wanted_[module.copy(wanted_.data(), wanted_.size() - 1)] = '\0';
}

void Failures::Add(Source &source, uint32_t offset, std::string_view sentence)
{
    ++count_;
    if (Full())
        return;
    Position position = source.Locate(offset);
    std::string text = source.Path();
    text.append(":").append(std::to_string(position.line)).append(":").append(std::to_string(position.column));
    text.append(": ").append(sentence);
    Record({source.Module(), source.Path(), position.line, position.column, std::move(text)});
}

void Failures::Add(std::string_view module, std::string_view sentence)
{
    ++count_;
    if (!Full())
        Record({std::string(module), {}, 0, 0, std::string(sentence)});
}

std::string Failures::FirstSince(Mark mark) const
{
    return mark.recorded < failures_.size() ? failures_[mark.recorded].text : "what is wrong was told before";
}

/* The same mistake met on two ways is told once. */
void Failures::Record(Failure failure)
{
    for (const Failure &known : failures_)
        if (known.text == failure.text)
            return;
    failures_.push_back(std::move(failure));
}

uint32_t Failures::Scan(QY_LOADFAIL_SCAN_PF callback, void *cookie) const
{
    auto orNull = [](const std::string &text) { return text.empty() ? nullptr : text.c_str(); };
    for (const Failure &failure : failures_) {
        uint32_t result = callback(failure.module.c_str(), orNull(failure.file), failure.line, failure.text.c_str(),
                                   failure.column, cookie);
        if (result != 0)
            return result;
    }
    return outOfMemory_ ? callback(wanted_.data(), nullptr, 0, "out of memory", 0, cookie) : 0;
}

} // namespace qxyang
