#include "expansion.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace fuzz {
namespace {

constexpr size_t STATEMENTS = 16000;
constexpr size_t BYTES = size_t{1} << 20; /* of arguments */
constexpr size_t DEPTH = 1500;
constexpr size_t REPETITIONS = 4000;
constexpr size_t LETTERS = 4000;

struct Frame {
    size_t index;
    size_t count;
    const Frame *outer;
};

/* What stands between braces: "*300", "i", "d+1", "i+1%", "j". */
std::optional<std::string> Placeholder(const std::string &text, const Frame *frame)
{
    if (text.empty())
        return std::nullopt;
    if (text[0] == '*')
        return std::string(Count(text.substr(1), LETTERS), 'x');
    if (text[0] == 'j' && frame != nullptr)
        frame = frame->outer;
    if (frame == nullptr || (text[0] != 'i' && text[0] != 'j' && text[0] != 'd'))
        return std::nullopt;
    long value = static_cast<long>(text[0] == 'd' ? frame->count - 1 - frame->index : frame->index);
    if (text.size() > 1 && (text[1] == '+' || text[1] == '-')) {
        const long offset = static_cast<long>(Count(text.substr(2), REPETITIONS));
        value += text[1] == '+' ? offset : -offset;
    }
    if (text.back() == '%')
        value = (value + static_cast<long>(frame->count)) % static_cast<long>(frame->count);
    return std::to_string(value);
}

std::string Substituted(const std::string &text, const Frame *frame)
{
    std::string out;
    size_t at = 0;
    for (size_t open = text.find('{'); open != std::string::npos; open = text.find('{', at)) {
        const size_t close = text.find('}', open);
        if (close == std::string::npos)
            break;
        const auto value = Placeholder(text.substr(open + 1, close - open - 1), frame);
        out.append(text, at, open - at);
        at = value ? close + 1 : open + 1;
        out += value.value_or("{");
    }
    return out.append(text, at);
}

class Expander {
  public:
    void Add(const Statement &statement, const Frame *frame, size_t depth, Statement *parent)
    {
        if (statement.keyword == "%repeat")
            Repeat(statement, frame, depth, parent);
        else if (statement.keyword == "%nest")
            Nest(statement, frame, depth, parent);
        else if (statement.keyword.front() != '#' && depth < DEPTH)
            Copy(statement, frame, depth, parent);
    }

  private:
    void AddAll(const Statement &from, size_t first, const Frame *frame, size_t depth, Statement *parent)
    {
        for (size_t i = first; i < from.children.size() && m_statements < STATEMENTS; ++i)
            Add(from.children[i], frame, depth, parent);
    }

    void Copy(const Statement &statement, const Frame *frame, size_t depth, Statement *parent)
    {
        std::string argument = Substituted(statement.argument, frame);
        m_bytes += argument.size();
        if (++m_statements > STATEMENTS || m_bytes > BYTES)
            return;
        parent->children.push_back({statement.keyword, std::move(argument), {}});
        AddAll(statement, 0, frame, depth + 1, &parent->children.back());
    }

    void Repeat(const Statement &statement, const Frame *outer, size_t depth, Statement *parent)
    {
        const size_t count = Count(statement.argument, REPETITIONS);
        for (size_t i = 0; i < count && m_statements < STATEMENTS && m_bytes < BYTES; ++i) {
            const Frame frame = {i, count, outer};
            AddAll(statement, 0, &frame, depth, parent);
        }
    }

    void Nest(const Statement &statement, const Frame *outer, size_t depth, Statement *parent)
    {
        const size_t count = Count(statement.argument, REPETITIONS);
        Frame frame = {0, count, outer};
        for (size_t i = 0; i < count && !statement.children.empty(); ++i) {
            frame.index = i;
            const size_t before = parent->children.size();
            Add(statement.children[0], &frame, depth + i, parent);
            if (parent->children.size() == before)
                break;
            parent = &parent->children.back();
        }
        AddAll(statement, 1, &frame, depth + count, parent);
    }

    size_t m_statements = 0;
    size_t m_bytes = 0;
};

} // namespace

Statement Expand(const Statement &root)
{
    Statement expanded;
    Expander expander;
    for (const Statement &statement : root.children)
        expander.Add(statement, nullptr, 0, &expanded);
    return expanded;
}

size_t Count(const std::string &text, size_t most)
{
    return std::min<size_t>(std::strtoul(text.c_str(), nullptr, 10), most);
}

} // namespace fuzz
