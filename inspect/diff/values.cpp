#include "diff/values.h"

#include "base/text.h"

namespace inspect::diff {
namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

} // namespace

std::string ValueText(const Value &value)
{
    return std::visit(
        Overloaded{[](std::monostate) { return std::string(); }, [](const std::string &text) { return text; },
                   [](int64_t number) { return std::to_string(number); }, [](HexId id) { return Hex(id.number); },
                   [](const std::vector<uint32_t> &numbers) { return JoinNumbers(numbers, " "); }},
        value);
}

void WriteValue(JsonOut *out, const Value &value)
{
    std::visit(Overloaded{[out](std::monostate) { out->Null(); }, [out](const std::string &text) { out->Text(text); },
                          [out](int64_t number) { out->Value(number); }, [out](HexId id) { out->Value(id.number); },
                          [out](const std::vector<uint32_t> &numbers) { out->Numbers(numbers); }},
               value);
}

} // namespace inspect::diff
