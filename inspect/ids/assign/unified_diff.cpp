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

/* Goes through the old text once, from span to span. */
class Hunks {
  public:
    Hunks(std::string_view text, FILE *out) : text_(text), out_(out) {}

    void Write(const std::vector<Span> &spans)
    {
        for (size_t i = 0; i < spans.size(); ++i) {
            Begin(spans[i].begin);
            Change(spans[i]);
            for (; i + 1 < spans.size() && IsNear(spans[i + 1].begin); ++i) {
                CopyTo(spans[i + 1].begin);
                Change(spans[i + 1]);
            }
            for (size_t line = 0; line < CONTEXT && at_ < text_.size(); ++line)
                CopyTo(LineEnd(text_, at_));
            Finish();
        }
    }

  private:
    /* Up to the lines in front of an offset. */
    void Begin(size_t offset)
    {
        size_t begin = offset;
        for (size_t line = 0; line < CONTEXT && begin > at_; ++line)
            begin = LineBegin(text_, begin - 1);
        for (; at_ < begin; at_ = LineEnd(text_, at_))
            ++line_;
        first_ = line_;
        CopyTo(offset);
    }

    /* True if the context of a change at the offset would meet that of the latest one. */
    bool IsNear(size_t offset) const
    {
        size_t end = at_;
        for (size_t line = 0; line < 2 * CONTEXT && end < text_.size(); ++line)
            end = LineEnd(text_, end);
        return offset <= end;
    }

    size_t Add(char mark, std::string_view lines)
    {
        size_t count = 0;
        for (size_t begin = 0; begin < lines.size(); ++count) {
            size_t end = LineEnd(lines, begin);
            body_ += mark;
            body_.append(lines.substr(begin, end - begin));
            if (!body_.ends_with('\n'))
                body_.append("\n\\ No newline at end of file\n");
            begin = end;
        }
        return count;
    }

    void CopyTo(size_t offset)
    {
        size_t count = Add(' ', text_.substr(at_, offset - at_));
        old_ += count;
        new_ += count;
        at_ = offset;
    }

    void Change(const Span &span)
    {
        old_ += Add('-', text_.substr(span.begin, span.end - span.begin));
        new_ += Add('+', span.text);
        at_ = span.end;
    }

    void Finish()
    {
        auto range = [](size_t begin, size_t count) {
            return std::to_string(count == 0 ? begin : begin + 1) + "," + std::to_string(count);
        };
        body_.insert(0, "@@ -" + range(first_, old_) + " +" + range(first_ + shift_, new_) + " @@\n");
        std::fwrite(body_.data(), 1, body_.size(), out_);
        line_ += old_;
        shift_ += new_ - old_;
        old_ = new_ = 0;
        body_.clear();
    }

    std::string_view text_;
    FILE *out_;
    size_t at_ = 0;    /* the next old line's begin */
    size_t line_ = 0;  /* lines in front of this hunk, and then in front of `at_` */
    size_t first_ = 0; /* lines in front of this hunk */
    size_t old_ = 0;   /* lines of this hunk */
    size_t new_ = 0;
    size_t shift_ = 0; /* new lines so far */
    std::string body_;
};

} // namespace

void WriteUnifiedDiff(const FileChange &change, FILE *out)
{
    std::fprintf(out, "--- %s\n+++ %s\n", change.shown.c_str(), change.shown.c_str());
    if (SourceText(change.before).IsWide())
        std::fputs("(in UTF-16: not shown)\n", out);
    else
        Hunks(change.before, out).Write(SpansOf(change));
}

} // namespace inspect::ids
