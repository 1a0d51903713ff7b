/* Compact syntax. */
#include <algorithm>

#include "convert/writers.h"

namespace inspect {
namespace {

size_t Width(const std::string &text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

class CompactWriter {
  public:
    Written Write(const Outline &outline)
    {
        WriteItems(outline, *this);
        out_ += '\n';
        return {std::move(out_), 0, std::move(begins_)};
    }

  private:
    template <class Writer>
    friend void inspect::WriteItems(const Outline &outline, Writer &writer);

    void NewLine(size_t level, bool withBlank = false)
    {
        if (!out_.empty())
            out_ += withBlank ? "\n\n" : "\n";
        out_.append(level * INDENT, ' ');
        inLineComment_ = false;
    }

    void CloseTo(size_t level)
    {
        while (depth_ > level) {
            NewLine(--depth_);
            out_ += '}';
        }
    }

    void Statement(const OutlineItem &item, bool hasBlock)
    {
        NewLine(item.level, item.blankBefore);
        begins_.push_back(out_.size());
        std::string name = item.Name();
        out_ += name;
        if (item.argument) {
            size_t column = item.level * INDENT + name.size() + 1;
            std::string argument = CompactArgument(item, column);
            bool isWord = argument.front() != '"' && argument.front() != '\'';
            if (isWord ||
                (column + Width(argument) + INDENT <= LINE_WIDTH && argument.find('\n') == std::string::npos)) {
                out_ += " " + argument;
            } else {
                NewLine(item.level + 1);
                out_ += CompactArgument(item, (item.level + 1) * INDENT);
            }
        }
        out_ += hasBlock ? " {" : ";";
        depth_ = item.level + (hasBlock ? 1 : 0);
    }

    void Comment(const OutlineItem &comment)
    {
        bool isOnSameLine = comment.onSameLine && !inLineComment_ && !out_.empty();
        if (isOnSameLine)
            out_ += ' ';
        else
            NewLine(comment.level, comment.blankBefore);
        bool needsLines = comment.argument->find("*/") != std::string::npos;
        if (!comment.endsWithLine && !needsLines) {
            out_ += "/*" + MovedComment(comment, comment.level * INDENT) + "*/";
            return;
        }
        for (const char c : "//" + *comment.argument) {
            out_ += c;
            if (c == '\n')
                out_.append(comment.level * INDENT, ' ').append("//");
        }
        inLineComment_ = true;
    }

    std::string out_;
    std::vector<size_t> begins_; /* of statements */
    size_t depth_ = 0;           /* open blocks */
    bool inLineComment_ = false; /* nothing else fits on the line */
};

} // namespace

Written WriteCompact(const Outline &outline)
{
    return CompactWriter().Write(outline);
}

} // namespace inspect
