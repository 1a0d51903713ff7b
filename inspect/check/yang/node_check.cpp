#include "check/yang/node_check.h"

#include <algorithm>

#include "base/xpath.h"
#include "model/module_search.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

std::string KeyOf(const std::string &module, std::string_view name)
{
    return module + ":" + std::string(name);
}

bool IsMoreThanZero(std::string_view number)
{
    return number.find_first_not_of('0') != std::string_view::npos;
}

} // namespace

std::optional<NodeStatement> WhyMandatory(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_LIST || type == QY_NODE_TYPE_LEAF_LIST) {
        std::optional<NodeStatement> least = StatementOf(node, "min-elements");
        return least && IsMoreThanZero(least->argument) ? least : std::nullopt;
    }
    std::optional<NodeStatement> mandatory = StatementOf(node, "mandatory");
    return mandatory && mandatory->argument == "true" ? mandatory : std::nullopt;
}

NodeCheck::NodeCheck(QY_CTX *schema, QY_MOD *module, Places *places)
    : module_(module), places_(places), identities_(schema, &files_)
{
    for (const LoadedFile &file : FilesOf(module))
        ownFiles_.insert(file.path);
}

bool NodeCheck::IsOwn(const QXYANG_ORIGIN_S &origin) const
{
    return origin.pcFile != nullptr && ownFiles_.contains(origin.pcFile);
}

std::string NodeCheck::SeeText(const QXYANG_ORIGIN_S &statement)
{
    std::optional<Position> place = places_->Of(statement);
    return place ? " (see " + place->file + ":" + std::to_string(place->line) + ")" : "";
}

void NodeCheck::Report(Rule rule, const std::string &text, std::initializer_list<QXYANG_ORIGIN_S> statements)
{
    const auto *own = std::find_if(statements.begin(), statements.end(),
                                   [this](const QXYANG_ORIGIN_S &origin) { return IsOwn(origin); });
    bool isOwn = own != statements.end();
    QXYANG_ORIGIN_S place = isOwn ? *own : UsesOfNode();
    if (!IsOwn(place) || !reported_.insert({&*rule, {place.pstFile, place.uiStatement}}).second)
        return;
    Finding finding = {rule, QY_MOD_GetModuleName(module_), {"", 0, 0, text}};
    PlaceAt(places_->Of(place), &finding);
    if (!isOwn || own != statements.begin())
        finding.cause.text += SeeText(*statements.begin());
    findings_.push_back(std::move(finding));
}

QXYANG_ORIGIN_S NodeCheck::UsesOfNode() const
{
    return node_ != nullptr ? UsesOf(node_) : QXYANG_ORIGIN_S{};
}

QY_NODE *NodeCheck::ChildOf(QY_NODE *node, const std::string &module, std::string_view name)
{
    auto [entry, isNew] = children_.try_emplace(node);
    Named &named = entry->second;
    if (isNew)
        ForEachChild(node,
                     [&named](QY_NODE *child) { named.emplace(KeyOf(ModuleNameOf(child), NameOf(child)), child); });
    auto found = named.find(KeyOf(module, name));
    return found != named.end() ? found->second : nullptr;
}

const DefaultCase &NodeCheck::DefaultOf(QY_NODE *choice)
{
    auto [entry, isNew] = defaults_.try_emplace(choice);
    if (std::optional<NodeStatement> found = isNew ? StatementOf(choice, "default") : std::nullopt) {
        PrefixedName name = SplitName(found->argument);
        std::string module = name.prefix.empty() ? ModuleNameOf(choice) : NamesOf(*found).ModuleOf(name.prefix);
        entry->second = {std::move(module), std::string(name.name), found->origin};
    }
    return entry->second;
}

const QXYANG_ORIGIN_S *NodeCheck::DefaultOfCase(QY_NODE *node)
{
    QY_NODE *choice = QY_NODE_GetNodeType(node) == QY_NODE_TYPE_CASE ? QY_NODE_GetParentNode(node) : nullptr;
    if (choice == nullptr)
        return nullptr;
    const DefaultCase &found = DefaultOf(choice);
    return !found.name.empty() && found.name == NameOf(node) && found.module == ModuleNameOf(node) ? &found.origin
                                                                                                   : nullptr;
}

std::optional<Mandatory> NodeCheck::MandatoryIn(NodeCheck &check, QY_NODE *node, Filter counts)
{
    std::vector<QY_NODE *> rest = {node};
    while (!rest.empty()) {
        QY_NODE *at = rest.back();
        rest.pop_back();
        if (!counts(check, at))
            continue;
        if (QY_NODE_GetNodeType(at) != QY_NODE_TYPE_CONTAINER) {
            if (std::optional<NodeStatement> why = WhyMandatory(at))
                return Mandatory{at, *why};
            continue;
        }
        if (StatementOf(at, "presence"))
            continue;
        auto begin = static_cast<std::ptrdiff_t>(rest.size());
        ForEachChild(at, [&rest](QY_NODE *child) { rest.push_back(child); });
        std::reverse(rest.begin() + begin, rest.end());
    }
    return std::nullopt;
}

const std::unordered_set<std::string_view> &NodeCheck::ConditionalNamesIn(const NodeStatement &type)
{
    auto [entry, isNew] = conditionalNames_.try_emplace({type.origin.pstFile, type.origin.uiStatement});
    if (isNew)
        for (const char *keyword : {"enum", "bit"})
            for (const NodeStatement &value : StatementsWithin(type.origin, keyword))
                if (StatementWithin(value.origin, "if-feature"))
                    entry->second.insert(value.argument);
    return entry->second;
}

const Climbs &NodeCheck::ClimbsOf(const NodeStatement &expression)
{
    auto [entry, isNew] = climbs_.try_emplace({expression.origin.pstFile, expression.origin.uiStatement});
    Climbs &climbs = entry->second;
    if (!isNew)
        return climbs;
    for (const XPathFacts::Climb &climb : ReadXPath(std::string(expression.argument)).climbs)
        if (climb.from == XPathFacts::Start::Root)
            climbs.fromRoot = true;
        else
            climbs.fromContext = std::max(climbs.fromContext, climb.steps);
    return climbs;
}

const std::vector<NodeStatement> &NodeCheck::ClimbingPathsIn(const NodeStatement &type)
{
    auto [entry, isNew] = climbingPaths_.try_emplace({type.origin.pstFile, type.origin.uiStatement});
    std::vector<NodeStatement> rest;
    if (isNew)
        rest.push_back(type);
    while (!rest.empty()) {
        NodeStatement at = rest.back();
        rest.pop_back();
        std::optional<NodeStatement> path = StatementWithin(at.origin, "path");
        if (path && ClimbsOf(*path).Any())
            entry->second.push_back(*path);
        for (const NodeStatement &member : StatementsWithin(at.origin, "type"))
            rest.push_back(member);
    }
    return entry->second;
}

const std::optional<NodeStatement> &NodeCheck::WhenIn(const QXYANG_ORIGIN_S &around)
{
    auto [entry, isNew] = whens_.try_emplace({around.pstFile, around.uiStatement});
    if (isNew)
        entry->second = StatementWithin(around, "when");
    return entry->second;
}

} // namespace inspect
