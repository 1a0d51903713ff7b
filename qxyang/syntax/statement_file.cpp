#include "syntax/statement_file.h"

#include "base/text.h"
#include "syntax/compact_parser.h"

namespace qxyang {

namespace {

class ListSink final : public CompactSink {
  public:
    explicit ListSink(StatementList &list) : list_(list) {}

    void Start(const CompactStatement &statement) override
    {
        Reference reference = SplitReference(statement.keyword);
        bool hasPrefix = reference.name.size() < statement.keyword.size();
        QXYANG_STATEMENT_S &made =
            list_.Start(hasPrefix ? reference.prefix : std::string_view(), reference.name, statement.offset);
        if (statement.argument.data() != nullptr)
            list_.SetArgument(made, statement.argument, QXYANG_ARGUMENT_STRING, statement.argumentBegin,
                              statement.argumentEnd);
    }
    void Head(bool) override {}
    void End(uint32_t end) override { list_.End(end); }
    void OnComment(const CompactComment &comment) override
    {
        std::string_view text = comment.text.substr(2);
        if (comment.text[1] == '*')
            text.remove_suffix(2);
        list_.AddComment(text, comment.offset, comment.offset + static_cast<uint32_t>(comment.text.size()),
                         comment.isAlone);
    }
    void Fail(uint32_t offset, std::string_view sentence) override { list_.Fail(offset, sentence); }

  private:
    StatementList &list_;
};

} // namespace

QXYANG_STATEMENT_S *StatementList::Open()
{
    return open_.empty() ? nullptr : &file_.statements[open_.back()];
}

QXYANG_STATEMENT_S &StatementList::Start(std::string_view prefix, std::string_view keyword, uint32_t offset)
{
    if (file_.statements.size() == limits::LISTED_STATEMENTS) {
        Fail(offset, "the file has more than " + std::to_string(limits::LISTED_STATEMENTS) + " statements");
        throw LoadStopped{};
    }
    auto index = static_cast<uint32_t>(file_.statements.size());
    lastChild_.resize(open_.size() + 1, QXYANG_NO_STATEMENT);
    QXYANG_STATEMENT_S statement{};
    statement.pcPrefix = prefix.data() != nullptr ? file_.names.Keep(prefix) : nullptr;
    statement.pcKeyword = file_.names.Keep(keyword);
    statement.uiIndex = index;
    statement.uiParent = open_.empty() ? QXYANG_NO_STATEMENT : open_.back();
    statement.uiFirstChild = statement.uiNext = QXYANG_NO_STATEMENT;
    statement.uiLevel = static_cast<uint32_t>(open_.size());
    Position position = file_.source.Locate(offset);
    statement.stPlace = {position.line, position.column, offset, 0};
    file_.statements.push_back(statement);
    if (lastChild_.back() != QXYANG_NO_STATEMENT)
        file_.statements[lastChild_.back()].uiNext = index;
    else if (!open_.empty())
        file_.statements[open_.back()].uiFirstChild = index;
    lastChild_.back() = index;
    open_.push_back(index);
    return file_.statements.back();
}

const char *StatementList::KeepSpace(std::string_view space)
{
    auto known = spaces_.find(space);
    if (known == spaces_.end()) {
        const char *kept = file_.texts.Text(space);
        known = spaces_.emplace(kept, kept).first;
    }
    return known->second;
}

void StatementList::SetArgument(QXYANG_STATEMENT_S &statement, std::string_view argument, uint32_t form, uint32_t begin,
                                uint32_t end)
{
    statement.pcArgument = file_.names.Keep(argument);
    statement.uiArgumentForm = form;
    if (begin == 0)
        return;
    Position position = file_.source.Locate(begin);
    statement.stArgument = {position.line, position.column, begin, end - begin};
}

void StatementList::End(uint32_t end)
{
    QXYANG_STATEMENT_S &statement = file_.statements[open_.back()];
    statement.stPlace.uiLength = end - statement.stPlace.uiOffset;
    lastChild_.resize(open_.size());
    open_.pop_back();
}

void StatementList::AddComment(std::string_view text, uint32_t begin, uint32_t end, bool isAlone)
{
    if ((file_.options & QXYANG_OPTION_COMMENTS) != 0)
        file_.comments.push_back({file_.texts.Text(text), isAlone ? 1u : 0u, {0, 0, begin, end - begin}});
}

void StatementList::Finish()
{
    while (!open_.empty())
        End(static_cast<uint32_t>(file_.source.Text().size()));
    for (QXYANG_COMMENT_S &comment : file_.comments) {
        Position position = file_.source.Locate(comment.stPlace.uiOffset);
        comment.stPlace.uiLine = position.line;
        comment.stPlace.uiColumn = position.column;
    }
    if (!file_.statements.empty())
        BindModules();
}

std::string_view StatementList::ArgumentOfChild(uint32_t parent, std::string_view keyword) const
{
    const auto &all = file_.statements;
    for (uint32_t i = all[parent].uiFirstChild; i != QXYANG_NO_STATEMENT; i = all[i].uiNext)
        if (all[i].pcPrefix == nullptr && keyword == all[i].pcKeyword)
            return OrEmpty(all[i].pcArgument);
    return {};
}

/* In YIN the namespace decides, whatever the element's prefix is: RFC 7950, 13.1. The file alone tells the namespace of its
 * own module, and that of an import by the xmlns attribute with the import's prefix. */
void StatementList::BindModules()
{
    auto &all = file_.statements;
    bool isCompact = file_.source.IsCompact();
    std::map<std::string_view, const char *> modules; /* by prefix in compact syntax, by namespace in YIN */
    std::string_view ownSpace = ArgumentOfChild(0, "namespace");
    if (!isCompact && !ownSpace.empty())
        modules.emplace(ownSpace, all[0].pcArgument);
    auto bind = [&](std::string_view prefix, const char *module) {
        if (isCompact)
            modules.emplace(prefix, module);
        else if (auto space = declared_.find(prefix); space != declared_.end())
            modules.emplace(space->second, module);
    };
    for (uint32_t i = all[0].uiFirstChild; i != QXYANG_NO_STATEMENT; i = all[i].uiNext) {
        std::string_view keyword = all[i].pcKeyword;
        if (all[i].pcPrefix != nullptr || all[i].pcArgument == nullptr)
            continue;
        if (keyword == "import" || keyword == "belongs-to")
            bind(ArgumentOfChild(i, "prefix"), all[i].pcArgument);
        else if (keyword == "prefix" && (isCompact || ownSpace.empty()))
            bind(all[i].pcArgument, all[0].pcArgument);
    }
    for (QXYANG_STATEMENT_S &statement : all) {
        if (statement.pcPrefix == nullptr)
            continue;
        auto found = modules.find(isCompact ? statement.pcPrefix : statement.pcNamespace);
        statement.pcModule = found != modules.end() ? found->second : nullptr;
    }
}

void ReadStatements(QXYANG_FILE &file)
{
    StatementList list(file);
    try {
        if (file.source.IsCompact()) {
            ListSink sink(list);
            CompactParser(file.source, sink, (file.options & QXYANG_OPTION_COMMENTS) != 0).Run();
        } else {
            ReadYinStatements(file, list);
        }
    } catch (const LoadStopped &) {
        // As many failures as are recorded, or as many statements as are listed.
    }
    list.Finish();
}

} // namespace qxyang
