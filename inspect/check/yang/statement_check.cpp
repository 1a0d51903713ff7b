#include "check/yang/statement_check.h"

#include <algorithm>
#include <unordered_map>

#include "base/excerpt.h"

namespace inspect {
namespace {

QXYANG_ORIGIN_S OriginIn(const OwnFile &file, const QXYANG_STATEMENT_S &statement)
{
    return {file.file, file.path.c_str(), file.name.c_str(), statement.uiIndex, statement.stPlace};
}

/* The argument's first bytes as the file writes them, if it writes them as they are and on one line; else null. */
const char *WrittenPart(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement, size_t size)
{
    uint64_t fileSize = 0;
    const char *text = QXYANG_GetFileText(file, &fileSize);
    const QXYANG_PLACE_S &place = statement.stArgument;
    if (place.uiLine == 0 || uint64_t{place.uiOffset} + place.uiLength > fileSize)
        return nullptr;
    std::string_view written(text + place.uiOffset, place.uiLength);
    if (QXYANG_GetFileSyntax(file) == QXYANG_SYNTAX_COMPACT && !written.empty() &&
        (written.front() == '"' || written.front() == '\''))
        written.remove_prefix(1);
    std::string_view part = ArgumentOf(statement).substr(0, size);
    bool isPlain = written.starts_with(part) && part.find('\n') == std::string_view::npos;
    return isPlain ? written.data() + part.size() : nullptr;
}

using RuleTable = std::unordered_map<std::string_view, std::vector<KeywordRule>>;

const RuleTable &AllKeywordRules()
{
    static const RuleTable table = [] {
        RuleTable rules;
        for (std::span<const KeywordRule> group :
             {ORDER_RULES, FORM_RULES, TYPE_RULES, REFERENCE_RULES, EXPRESSION_RULES})
            for (const KeywordRule &rule : group)
                rules[rule.keyword].push_back(rule);
        return rules;
    }();
    return table;
}

} // namespace

std::string HeadText(const QXYANG_STATEMENT_S &statement)
{
    std::string text = statement.pcKeyword;
    return statement.pcArgument != nullptr ? text + " '" + Shortened(statement.pcArgument, MAX_SHOWN) + "'" : text;
}

void StatementCheck::Report(Rule rule, const std::string &text, const QXYANG_STATEMENT_S &statement)
{
    Finding finding = {rule, QY_MOD_GetModuleName(module_), {"", 0, 0, text}};
    PlaceAt(PlaceOf(*file_, statement), &finding);
    findings_.push_back(finding);
}

void StatementCheck::ReportIn(Rule rule, const std::string &text, const QXYANG_STATEMENT_S &statement, size_t offset)
{
    Report(rule, text, statement);
    const QXYANG_PLACE_S &place = statement.stArgument;
    const char *end = WrittenPart(file_->file, statement, offset);
    if (end == nullptr)
        end = WrittenPart(file_->file, statement, 0);
    if (end == nullptr)
        return;
    uint64_t size = 0;
    const char *begin = QXYANG_GetFileText(file_->file, &size) + place.uiOffset;
    auto characters =
        std::count_if(begin, end, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    findings_.back().cause.line = place.uiLine;
    findings_.back().cause.column = place.uiColumn + static_cast<uint32_t>(characters);
}

std::optional<Position> StatementCheck::PlaceOf(const OwnFile &file, const QXYANG_STATEMENT_S &statement)
{
    return places_->Of(OriginIn(file, statement));
}

std::string StatementCheck::SeeText(const OwnFile &file, const QXYANG_STATEMENT_S &statement)
{
    return inspect::SeeText(PlaceOf(file, statement), PlaceOf(*file_, StatementAt(file_->file, 0)));
}

std::vector<Finding> CheckYangStatements(QY_CTX *schema, QY_MOD *module, Places *places, NamespaceUses *uses)
{
    StatementCheck check(schema, module, places);
    const RuleTable &rules = AllKeywordRules();
    check.ForEachFile([&](const OwnFile &file) {
        ForEachStatement(file.file, [&](const QXYANG_STATEMENT_S &statement) {
            auto found = rules.find(statement.pcKeyword);
            if (found == rules.end())
                return;
            for (const KeywordRule &rule : found->second)
                rule.check(check, statement);
        });
    });
    CheckIncludes(check);
    CheckNamespace(check, uses);
    CheckLeafrefStatus(check);
    CheckExtensionPlaces(check);
    return check.TakeFindings();
}

} // namespace inspect
