#include "check/statement_rules.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "model/schema_places.h"

namespace inspect {
namespace {

constexpr uint32_t MAX_FIELD_ID = 255;
constexpr const char *ANCESTOR_KEY = "ancestor-key-fid";

constexpr std::array<std::string_view, 2> CLASS_NUMBERS = {"class-id", "tlmt-sample-id"};
constexpr std::array<std::string_view, 4> CLASS_STATEMENTS = {"class-id", "tlmt-sample-id", ANCESTOR_KEY, "class-type"};
constexpr std::array<std::string_view, 4> LEAF_STATEMENTS = {"field-id", "datatype-id", "ref-id-key-fid",
                                                             "name2id-key-fid"};

template <size_t N>
bool IsOneOf(const std::array<std::string_view, N> &keywords, std::string_view keyword)
{
    return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

std::string KindText(QY_NODE *node)
{
    switch (QY_NODE_GetNodeType(node)) {
        case QY_NODE_TYPE_CONTAINER:
            return "container";
        case QY_NODE_TYPE_LEAF:
            return "leaf";
        case QY_NODE_TYPE_LEAF_LIST:
            return "leaf-list";
        case QY_NODE_TYPE_LIST:
            return "list";
        case QY_NODE_TYPE_CHOICE:
            return "choice";
        case QY_NODE_TYPE_CASE:
            return "case";
        default:
            return "node";
    }
}

bool MayBeClass(QY_NODE *node)
{
    const uint32_t type = QY_NODE_GetNodeType(node);
    return type == QY_NODE_TYPE_CONTAINER || type == QY_NODE_TYPE_LIST;
}

uint32_t ClassIdOf(QY_NODE *node)
{
    const std::vector<std::string> ids = MayBeClass(node) ? ExtensionArguments(node, "class-id") : Words("");
    return ids.empty() ? 0 : ReadNumber(ids.front()).value;
}

QY_NODE *ClassAbove(QY_NODE *node)
{
    do
        node = QY_NODE_GetParentNode(node);
    while (node != nullptr && ClassIdOf(node) == 0);
    return node;
}

uint32_t KeyNum(QY_NODE *node)
{
    return QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LIST ? QY_NODE_GetNodeKeyNum(node) & 0xFFU : 0;
}

uint32_t KeysAbove(QY_NODE *node)
{
    uint32_t num = 0;
    while ((node = QY_NODE_GetParentNode(node)) != nullptr)
        num += KeyNum(node);
    return num;
}

/* The attribute ids of a list's keys. */
std::set<uint32_t> KeyIdsOf(QY_NODE *list)
{
    std::set<uint32_t> ids;
    ForEachChild(list, [&ids](QY_NODE *leaf) {
        if (QY_NODE_GetNodeType(leaf) != QY_NODE_TYPE_LEAF || (QY_NODE_IsKey(leaf) & 1U) == 0)
            return;
        for (const char *keyword : {"field-id", "ref-id-key-fid"}) {
            for (const std::string &argument : ExtensionArguments(leaf, keyword))
                ids.insert(ReadNumber(argument).value);
        }
    });
    return ids;
}

/* The list whose keys a node of the same class further down takes over, or null. */
QY_NODE *KeyedListAbove(QY_NODE *node)
{
    const uint32_t classId = ClassIdOf(node);
    QY_NODE *above = ClassAbove(node);
    while (above != nullptr && ClassIdOf(above) == classId && KeyNum(above) == 0)
        above = ClassAbove(above);
    return above != nullptr && ClassIdOf(above) == classId ? above : nullptr;
}

/* The file says class-type 'leafref': the library has replaced the statements in the schema by others'. */
bool IsLeafrefClass(const std::optional<Position> &position)
{
    if (!position)
        return false;
    const auto &children = position->statement->children;
    const auto isForeign = [](const YinStatement *child) { return child->keyword.empty(); };
    const auto found = std::find_if(children.begin(), children.end(), isForeign);
    return found != children.end() && (*found)->argument == "leafref" &&
           std::count_if(children.begin(), children.end(), isForeign) == 1;
}

/* A leaf of a class of class-type 'leafref': the file has no statements of its own for it. */
bool HasNone(const std::optional<Position> &position)
{
    return position && std::none_of(position->statement->children.begin(), position->statement->children.end(),
                                    [](const YinStatement *child) { return child->keyword.empty(); });
}

std::string QuotedStatement(const std::string &keyword, const std::string &argument)
{
    return keyword + " '" + argument + "'";
}

/* What the library makes of a number. */
std::string ValueText(const Number &number, const std::string &keyword)
{
    if (number.refused)
        return "absent";
    return IsOneOf(CLASS_NUMBERS, keyword) ? Hex(number.value) : std::to_string(number.value);
}

} // namespace

void StatementRules::Report(const char *name, const std::string &text)
{
    Finding finding = {name, false, QY_MOD_GetModuleName(module_), {"", 0, 0, subject_ + ": " + text}};
    if (position_) {
        finding.cause.file = position_->file;
        finding.cause.line = position_->line;
    }
    findings_.push_back(finding);
}

void StatementRules::CheckNumber(const std::string &keyword, const std::string &argument)
{
    const Number number = ReadNumber(argument);
    const bool isId = keyword == "field-id" || keyword == "ref-id-key-fid"; /* large ones: field-id-range */
    const std::string statement = QuotedStatement(keyword, argument);
    if (!number.wellFormed)
        Report("bad-number", statement + " is no number: it counts as " + ValueText(number, keyword));
    else if (!number.fits && (!isId || number.refused))
        Report("bad-number", statement + (number.refused ? " has more than 64 bits" : " has more than 32 bits") +
                                 ": it counts as " + ValueText(number, keyword));
}

void StatementRules::CheckRange(const std::string &keyword, const std::string &word)
{
    const Number number = ReadNumber(word);
    if (number.refused && keyword == ANCESTOR_KEY)
        Report("bad-number", "'" + word + "' of " + keyword + ": neither it nor the " + keyword + " after it are read");
    else if (!number.wellFormed)
        Report("bad-number",
               "'" + word + "' of " + keyword + " is no number: it counts as " + ValueText(number, keyword));
    else if (number.value > MAX_FIELD_ID)
        Report("field-id-range", keyword + " " + word + " is no attribute id: these end at 255");
}

void StatementRules::CheckAncestorKeyNumbers(const Extension &extension)
{
    for (const std::string &word : Words(extension.argument))
        CheckRange(extension.keyword, word);
    for (const Extension &nested : ExtensionsWithin(extension.instance)) {
        if (nested.keyword == "field-id")
            CheckRange("field-id in " + extension.keyword, nested.argument);
    }
}

void StatementRules::CheckNumbers(const Extensions &extensions)
{
    for (const Extension &extension : extensions) {
        if (extension.keyword == ANCESTOR_KEY)
            CheckAncestorKeyNumbers(extension);
        else if (extension.keyword == "name2id-key-fid")
            CheckRange(extension.keyword, extension.argument);
        else if (extension.keyword == "aaa-task-id" || IsOneOf(CLASS_NUMBERS, extension.keyword) ||
                 IsOneOf(LEAF_STATEMENTS, extension.keyword))
            CheckNumber(extension.keyword, extension.argument);
    }
}

/* Only an ancestor key with a nested statement is one of several. */
void StatementRules::CheckRepeated(const Extensions &extensions)
{
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        const bool known = extension.keyword == "aaa-task-id" || IsOneOf(CLASS_STATEMENTS, extension.keyword) ||
                           IsOneOf(LEAF_STATEMENTS, extension.keyword);
        if (!known || (extension.keyword == ANCESTOR_KEY && !ExtensionsWithin(extension.instance).empty()))
            continue;
        if (!seen.insert(extension.keyword).second)
            Report("repeated-statement",
                   QuotedStatement(extension.keyword, extension.argument) + " is not the first " + extension.keyword);
    }
}

void StatementRules::CheckEffect(QY_NODE *node, const Extensions &extensions)
{
    const uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_NONE || type > QY_NODE_TYPE_ANYDATA) /* operations and notifications: in no tree anyway */
        return;
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        const bool misplaced = (IsOneOf(CLASS_STATEMENTS, extension.keyword) && !MayBeClass(node)) ||
                               (IsOneOf(LEAF_STATEMENTS, extension.keyword) && type != QY_NODE_TYPE_LEAF) ||
                               extension.keyword == "aaa-task-id";
        if (misplaced && seen.insert(extension.keyword).second)
            Report("no-effect", extension.keyword + " has no effect on a " + KindText(node));
    }
    if (!MayBeClass(node) || ClassIdOf(node) != 0)
        return;
    for (const char *keyword : {"tlmt-sample-id", ANCESTOR_KEY}) {
        if (!ExtensionArguments(node, keyword).empty())
            Report("no-effect", std::string(keyword) + " has no effect without class-id");
    }
}

void StatementRules::CheckLeafrefClass(QY_NODE *node)
{
    if (ClassIdOf(node) == 0)
        Report("no-effect",
               "class-type 'leafref' makes no class of it: its first child that is no leaf has no class-id");
}

void StatementRules::CheckAncestorKeys(QY_NODE *node, const Extensions &extensions)
{
    size_t num = 0;
    bool nested = false;
    for (const Extension &extension : extensions) {
        if (extension.keyword != ANCESTOR_KEY)
            continue;
        if (num == 0)
            nested = !ExtensionsWithin(extension.instance).empty();
        if (nested)
            ++num;
        else if (num == 0)
            num = Words(extension.argument).size();
    }
    QY_NODE *above = ClassAbove(node);
    const size_t keys = KeysAbove(node);
    if (num == 0)
        return;
    if (above != nullptr && ClassIdOf(above) == ClassIdOf(node))
        Report("no-effect", std::string(ANCESTOR_KEY) + " has no effect: the class above it is the same class");
    else if (above == nullptr && (nested || keys == 0))
        Report("extra-ancestor-key", std::string("it has ") + ANCESTOR_KEY + ", but no class above it");
    else if (num > keys)
        Report("extra-ancestor-key", "it has " + Count(num, "ancestor key") + ", but the lists above it have " +
                                         (keys == 0 ? "no key" : Count(keys, "key")));
}

void StatementRules::CheckKeys(QY_NODE *node)
{
    const uint32_t num = KeyNum(node);
    const size_t wanted = position_ ? Words(std::string(ChildArgument(*position_->statement, "key"))).size() : 0;
    if (wanted > num)
        Report("missing-key", Count(wanted - num, "key") + " of it " + (wanted - num == 1 ? "is" : "are") +
                                  " gone: a deviation has taken the leaf away");
    if (num == 0)
        return;
    QY_NODE *above = KeyedListAbove(node);
    if (above == nullptr)
        return;
    const std::set<uint32_t> own = KeyIdsOf(node);
    const std::set<uint32_t> taken = KeyIdsOf(above);
    if (!std::includes(taken.begin(), taken.end(), own.begin(), own.end()))
        Report("dropped-key", "its keys do not count: it has those of the list '" + NameOf(above) +
                                  "' above it, which is of the same class");
}

void StatementRules::CheckNode(QY_NODE *node)
{
    const Extensions extensions = ExtensionsOf(node);
    const bool mayBeClass = MayBeClass(node);
    if ((extensions.empty() && !mayBeClass))
        return;
    subject_ = KindText(node) + " '" + NameOf(node) + "'";
    position_ = finder_.Find(WayTo(node));
    if (IsLeafrefClass(position_)) {
        CheckLeafrefClass(node);
        return;
    }
    if (!mayBeClass && HasNone(position_) && QY_NODE_GetLeafrefTargetNode(node, 0) != nullptr)
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

void StatementRules::CheckModule()
{
    const Extensions extensions = ExtensionsOf(module_);
    subject_ = std::string("module '") + QY_MOD_GetModuleName(module_) + "'";
    position_ = finder_.Module();
    CheckNumbers(extensions);
    CheckRepeated(extensions);
}

std::vector<Finding> StatementRules::Check()
{
    CheckModule();
    ForEachOwnNode(module_, [this](QY_NODE *node) { CheckNode(node); });
    return std::move(findings_);
}

} // namespace inspect
