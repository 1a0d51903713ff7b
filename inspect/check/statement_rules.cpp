#include "check/statement_rules.h"

#include <algorithm>
#include <array>
#include <new>
#include <set>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "model/statements.h"

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

bool MayBeClass(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    return type == QY_NODE_TYPE_CONTAINER || type == QY_NODE_TYPE_LIST;
}

uint32_t ClassIdOf(QY_NODE *node)
{
    std::vector<std::string> ids = MayBeClass(node) ? ExtensionArguments(node, "class-id") : Words("");
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
        for (const char *keyword : {"field-id", "ref-id-key-fid"})
            for (const std::string &argument : ExtensionArguments(leaf, keyword))
                ids.insert(ReadNumber(argument).value);
    });
    return ids;
}

/* The list whose keys a node of the same class further down takes over, or null. */
QY_NODE *KeyedListAbove(QY_NODE *node)
{
    uint32_t classId = ClassIdOf(node);
    QY_NODE *above = ClassAbove(node);
    while (above != nullptr && ClassIdOf(above) == classId && KeyNum(above) == 0)
        above = ClassAbove(above);
    return above != nullptr && ClassIdOf(above) == classId ? above : nullptr;
}

/* The extension statements in the node's own statement. In the schema, the library replaces the extension statements of a
 * class of class-type 'leafref' and of its leaves. */
std::vector<QXYANG_STATEMENT_S> ExtensionsWritten(const QXYANG_ORIGIN_S &origin)
{
    std::vector<QXYANG_STATEMENT_S> written;
    if (origin.pstFile != nullptr)
        ForEachIn(origin.pstFile, StatementAt(origin.pstFile, origin.uiStatement),
                  [&written](const QXYANG_STATEMENT_S &statement) {
                      if (statement.pcPrefix != nullptr)
                          written.push_back(statement);
                  });
    return written;
}

bool IsLeafrefClass(const std::vector<QXYANG_STATEMENT_S> &written)
{
    return written.size() == 1 && std::string_view(written.front().pcKeyword) == "class-type" &&
           written.front().pcArgument != nullptr && std::string_view(written.front().pcArgument) == "leafref";
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

void StatementRules::Report(Rule rule, const std::string &text, const std::optional<Position> &position)
{
    Finding finding = {rule, QY_MOD_GetModuleName(module_), {"", 0, 0, subject_ + ": " + text}};
    PlaceAt(position, &finding.cause);
    findings_.push_back(finding);
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
    const std::string &keyword = extension.keyword;
    const std::string &argument = extension.argument;
    Number number = ReadNumber(argument);
    bool isId = keyword == "field-id" || keyword == "ref-id-key-fid"; /* large ones: field-id-range */
    std::string statement = QuotedStatement(keyword, argument);
    if (!number.wellFormed)
        Report("bad-number", statement + " is no number: it counts as " + ValueText(number, keyword), extension);
    else if (!number.fits && (!isId || number.refused))
        Report("bad-number",
               statement + (number.refused ? " has more than 64 bits" : " has more than 32 bits") + ": it counts as " +
                   ValueText(number, keyword),
               extension);
}

void StatementRules::CheckRange(const std::string &keyword, const std::string &word, const Extension &extension)
{
    Number number = ReadNumber(word);
    if (number.refused && keyword == ANCESTOR_KEY)
        Report("bad-number", "'" + word + "' of " + keyword + ": neither it nor the " + keyword + " after it are read",
               extension);
    else if (!number.wellFormed)
        Report("bad-number",
               "'" + word + "' of " + keyword + " is no number: it counts as " + ValueText(number, keyword), extension);
    else if (number.value > MAX_FIELD_ID)
        Report("field-id-range", keyword + " " + word + " is no attribute id: these end at 255", extension);
}

void StatementRules::CheckAncestorKeyNumbers(const Extension &extension)
{
    for (const std::string &word : Words(extension.argument))
        CheckRange(extension.keyword, word, extension);
    for (const Extension &nested : ExtensionsWithin(schema_, extension.instance))
        if (nested.keyword == "field-id")
            CheckRange("field-id in " + extension.keyword, nested.argument, nested);
}

void StatementRules::CheckNumbers(const Extensions &extensions)
{
    for (const Extension &extension : extensions)
        if (extension.keyword == ANCESTOR_KEY)
            CheckAncestorKeyNumbers(extension);
        else if (extension.keyword == "name2id-key-fid")
            CheckRange(extension.keyword, extension.argument, extension);
        else if (extension.keyword == "aaa-task-id" || IsOneOf(CLASS_NUMBERS, extension.keyword) ||
                 IsOneOf(LEAF_STATEMENTS, extension.keyword))
            CheckNumber(extension);
}

/* An ancestor key with a nested statement may stand several times. */
void StatementRules::CheckRepeated(const Extensions &extensions)
{
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        bool known = extension.keyword == "aaa-task-id" || IsOneOf(CLASS_STATEMENTS, extension.keyword) ||
                     IsOneOf(LEAF_STATEMENTS, extension.keyword);
        if (!known || (extension.keyword == ANCESTOR_KEY && !ExtensionsWithin(schema_, extension.instance).empty()))
            continue;
        if (!seen.insert(extension.keyword).second)
            Report("repeated-statement",
                   QuotedStatement(extension.keyword, extension.argument) + " is not the first " + extension.keyword,
                   extension);
    }
}

void StatementRules::CheckEffect(QY_NODE *node, const Extensions &extensions)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_NONE || type > QY_NODE_TYPE_ANYDATA) /* operations and notifications: in no tree anyway */
        return;
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        bool misplaced = (IsOneOf(CLASS_STATEMENTS, extension.keyword) && !MayBeClass(node)) ||
                         (IsOneOf(LEAF_STATEMENTS, extension.keyword) && type != QY_NODE_TYPE_LEAF) ||
                         extension.keyword == "aaa-task-id";
        if (misplaced && seen.insert(extension.keyword).second)
            Report("no-effect",
                   extension.keyword + " has no effect on " + (*KindOf(node) == 'a' ? "an " : "a ") + KindOf(node),
                   extension);
    }
    if (MayBeClass(node) && ClassIdOf(node) == 0)
        CheckClassStatements(extensions);
}

/* Looks at the statements of a node without class id. */
void StatementRules::CheckClassStatements(const Extensions &extensions)
{
    for (const char *keyword : {"tlmt-sample-id", ANCESTOR_KEY}) {
        auto found = std::find_if(extensions.begin(), extensions.end(),
                                  [keyword](const Extension &extension) { return extension.keyword == keyword; });
        if (found != extensions.end())
            Report("no-effect", std::string(keyword) + " has no effect without class-id", *found);
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
    const Extension *first = nullptr;
    for (const Extension &extension : extensions) {
        if (extension.keyword != ANCESTOR_KEY)
            continue;
        if (first == nullptr)
            first = &extension;
        if (num == 0)
            nested = !ExtensionsWithin(schema_, extension.instance).empty();
        if (nested)
            ++num;
        else if (num == 0)
            num = Words(extension.argument).size();
    }
    QY_NODE *above = ClassAbove(node);
    size_t keys = KeysAbove(node);
    if (num == 0 || first == nullptr)
        return;
    if (above != nullptr && ClassIdOf(above) == ClassIdOf(node))
        Report("no-effect", std::string(ANCESTOR_KEY) + " has no effect: the class above it is the same class", *first);
    else if (above == nullptr && (nested || keys == 0))
        Report("extra-ancestor-key", std::string("it has ") + ANCESTOR_KEY + ", but no class above it", *first);
    else if (num > keys)
        Report("extra-ancestor-key",
               "it has " + Count(num, "ancestor key") + ", but the lists above it have " +
                   (keys == 0 ? "no key" : Count(keys, "key")),
               *first);
}

void StatementRules::CheckKeys(QY_NODE *node)
{
    uint32_t num = KeyNum(node);
    std::string written = origin_.pstFile != nullptr
                              ? ArgumentIn(origin_.pstFile, StatementAt(origin_.pstFile, origin_.uiStatement), "key")
                              : "";
    size_t wanted = Words(written).size();
    if (wanted > num)
        Report("missing-key", Count(wanted - num, "key") + " of it " + (wanted - num == 1 ? "is" : "are") +
                                  " gone: a deviation has taken the leaf away");
    if (num == 0)
        return;
    QY_NODE *above = KeyedListAbove(node);
    if (above == nullptr)
        return;
    std::set<uint32_t> own = KeyIdsOf(node);
    std::set<uint32_t> taken = KeyIdsOf(above);
    if (!std::includes(taken.begin(), taken.end(), own.begin(), own.end()))
        Report("dropped-key", "its keys do not count: it has those of the list '" + NameOf(above) +
                                  "' above it, which is of the same class");
}

void StatementRules::CheckNode(QY_NODE *node)
{
    Extensions extensions = ExtensionsOf(node);
    bool mayBeClass = MayBeClass(node);
    if ((extensions.empty() && !mayBeClass))
        return;
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

void StatementRules::CheckModule()
{
    Extensions extensions = ExtensionsOf(module_);
    subject_ = std::string("module '") + QY_MOD_GetModuleName(module_) + "'";
    if (QXYANG_GetModuleOrigin(module_, &origin_) != 0)
        throw std::bad_alloc();
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
