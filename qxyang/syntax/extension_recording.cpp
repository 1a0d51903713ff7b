/* The part of StatementRecorder that records extension statements: RFC 7950, 6.3.1, and 13.1 for YIN. */
#include <cstring>

#include "base/text.h"
#include "syntax/statement_recorder.h"

namespace qxyang {

void StatementRecorder::StartExtension(std::string_view space, std::string_view name, const char **attributes,
                                       uint32_t offset)
{
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    Frame &parent = frames_.back();
    parent.hasChild = true;
    Frame frame{.keyword = Kw::Instance, .offset = offset};
    frame.use = UseOf(space, name, parent, offset);
    if (IsInstanceKept(parent))
        SetAttribute(*RecordInstance(frame), attributes);
    textWanted_ = textWanted_ || frame.statement != nullptr;
    text_.clear();
    frames_.push_back(frame);
}

void StatementRecorder::StartCompactExtension(const CompactStatement &statement)
{
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    ExtensionUse *use = frames_.empty() ? nullptr : CompactUseOf(statement.keyword, statement.offset);
    if (use == nullptr)
        return SkipElement(
            statement.offset,
            "found " + Quoted(statement.keyword) + "; expected " +
                (frames_.empty() ? "'module' or 'submodule'" : "a statement, or a prefix, a colon and a statement"));
    Frame &parent = frames_.back();
    parent.hasChild = true;
    Frame frame{.keyword = Kw::Instance, .offset = statement.offset};
    frame.use = use;
    if (IsInstanceKept(parent)) {
        ExtensionStatement *record = RecordInstance(frame);
        if (statement.argument.data() != nullptr)
            record->argument = names_.Keep(statement.argument);
    }
    frames_.push_back(frame);
}

void StatementRecorder::SkipElement(uint32_t offset, std::string_view sentence)
{
    if (skipped_++ == 0)
        Fail(offset, sentence);
}

bool StatementRecorder::IsInstanceKept(const Frame &parent) const
{
    return parent.statement != nullptr && (parent.keyword == Kw::Instance || KeywordOf(parent.keyword).IsKept());
}

ExtensionStatement *StatementRecorder::RecordInstance(Frame &frame)
{
    CountStatement(frame.offset);
    auto *statement = unit_.statements.Make<ExtensionStatement>();
    statement->keyword = Kw::Instance;
    statement->offset = frame.offset;
    statement->use = frame.use;
    frame.statement = statement;
    frame.tail = &statement->first;
    Link(frame);
    return statement;
}

/* Keeps the only attribute: it must be the argument, whose name is known once the extension is found. */
void StatementRecorder::SetAttribute(ExtensionStatement &statement, const char **attributes)
{
    for (; attributes[0] != nullptr; attributes += 2) {
        if (std::strchr(attributes[0], NAMESPACE_SEPARATOR) != nullptr)
            continue;
        if (statement.attribute != nullptr)
            Fail(statement.offset, "extension statement " + Quoted(statement.use->keyword) +
                                       " has more than one attribute; its argument is one");
        statement.attribute = KeptAttribute(*statement.use, attributes[0]);
        statement.argument = names_.Keep(attributes[1]);
    }
}

/* Nearly always all statements with a keyword have the same attribute. */
const char *StatementRecorder::KeptAttribute(ExtensionUse &use, const char *name)
{
    if (use.attribute == nullptr)
        use.attribute = unit_.statements.Text(name);
    return std::strcmp(use.attribute, name) == 0 ? use.attribute : unit_.statements.Text(name);
}

ExtensionUse *StatementRecorder::UseOf(std::string_view space, std::string_view name, const Frame &parent,
                                       uint32_t offset)
{
    // Both stand in one text, with the separator in between.
    std::string_view key(space.data(), space.size() + 1 + name.size());
    bool isWithin = parent.use != nullptr && parent.use->space == space;
    if (isWithin) {
        key_.assign(parent.use->keyword).append(1, NAMESPACE_SEPARATOR).append(key);
        key = key_;
    }
    if (ExtensionUse *known = unit_.extensionUses.Find(key))
        return known;
    auto *use = unit_.statements.Make<ExtensionUse>();
    use->name = unit_.statements.Text(key);
    use->keyword = use->name + key.size() - name.size();
    use->space = std::string_view(use->keyword - 1 - space.size(), space.size());
    use->above = isWithin ? parent.use : nullptr;
    use->offset = offset;
    unit_.extensionUses.Insert(use);
    return use;
}

/* The use of a keyword with a prefix; null: that is no such keyword. */
ExtensionUse *StatementRecorder::CompactUseOf(std::string_view keyword, uint32_t offset)
{
    if (ExtensionUse *known = unit_.extensionUses.Find(keyword))
        return known;
    if (!IsReference(keyword))
        return nullptr;
    auto *use = unit_.statements.Make<ExtensionUse>();
    use->name = unit_.statements.Text(keyword);
    Reference reference = SplitReference({use->name, keyword.size()});
    use->keyword = reference.name.data();
    use->prefix = reference.prefix;
    use->offset = offset;
    unit_.extensionUses.Insert(use);
    return use;
}

/* Keeps the text of an element without attribute and child: it may be the argument of the extension statement
 * around. */
void StatementRecorder::EndExtension(const Frame &frame)
{
    if (frame.statement == nullptr || unit_.source.IsCompact())
        return;
    if (!frame.hasChild && frame.statement->argument == nullptr) {
        frame.statement->argument = names_.Keep(Trim(text_));
        frame.statement->properties |= HAS_TEXT;
    }
    textWanted_ = frames_[frames_.size() - 2].keyword == Kw::Instance;
}

} // namespace qxyang
