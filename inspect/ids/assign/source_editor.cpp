#include "ids/assign/source_editor.h"

#include <algorithm>
#include <set>

#include "base/failure.h"
#include "ids/assign/statement_names.h"

namespace inspect::ids {
namespace {

std::string_view BytesOf(const QXYANG_FILE *file)
{
    uint64_t size = 0;
    const char *text = QXYANG_GetFileText(file, &size);
    return {text, static_cast<size_t>(size)};
}

bool IsBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/* The path without prefixes. */
std::string PlainPath(std::string_view path)
{
    std::string plain;
    for (size_t begin = 0; begin <= path.size();) {
        size_t end = std::min(path.find('/', begin), path.size());
        std::string_view step = path.substr(begin, end - begin);
        size_t colon = step.find(':');
        plain.append(plain.empty() ? "" : "/").append(colon == std::string_view::npos ? step : step.substr(colon + 1));
        begin = end + 1;
    }
    return plain;
}

} // namespace

SourceEditor::SourceEditor(const QXYANG_FILE *file, std::string shown)
    : file_(file),
      shown_(std::move(shown)),
      text_(BytesOf(file)),
      isCompact_(QXYANG_GetFileSyntax(file) == QXYANG_SYNTAX_COMPACT)
{
    QXYANG_STATEMENT_S root = StatementAt(file_, 0);
    if (root.uiFirstChild != QXYANG_NO_STATEMENT) {
        size_t first = StatementAt(file_, root.uiFirstChild).stPlace.uiOffset;
        if (text_.IsFirstOnLine(first) && !text_.Indent(first).empty())
            step_ = text_.Indent(first);
    }
    ChoosePrefix();
}

/* The prefix of the import that is there, else one that is free. */
void SourceEditor::ChoosePrefix()
{
    std::set<std::string> taken;
    QXYANG_STATEMENT_S root = StatementAt(file_, 0);
    ForEachIn(file_, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, "prefix") && statement.pcArgument != nullptr)
            taken.insert(statement.pcArgument);
        if (!IsYang(statement, "import") && !IsYang(statement, "belongs-to"))
            return;
        std::string prefix = ArgumentIn(file_, statement, "prefix");
        taken.insert(prefix);
        if (IsYang(statement, "import") && statement.pcArgument != nullptr &&
            std::string_view(statement.pcArgument) == EXTENSION_MODULE) {
            prefix_ = prefix;
            isImported_ = true;
        }
    });
    auto isFree = [&](const std::string &prefix) { return !taken.contains(prefix) && !IsBoundToAnother(prefix); };
    for (size_t number = 2; prefix_.empty() || (!isImported_ && !isFree(prefix_)); ++number)
        prefix_ = number == 2 ? EXTENSION_PREFIX : EXTENSION_PREFIX + std::to_string(number - 1);
}

/* Behind blanks and comments; `onLine`: up to the line's end at most. */
size_t SourceEditor::BehindBlanks(size_t offset, bool onLine) const
{
    for (;;) {
        char character = text_.At(offset);
        if (onLine && character == '\n')
            return offset;
        size_t behind = BehindComment(offset);
        if (IsBlank(character))
            offset = text_.Next(offset);
        else if (behind != offset)
            offset = behind;
        else
            return offset;
    }
}

/* Behind the comment that begins there; the same offset when none does. A comment of the compact syntax that ends with its line
 * leaves the line's end. */
size_t SourceEditor::BehindComment(size_t offset) const
{
    size_t at = offset;
    if (isCompact_ && text_.Has(offset, "//")) {
        while (at < text_.Size() && text_.At(at) != '\n')
            at = text_.Next(at);
        return at;
    }
    std::string_view end = isCompact_ ? "*/" : "-->";
    if (!text_.Has(offset, isCompact_ ? "/*" : "<!--"))
        return offset;
    while (at < text_.Size() && !text_.Has(at, end))
        at = text_.Next(at);
    for (size_t i = 0; i < end.size(); ++i)
        at = text_.Next(at);
    return std::min(at, text_.Size());
}

/* The begin of the line behind that of the offset, when only blanks and comments follow on this one; else the offset. */
size_t SourceEditor::LineBehind(size_t offset) const
{
    size_t end = BehindBlanks(offset, true);
    bool isOneLine = text_.LineBegin(end) == text_.LineBegin(offset);
    return isOneLine && text_.At(end) == '\n' ? text_.Next(end) : offset;
}

SourceEditor::Opening SourceEditor::OpeningOf(const QXYANG_STATEMENT_S &statement) const
{
    size_t at = statement.stPlace.uiOffset;
    char quote = '\0';
    if (!isCompact_) {
        for (; at < text_.Size() && (quote != '\0' || text_.At(at) != '>'); at = text_.Next(at)) {
            char character = text_.At(at);
            if (quote == '\0' && (character == '"' || character == '\''))
                quote = character;
            else if (character == quote)
                quote = '\0';
        }
        size_t before = text_.Before(at);
        if (text_.At(before) == '/')
            return {before, text_.Next(at) - before};
        return {text_.Next(at), 0};
    }
    at = size_t{statement.stArgument.uiOffset} + statement.stArgument.uiLength;
    while (text_.At(at = BehindBlanks(at, false)) == '+') { /* a further part of the argument */
        at = BehindBlanks(text_.Next(at), false);
        for (quote = text_.At(at), at = text_.Next(at); at < text_.Size() && text_.At(at) != quote; at = text_.Next(at))
            if (quote == '"' && text_.At(at) == '\\')
                at = text_.Next(at);
        at = text_.Next(at);
    }
    if (text_.At(at) == ';')
        return {at, text_.Next(at) - at};
    return {text_.Next(at), 0};
}

/* The name of the element that begins there. */
std::string SourceEditor::NameAt(size_t offset) const
{
    size_t begin = text_.Next(offset);
    size_t end = begin;
    while (end < text_.Size() && !IsBlank(text_.At(end)) && text_.At(end) != '/' && text_.At(end) != '>')
        end = text_.Next(end);
    return text_.Plain(begin, end);
}

std::string SourceEditor::ChildIndent(const QXYANG_STATEMENT_S &statement, size_t opening) const
{
    if (statement.uiFirstChild != QXYANG_NO_STATEMENT) {
        size_t first = StatementAt(file_, statement.uiFirstChild).stPlace.uiOffset;
        if (text_.IsFirstOnLine(first) && text_.LineBegin(first) != text_.LineBegin(opening))
            return text_.Indent(first);
    }
    return text_.Indent(statement.stPlace.uiOffset) + step_;
}

void SourceEditor::Render(const NewStatement &added, size_t level, Lines *lines) const
{
    bool hasBlock = added.field != 0;
    auto head = [this](const char *keyword, const std::string &argument, const char *end) {
        std::string name = prefix_ + ":" + keyword;
        if (isCompact_)
            return name + " " + argument + end;
        return "<" + name + " " + EXTENSION_ARGUMENT + "=\"" + argument + "\"" + end;
    };
    const char *end = isCompact_ ? ";" : "/>";
    lines->push_back({level, head(added.keyword, added.argument, !hasBlock ? end : isCompact_ ? " {" : ">")});
    if (!hasBlock)
        return;
    lines->push_back({level + 1, head(FIELD_ID, std::to_string(added.field), end)});
    lines->push_back({level, isCompact_ ? "}" : "</" + prefix_ + ":" + added.keyword + ">"});
}

/* `uses` is the name of the element around, whose prefix the new one takes. */
void SourceEditor::RenderRefine(const Refinement &refinement, const std::string &uses, Lines *lines) const
{
    size_t colon = uses.find(':');
    std::string name = (colon != std::string::npos ? uses.substr(0, colon + 1) : "") + "refine";
    if (isCompact_)
        lines->push_back({0, "refine \"" + refinement.path + "\" {"});
    else
        lines->push_back({0, "<" + name + " target-node=\"" + refinement.path + "\">"});
    for (const NewStatement &added : refinement.statements)
        Render(added, 1, lines);
    lines->push_back({0, isCompact_ ? "}" : "</" + name + ">"});
}

std::string SourceEditor::AsBlock(const Lines &lines, const std::string &indent) const
{
    std::string block;
    for (const Line &line : lines) {
        block += indent;
        for (size_t i = 0; i < line.level; ++i)
            block += step_;
        block += line.text + text_.LineBreak();
    }
    return block;
}

std::string SourceEditor::AsInline(const Lines &lines) const
{
    std::string text;
    for (const Line &line : lines)
        text += (isCompact_ ? " " : "") + line.text;
    return text;
}

void SourceEditor::Put(const QXYANG_STATEMENT_S &statement, const Lines &lines)
{
    if (lines.empty())
        return;
    Opening opening = OpeningOf(statement);
    std::string indent = ChildIndent(statement, opening.offset);
    if (opening.length != 0) {
        size_t begin = statement.stPlace.uiOffset;
        std::string name = isCompact_ ? "" : NameAt(begin);
        bool hasBlank = IsBlank(text_.At(text_.Before(opening.offset)));
        std::string open = isCompact_ ? (hasBlank ? "{" : " {") : ">";
        std::string close = isCompact_ ? "}" : "</" + name + ">";
        std::string block = AsBlock(lines, indent);
        edits_.push_back({opening.offset, opening.length,
                          text_.Encoded(open + text_.LineBreak() + block + text_.Indent(begin) + close)});
        return;
    }
    size_t line = LineBehind(opening.offset);
    if (line != opening.offset) {
        edits_.push_back({line, 0, text_.Encoded(AsBlock(lines, indent))});
        return;
    }
    std::string text = AsInline(lines);
    if (isCompact_ && !IsBlank(text_.At(opening.offset)))
        text += " ";
    edits_.push_back({opening.offset, 0, text_.Encoded(text)});
}

void SourceEditor::Insert(uint32_t statement, std::span<const NewStatement> added)
{
    Lines lines;
    for (const NewStatement &one : added)
        Render(one, 0, &lines);
    Put(StatementAt(file_, statement), lines);
}

void SourceEditor::Refine(uint32_t uses, const std::vector<Refinement> &refinements)
{
    QXYANG_STATEMENT_S around = StatementAt(file_, uses);
    std::map<std::string, uint32_t> known;
    ForEachIn(file_, around, [&known](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, "refine") && statement.pcArgument != nullptr)
            known.emplace(PlainPath(statement.pcArgument), statement.uiIndex);
    });
    std::string name = isCompact_ ? "" : NameAt(around.stPlace.uiOffset);
    Lines lines;
    for (const Refinement &refinement : refinements)
        if (auto found = known.find(refinement.path); found != known.end())
            Insert(found->second, refinement.statements);
        else
            RenderRefine(refinement, name, &lines);
    Put(around, lines);
}

/* Calls visit(namespace, offset) wherever the text seems to bind the prefix, be it in a comment. */
template <class Visit>
void SourceEditor::ForEachBinding(const std::string &prefix, Visit visit) const
{
    std::string name = "xmlns:" + prefix;
    std::string bytes = text_.Encoded(name);
    for (size_t found = text_.Bytes().find(bytes); found != std::string_view::npos;
         found = text_.Bytes().find(bytes, found + bytes.size())) {
        size_t at = BehindBlanks(found + bytes.size(), false);
        if (text_.At(at) != '=')
            continue;
        at = BehindBlanks(text_.Next(at), false);
        size_t begin = text_.Next(at);
        size_t end = begin;
        while (end < text_.Size() && text_.At(end) != text_.At(at))
            end = text_.Next(end);
        visit(text_.Plain(begin, end), found);
    }
}

bool SourceEditor::IsBoundToAnother(const std::string &prefix) const
{
    bool isBound = false;
    if (!isCompact_)
        ForEachBinding(prefix, [&](const std::string &name, size_t) { isBound |= name != EXTENSION_NAMESPACE; });
    return isBound;
}

/* True if the outermost element binds the prefix. */
bool SourceEditor::IsBound(const std::string &prefix) const
{
    size_t begin = StatementAt(file_, 0).stPlace.uiOffset;
    size_t end = OpeningOf(StatementAt(file_, 0)).offset;
    bool isBound = false;
    ForEachBinding(prefix, [&](const std::string &, size_t offset) { isBound |= offset > begin && offset < end; });
    return isBound;
}

/* Beside the other attributes of the outermost element, on a line of its own when the last one has one. */
void SourceEditor::AddNamespace()
{
    QXYANG_STATEMENT_S root = StatementAt(file_, 0);
    size_t end = text_.Before(OpeningOf(root).offset);
    while (IsBlank(text_.At(text_.Before(end))))
        end = text_.Before(end);
    bool isBelow = text_.LineBegin(end) != text_.LineBegin(root.stPlace.uiOffset);
    std::string gap = isBelow ? text_.LineBreak() + text_.Indent(end) : " ";
    edits_.push_back({end, 0, text_.Encoded(gap + "xmlns:" + prefix_ + "=\"" + EXTENSION_NAMESPACE + "\"")});
}

/* Behind the imports that are there, else behind the module's head. */
void SourceEditor::AddImport()
{
    static const std::set<std::string_view> HEAD = {"yang-version", "namespace", "prefix",
                                                    "belongs-to",   "import",    "include"};
    QXYANG_STATEMENT_S root = StatementAt(file_, 0);
    QXYANG_STATEMENT_S last = root;
    ForEachIn(file_, root, [&last](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcPrefix == nullptr && HEAD.contains(statement.pcKeyword))
            last = statement;
    });
    size_t begin = last.stPlace.uiOffset;
    std::string name = isCompact_ ? "" : NameAt(begin);
    size_t colon = name.find(':');
    std::string element = colon != std::string::npos ? name.substr(0, colon + 1) : "";
    Lines lines;
    if (isCompact_)
        lines = {{0, std::string("import ") + EXTENSION_MODULE + " {"}, {1, "prefix " + prefix_ + ";"}, {0, "}"}};
    else
        lines = {{0, "<" + element + "import module=\"" + EXTENSION_MODULE + "\">"},
                 {1, "<" + element + "prefix value=\"" + prefix_ + "\"/>"},
                 {0, "</" + element + "import>"}};
    size_t end = begin + last.stPlace.uiLength;
    size_t line = LineBehind(end);
    if (line != end && text_.IsFirstOnLine(begin))
        edits_.push_back({line, 0, text_.Encoded(AsBlock(lines, text_.Indent(begin)))});
    else
        edits_.push_back({end, 0, text_.Encoded(AsInline(lines))});
}

std::vector<Edit> SourceEditor::Finish()
{
    if (edits_.empty())
        return {};
    if (!isImported_)
        AddImport();
    if (!isCompact_ && !IsBound(prefix_))
        AddNamespace();
    if (IsBoundToAnother(prefix_))
        throw Failure(shown_ + ": the prefix '" + prefix_ + "' stands for another namespace than that of " +
                      EXTENSION_MODULE + ": nothing is written");
    std::stable_sort(edits_.begin(), edits_.end(),
                     [](const Edit &left, const Edit &right) { return left.offset < right.offset; });
    return std::move(edits_);
}

} // namespace inspect::ids
