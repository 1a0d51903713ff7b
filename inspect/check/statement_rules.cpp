#include "check/statement_rules.h"

#include <algorithm>
#include <new>
#include <set>
#include <string_view>
#include <utility>

#include "base/numbers.h"
#include "check/class_schema.h"
#include "check/number_faults.h"
#include "check/statement_words.h"
#include "model/module_search.h"
#include "model/statements.h"

namespace inspect {
namespace {

bool ImportsExtensions(const QXYANG_ORIGIN_S &module)
{
    bool imports = false;
    ForEachIn(module.pstFile, StatementAt(module.pstFile, module.uiStatement),
              [&imports](const QXYANG_STATEMENT_S &statement) {
                  imports |=
                      IsYang(statement, "import") && statement.pcArgument == std::string_view(EXTENSION_MODULE_NAME);
              });
    return imports;
}

/* True of a statement by which a refine or deviate takes back what a node has. */
bool TakesBack(const Extension &extension)
{
    const QXYANG_FILE *file = extension.origin.pstFile;
    if (file == nullptr)
        return false;
    uint32_t around = StatementAt(file, extension.origin.uiStatement).uiParent;
    if (around == QXYANG_NO_STATEMENT)
        return false;
    QXYANG_STATEMENT_S statement = StatementAt(file, around);
    return IsYang(statement, "refine") || IsYang(statement, "deviate");
}

/* True of the statements that make classes and attributes. */
bool MakesClass(const QXYANG_STATEMENT_S &statement)
{
    std::string_view keyword = statement.pcKeyword;
    return statement.pcPrefix != nullptr && statement.pcModule != nullptr &&
           statement.pcModule == std::string_view(EXTENSION_MODULE_NAME) &&
           (keyword == "class-id" || keyword == "field-id");
}

} // namespace

Finding StatementRules::FindingAt(Rule rule, const std::string &text, const std::optional<Position> &position) const
{
    Finding finding = {rule, QY_MOD_GetModuleName(module_), {"", 0, 0, subject_ + ": " + text}, ""};
    if (node_ != nullptr)
        finding.path = DataPath(node_);
    PlaceAt(position, &finding);
    return finding;
}

void StatementRules::Report(Rule rule, const std::string &text, const std::optional<Position> &position)
{
    findings_.push_back(FindingAt(rule, text, position));
}

void StatementRules::ReportUnread(Rule rule, const std::string &text, const Extension &extension)
{
    uses_->NotRead(extension.origin, FindingAt(rule, text, places_->Of(extension.origin)));
}

void StatementRules::Report(Rule rule, const std::string &text)
{
    Report(rule, text, places_->Of(origin_));
}

void StatementRules::Report(Rule rule, const std::string &text, const Extension &extension)
{
    Report(rule, text, places_->Of(extension.origin));
}

void StatementRules::CheckNumber(const Extension &extension)
{
    std::optional<NumberFault> fault = FaultOf(extension.keyword, extension.argument);
    Number number = ReadNumber(extension.argument);
    bool isNone = number.wellFormed && number.fits && number.value == 0;
    if (fault && !(isNone && TakesBack(extension)))
        Report(fault->rule, fault->text, extension);
}

void StatementRules::CheckRange(const std::string &keyword, const std::string &word, const Extension &extension)
{
    Number number = ReadNumber(word);
    if (number.refused && keyword == ANCESTOR_KEY)
        Report("bad-number", "'" + word + "' of " + keyword + ": neither it nor the " + keyword + " after it are read",
               extension);
    else if (!number.wellFormed)
        Report("bad-number", "'" + word + "' of " + keyword + " is no number: it counts as " + ValueText(keyword, word),
               extension);
    else if (keyword == "name2id-key-fid" && number.value == NO_NUMBER)
        Report("misleading-number", NoNumberText(keyword, word), extension);
    else if (number.value > MAX_FIELD_ID)
        Report("field-id-range", keyword + " " + word + " is no attribute id: these end at 255", extension);
    else if (IsOctal(word))
        Report("misleading-number",
               "'" + word + "' of " + keyword + " is octal and counts as " + ValueText(keyword, word), extension);
}

void StatementRules::CheckAncestorKeyNumbers(const Extension &extension)
{
    for (const std::string &word : Words(extension.argument))
        CheckRange(extension.keyword, word, extension);
    bool hasId = false;
    for (const Extension &nested : ExtensionsWithin(schema_, extension.instance)) {
        if (nested.keyword != "field-id")
            continue;
        CheckRange("field-id in " + extension.keyword, nested.argument, nested);
        if (std::exchange(hasId, true))
            Report("repeated-statement",
                   "field-id '" + nested.argument + "' is not the first field-id in " + extension.keyword + " '" +
                       extension.argument + "'",
                   nested);
    }
}

void StatementRules::CheckNumbers(const Extensions &extensions)
{
    for (const Extension &extension : extensions)
        if (extension.keyword == ANCESTOR_KEY)
            CheckAncestorKeyNumbers(extension);
        else if (extension.keyword == "name2id-key-fid")
            CheckRange(extension.keyword, extension.argument, extension);
        else if (extension.keyword == TASK_ID || IsOneOf(CLASS_NUMBERS, extension.keyword) ||
                 IsOneOf(LEAF_STATEMENTS, extension.keyword))
            CheckNumber(extension);
}

/* An ancestor key with a nested statement may stand several times. */
void StatementRules::CheckRepeated(const Extensions &extensions)
{
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        bool known = extension.keyword == TASK_ID || IsOneOf(CLASS_STATEMENTS, extension.keyword) ||
                     IsOneOf(LEAF_STATEMENTS, extension.keyword);
        if (!known || (extension.keyword == ANCESTOR_KEY && !ExtensionsWithin(schema_, extension.instance).empty()))
            continue;
        if (!seen.insert(extension.keyword).second)
            Report("repeated-statement",
                   extension.keyword + " '" + extension.argument + "' is not the first " + extension.keyword,
                   extension);
    }
}

void StatementRules::CheckNode(QY_NODE *node)
{
    ++nodes_;
    isInTrees_ = isInTrees_ || OutOfTrees(node) == nullptr;
    Extensions extensions = ExtensionsOf(node);
    bool mayBeClass = MayBeClass(node);
    if (extensions.empty() && !mayBeClass) // a class of class-type 'leafref' may have lost its own
        return;
    node_ = node;
    subject_ = Described(node);
    origin_ = OriginOf(node);
    std::vector<QXYANG_STATEMENT_S> written = ExtensionsWritten(origin_);
    if (IsLeafrefClass(written)) {
        CheckLeafrefClass(node);
        return;
    }
    if (!mayBeClass && written.empty() && QY_NODE_GetLeafrefTargetNode(node, 0) != nullptr)
        return;
    CheckNumbers(extensions);
    CheckRepeated(extensions);
    CheckEffect(node, extensions);
    if (ClassIdOf(node) == 0)
        return;
    CheckAncestorKeys(node, extensions);
    if (QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LIST)
        CheckKeys(node);
}

/* Other statements than the task id have no effect there. */
void StatementRules::CheckModule()
{
    Extensions extensions = ExtensionsOf(module_);
    std::erase_if(extensions, [](const Extension &extension) { return extension.keyword != TASK_ID; });
    node_ = nullptr;
    subject_ = std::string("module '") + QY_MOD_GetModuleName(module_) + "'";
    if (QXYANG_GetModuleOrigin(module_, &origin_) != 0)
        throw std::bad_alloc();
    hasTask_ = std::any_of(extensions.begin(), extensions.end(),
                           [](const Extension &extension) { return ReadNumber(extension.argument).value != 0; });
    CheckNumbers(extensions);
    CheckRepeated(extensions);
}

/* True if a statement of the module's files makes a class or attribute, wherever its grouping is used. */
bool StatementRules::WritesClasses() const
{
    QXYANG_STATEMENT_S statement = {};
    for (const LoadedFile &loaded : FilesOf(module_)) {
        const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, loaded.name);
        for (uint32_t i = 0; file != nullptr && QXYANG_GetStatement(file, i, &statement) == 0; ++i)
            if (MakesClass(statement))
                return true;
    }
    return false;
}

/* A task id is for the operations of a module, too. */
void StatementRules::CheckClassNum()
{
    if (nodes_ == 0 || classes_ != 0 || (hasTask_ && !isInTrees_) || origin_.pstFile == nullptr ||
        !ImportsExtensions(origin_) || WritesClasses())
        return;
    Report("no-class",
           std::string("none of its nodes has a class-id or field-id: ") +
               (hasTask_ ? "a host sees no more of it than its task id"
                         : std::string("it imports ") + EXTENSION_MODULE_NAME + " for nothing that a host sees"));
}

std::vector<Finding> StatementRules::Check()
{
    if (QXYANG_GetLoadedFile(schema_, EXTENSION_MODULE_NAME) == nullptr)
        return {};
    ForEachOwnNode(module_, [this](QY_NODE *node) { CheckNode(node); });
    CheckModule();
    CheckClassNum();
    return std::move(findings_);
}

} // namespace inspect
