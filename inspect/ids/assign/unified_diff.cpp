#include "ids/assign/unified_diff.h"

#include <algorithm>
#include <string_view>

namespace inspect::ids {
namespace {

constexpr size_t CONTEXT = 3;

/* Old lines, and the text in their place. */
struct Span {
    size_t begin; /* offset of the first line */
    size_t end;   /* behind the last one; the same as begin: new lines alone */
    std::string text;
};

size_t LineBegin(std::string_view text, size_t offset)
{
    size_t end = offset == 0 ? std::string_view::npos : text.rfind('\n', offset - 1);
    return end == std::string_view::npos ? 0 : end + 1;
}

size_t LineEnd(std::string_view text, size_t offset)
{
    size_t end = text.find('\n', offset);
    return end == std::string_view::npos ? text.size() : end + 1;
}

std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = LineEnd(text, begin);
        lines.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

std::vector<Span> SpansOf(const FileChange &change)
{
    std::string_view text = change.before;
    std::vector<Span> spans;
    size_t at = 0; /* in the old text: up to where the latest span has its new text */
    for (const Edit &edit : change.edits) {
        bool isNewLines = edit.length == 0 && LineBegin(text, edit.offset) == edit.offset && edit.text.ends_with('\n');
        size_t begin = LineBegin(text, edit.offset);
        size_t end = isNewLines ? begin : LineEnd(text, edit.offset + edit.length);
        if (spans.empty() || begin > spans.back().end || (begin == spans.back().end && isNewLines && begin == at)) {
            if (!spans.empty())
                spans.back().text.append(text.substr(at, spans.back().end - at));
            spans.push_back({begin, end, ""});
            at = begin;
        }
        Span *last = &spans.back();
        last->text.append(text.substr(at, edit.offset - at)).append(edit.text);
        at = edit.offset + edit.length;
        last->end = std::max(last->end, end);
    }
    if (!spans.empty())
        spans.back().text.append(text.substr(at, spans.back().end - at));
    return spans;
}

void Add(char mark, std::string_view lines, std::string *out)
{
    for (std::string_view line : LinesOf(lines)) {
        *out += mark;
        out->append(line);
        if (!line.ends_with('\n'))
            out->append("\n\\ No newline at end of file\n");
    }
}

class Hunks {
  public:
    explicit Hunks(std::string_view text) : lines_(LinesOf(text)) {}

    std::string Write(const std::vector<Span> &spans)
    {
        for (size_t i = 0; i < spans.size();) {
            size_t last = i;
            Locate(spans[i]);
            size_t first = begin_ > CONTEXT ? begin_ - CONTEXT : 0;
            at_ = first;
            for (;; ++last) {
                Copy(begin_);
                Change(spans[last]);
                if (last + 1 == spans.size())
                    break;
                Locate(spans[last + 1]);
                if (begin_ > at_ + 2 * CONTEXT)
                    break;
            }
            Copy(std::min(at_ + CONTEXT, lines_.size()));
            Finish(first);
            i = last + 1;
        }
        return out_;
    }

  private:
    void Locate(const Span &span)
    {
        while (offset_ < span.begin)
            offset_ += lines_[located_++].size();
        begin_ = located_;
    }

    void Copy(size_t end)
    {
        for (; at_ < end; ++at_) {
            Add(' ', lines_[at_], &body_);
            ++old_;
            ++new_;
        }
    }

    void Change(const Span &span)
    {
        for (size_t size = span.begin; size < span.end; size += lines_[at_ - 1].size(), ++old_)
            Add('-', lines_[at_++], &body_);
        Add('+', span.text, &body_);
        new_ += LinesOf(span.text).size();
    }

    void Finish(size_t first)
    {
        auto range = [](size_t begin, size_t count) {
            return std::to_string(count == 0 ? begin : begin + 1) + "," + std::to_string(count);
        };
        out_ += "@@ -" + range(first, old_) + " +" + range(first + shift_, new_) + " @@\n" + body_;
        shift_ += new_ - old_;
        old_ = new_ = 0;
        body_.clear();
    }

    std::vector<std::string_view> lines_;
    size_t offset_ = 0; /* of the line `located_` */
    size_t located_ = 0;
    size_t begin_ = 0; /* line of the span that was located last */
    size_t at_ = 0;    /* the next old line */
    size_t old_ = 0;   /* lines of this hunk */
    size_t new_ = 0;
    size_t shift_ = 0; /* new lines so far */
    std::string body_;
    std::string out_;
};

} // namespace

std::string UnifiedDiff(const FileChange &change)
{
    std::string head = "--- " + change.shown + "\n+++ " + change.shown + "\n";
    if (SourceText(change.before).IsWide())
        return head + "(in UTF-16: not shown)\n";
    return head + Hunks(change.before).Write(SpansOf(change));
}

} // namespace inspect::ids
