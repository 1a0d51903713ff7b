#include "files/failures.h"

#include <algorithm>
#include <utility>

#include "base/schema_limits.h"
#include "files/source.h"

namespace qxyang {

void Failures::Begin(std::string_view module) noexcept
{
    failures_.clear();
    count_ = 0;
    names = {};
    outOfMemory_ = false;
    wanted_[module.copy(wanted_.data(), wanted_.size() - 1)] = '\0';
}

size_t Failure::PlaceLength() const
{
    return file.empty() ? 0 : file.size() + std::to_string(line).size() + std::to_string(column).size() + 4;
}

bool Failure::Says(std::string_view sentence) const
{
    std::string_view rest = std::string_view(text).substr(PlaceLength());
    if (!rest.starts_with(sentence))
        return false;
    rest.remove_prefix(sentence.size());
    return rest.empty() || rest.starts_with(HINT);
}

/* A mistake that is met twice, in two copies of a grouping for example, is recorded once. */
bool Failures::IsKnown(const Source &source, uint32_t offset, std::string_view sentence) const
{
    return std::any_of(failures_.begin(), failures_.end(), [&](const Failure &known) {
        return known.offset == offset && known.file == source.Path() && known.Says(sentence);
    });
}

void Failures::Add(Source &source, uint32_t offset, std::string_view sentence)
{
    if (IsKnown(source, offset, sentence))
        return Count();
    Position position = source.Locate(offset);
    std::string text = source.Path();
    text.append(":").append(std::to_string(position.line)).append(":").append(std::to_string(position.column));
    text.append(": ").append(sentence);
    Record({source.Module(), source.Path(), position.line, position.column, std::move(text), offset});
}

void Failures::Add(std::string_view module, std::string_view sentence)
{
    for (const Failure &known : failures_)
        if (known.text == sentence)
            return Count();
    Record({std::string(module), {}, 0, 0, std::string(sentence), 0});
}

void Failures::Count()
{
    if (++count_ > limits::FAILURES_MET)
        throw LoadStopped{};
}

void Failures::Record(Failure failure)
{
    failures_.push_back(std::move(failure));
    Count();
    if (failures_.size() >= limits::FAILURES)
        throw LoadStopped{};
}

std::string Failures::FirstSince(Mark mark) const
{
    return mark.recorded < failures_.size() ? failures_[mark.recorded].text : "what is wrong was told before";
}

uint32_t Failures::ScanRecords(QXYANG_FAILURE_PF callback, void *cookie) const
{
    auto orNull = [](const std::string &text) { return text.empty() ? nullptr : text.c_str(); };
    for (const Failure &failure : failures_) {
        QXYANG_FAILURE_S record = {orNull(failure.module), orNull(failure.file),
                                   failure.line,           failure.column,
                                   failure.text.c_str(),   failure.text.c_str() + failure.PlaceLength()};
        if (uint32_t result = callback(&record, cookie); result != 0)
            return result;
    }
    QXYANG_FAILURE_S record = {wanted_.data(), nullptr, 0, 0, "out of memory", "out of memory"};
    return outOfMemory_ ? callback(&record, cookie) : 0;
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
