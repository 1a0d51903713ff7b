/* Statements that nothing reads. */
#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "check/class_schema.h"
#include "check/statement_rules.h"
#include "check/statement_words.h"

namespace inspect {
namespace {

/* Statements that are read with a class-id alone. */
constexpr std::array<std::string_view, 2> OF_CLASSES = {"tlmt-sample-id", ANCESTOR_KEY};

/* The first child that is no leaf, or null. */
QY_NODE *FirstClassChild(QY_NODE *node)
{
    QY_NODE *first = nullptr;
    ForEachChild(node, [&first](QY_NODE *child) {
        if (first == nullptr && QY_NODE_GetNodeType(child) != QY_NODE_TYPE_LEAF)
            first = child;
    });
    return first;
}

/* True if the node stands in a class that is in no tree, and so is reported itself. */
bool IsInLostClass(QY_NODE *node)
{
    for (QY_NODE *at = QY_NODE_GetParentNode(node); at != nullptr; at = QY_NODE_GetParentNode(at))
        if (OutOfTrees(at) != nullptr && !ExtensionArguments(at, "class-id").empty())
            return true;
    return false;
}

/* Why a node is in no tree. */
std::string LostText(QY_NODE *node, QY_NODE *out)
{
    if (out != node)
        return "it stands in " + Described(out) + " and so in no tree";
    return QY_NODE_GetParentNode(node) == nullptr ? "it is no container at the module's top and so in no tree"
                                                  : "a node of this kind is in no tree";
}

} // namespace

/* Looks at the statements of what stands in no tree. A class there is reported, and what is in it is not. */
void StatementRules::CheckTree(QY_NODE *node, QY_NODE *out, const Extensions &extensions)
{
    if (extensions.empty() || IsInLostClass(node))
        return;
    std::string why = LostText(node, out);
    for (const Extension &extension : extensions)
        if (extension.keyword == "class-id")
            return ReportUnread("class-without-tree", why + ": no host sees the class", extension);
    std::set<std::string> seen;
    for (const Extension &extension : extensions)
        if (IsOneOf(LEAF_STATEMENTS, extension.keyword) && QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF &&
            seen.insert(extension.keyword).second)
            ReportUnread("no-effect", extension.keyword + " has no effect: " + why, extension);
}

void StatementRules::CheckEffect(QY_NODE *node, const Extensions &extensions)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    bool isOperation = type >= QY_NODE_TYPE_RPC && type <= QY_NODE_TYPE_NOTIFICATION;
    QY_NODE *out = OutOfTrees(node);
    if (out != nullptr)
        CheckTree(node, out, extensions);
    bool isClass = ClassIdOf(node) != 0;
    std::set<std::string> seen;
    for (const Extension &extension : extensions) {
        bool isClassId = isOperation && extension.keyword == "class-id"; // it stands in no tree
        bool misplaced = (IsOneOf(CLASS_STATEMENTS, extension.keyword) && !MayBeClass(node) && !isClassId) ||
                         (IsOneOf(LEAF_STATEMENTS, extension.keyword) && type != QY_NODE_TYPE_LEAF) ||
                         extension.keyword == TASK_ID;
        if (misplaced && seen.insert(extension.keyword).second)
            Report("no-effect", extension.keyword + " has no effect on " + WithArticle(KindOf(node)), extension);
        if (!misplaced && out == nullptr && (isClass || !IsOneOf(OF_CLASSES, extension.keyword)))
            uses_->Read(extension.origin);
        classes_ += !misplaced && (extension.keyword == "class-id" || extension.keyword == "field-id") ? 1 : 0;
    }
    if (MayBeClass(node) && !isClass)
        CheckClassStatements(extensions);
}

/* Looks at the statements of a node without class id. */
void StatementRules::CheckClassStatements(const Extensions &extensions)
{
    for (std::string_view keyword : OF_CLASSES) {
        auto found = std::find_if(extensions.begin(), extensions.end(),
                                  [keyword](const Extension &extension) { return extension.keyword == keyword; });
        if (found != extensions.end())
            ReportUnread("no-effect", std::string(keyword) + " has no effect without class-id", *found);
    }
}

void StatementRules::CheckLeafrefClass(QY_NODE *node)
{
    ++classes_;
    if (ClassIdOf(node) != 0)
        return;
    QY_NODE *child = FirstClassChild(node);
    if (child != nullptr && IsLeafrefClass(ExtensionsWritten(OriginOf(child))))
        Report("nested-leafref-class", "class-type 'leafref' makes no class of it: its first child that is no leaf, '" +
                                           NameOf(child) + "', is of class-type 'leafref' as well and has no class-id");
    else
        Report("no-effect",
               "class-type 'leafref' makes no class of it: its first child that is no leaf has no class-id");
}

} // namespace inspect
