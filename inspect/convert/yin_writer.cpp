/* YIN. */
#include <string_view>

#include "convert/writers.h"

namespace inspect {
namespace {

constexpr const char *YIN_NAMESPACE = "urn:ietf:params:xml:ns:yang:yin:1";

std::string Escaped(std::string_view text, bool inAttribute)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text)
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '\r')
            out += "&#13;";
        else if (inAttribute && c == '"')
            out += "&quot;";
        else if (inAttribute && c == '\n')
            out += "&#10;";
        else if (inAttribute && c == '\t')
            out += "&#9;";
        else
            out += c;
    return out;
}

class YinWriter {
  public:
    explicit YinWriter(const Namespaces &namespaces) : namespaces_(namespaces) {}

    Written Write(const Outline &outline)
    {
        written_.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
        WriteItems(outline, *this);
        written_.text += '\n';
        return std::move(written_);
    }

  private:
    template <class Writer>
    friend void inspect::WriteItems(const Outline &outline, Writer &writer);

    void NewLine(size_t level, bool withBlank = false)
    {
        written_.text += withBlank ? "\n\n" : "\n";
        written_.text.append(level * INDENT, ' ');
    }

    void CloseTo(size_t level)
    {
        while (open_.size() > level) {
            NewLine(open_.size() - 1);
            written_.text += "</" + open_.back() + ">";
            open_.pop_back();
        }
    }

    void Statement(const OutlineItem &item, bool hasBlock)
    {
        NewLine(item.level, item.blankBefore);
        written_.begins.push_back(written_.text.size());
        std::string name = item.Name();
        written_.text += "<" + name;
        if (item.argument && !item.inElement)
            written_.text += " " + item.argumentName + "=\"" + Escaped(*item.argument, true) + "\"";
        if (item.level == 0)
            DeclareNamespaces(name.size() + INDENT);
        bool hasElement = item.argument && item.inElement;
        written_.text += hasBlock || hasElement ? ">" : "/>";
        if (hasBlock || hasElement)
            open_.push_back(name);
        if (!hasElement)
            return;
        std::string element = (item.prefix.empty() ? "" : item.prefix + ":") + item.argumentName;
        NewLine(item.level + 1);
        written_.text += "<" + element + ">" + Escaped(*item.argument, false) + "</" + element + ">";
    }

    void DeclareNamespaces(size_t indent)
    {
        std::string lineBreak = "\n" + std::string(indent, ' ');
        written_.text += lineBreak + "xmlns=\"" + YIN_NAMESPACE + "\"";
        for (const auto &[prefix, space] : namespaces_)
            written_.text.append(lineBreak)
                .append("xmlns:")
                .append(prefix)
                .append("=\"")
                .append(Escaped(space, true))
                .append("\"");
    }

    /* XML has no comment with two hyphens in a row. */
    void Comment(const OutlineItem &comment)
    {
        std::string text = MovedComment(comment, comment.level * INDENT);
        if (text.find("--") != std::string::npos || text.ends_with('-')) {
            ++written_.lostComments;
            return;
        }
        if (comment.onSameLine)
            written_.text += ' ';
        else
            NewLine(comment.level, comment.blankBefore);
        written_.text += "<!--" + text + (comment.endsWithLine ? " " : "") + "-->";
    }

    const Namespaces &namespaces_;
    Written written_;
    std::vector<std::string> open_; /* elements that are open */
};

} // namespace

Written WriteYin(const Outline &outline, const Namespaces &namespaces)
{
    return YinWriter(namespaces).Write(outline);
}

} // namespace inspect
