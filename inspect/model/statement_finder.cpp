#include "model/statement_finder.h"

#include <algorithm>
#include <array>

namespace inspect {
namespace {

constexpr std::array<std::string_view, 11> NODE_KEYWORDS = {
    "container", "list", "leaf", "leaf-list", "choice", "case", "anydata", "anyxml", "rpc", "action", "notification"};

bool IsNode(const YinStatement &statement)
{
    return std::find(NODE_KEYWORDS.begin(), NODE_KEYWORDS.end(), statement.keyword) != NODE_KEYWORDS.end();
}

std::string_view LatestRevision(const YinFile &file)
{
    std::string_view latest;
    for (const YinStatement *child : file.Module().children) {
        if (child->Is("revision"))
            latest = std::max(latest, child->argument);
    }
    return latest;
}

/* Imports of this module name a revision, so that its file may be another one than that found by name alone. */
bool ImportsRevision(const YinFile &file, std::string_view module)
{
    for (const YinStatement *child : file.Module().children) {
        if (child->Is("import") && child->argument == module)
            return !ChildArgument(*child, "revision-date").empty();
    }
    return false;
}

} // namespace

StatementFinder::StatementFinder(const std::string &module, const char *revision, YinFiles *files)
    : module_(module), files_(files)
{
    const YinFile *file = files->Find(module);
    if (file != nullptr && LatestRevision(*file) == std::string_view(revision != nullptr ? revision : ""))
        own_ = FilesOf(module);
    for (const YinFile *part : own_) {
        for (const YinStatement *child : part->Module().children) {
            if (child->Is("augment"))
                augments_[BareNames(child->argument)].push_back({part, child, false});
        }
    }
}

std::vector<const YinFile *> StatementFinder::FilesOf(std::string_view module) const
{
    std::vector<const YinFile *> files;
    if (const YinFile *main = files_->Find(module))
        files.push_back(main);
    for (size_t i = 0; i < files.size(); ++i) {
        for (const YinStatement *child : files[i]->Module().children) {
            const YinFile *part = child->Is("include") ? files_->Find(child->argument) : nullptr;
            if (part != nullptr && std::find(files.begin(), files.end(), part) == files.end())
                files.push_back(part);
        }
    }
    return files;
}

StatementFinder::Spots StatementFinder::Roots() const
{
    Spots roots;
    for (const YinFile *file : own_)
        roots.push_back({file, &file->Module(), false});
    return roots;
}

StatementFinder::Spot StatementFinder::GroupingOf(const YinFile &file, const YinStatement &uses) const
{
    const size_t colon = uses.argument.find(':');
    const std::string_view name = uses.argument.substr(colon + 1);
    const std::string_view prefix = colon == std::string_view::npos ? "" : uses.argument.substr(0, colon);
    std::string_view module = file.ModuleOfPrefix(file.Prefix());
    if (!prefix.empty() && prefix != file.Prefix()) {
        module = file.ModuleOfPrefix(prefix);
        if (module.empty() || ImportsRevision(file, module))
            return {};
    } else {
        for (const YinStatement *scope = uses.parent; scope != nullptr; scope = scope->parent) {
            if (const YinStatement *grouping = GroupingIn(*scope, name))
                return {&file, grouping, false};
        }
    }
    for (const YinFile *part : FilesOf(module)) {
        if (const YinStatement *grouping = GroupingIn(part->Module(), name))
            return {part, grouping, false};
    }
    return {};
}

/* Its groupings and its own nodes; those of the groupings that it uses come with NodesBelow. */
StatementFinder::Below &StatementFinder::BelowOf(const YinStatement &statement) const
{
    const auto [entry, isNew] = below_.try_emplace(&statement);
    if (isNew) {
        for (const YinStatement *child : statement.children) {
            if (child->Is("grouping"))
                entry->second.groupings.emplace(child->argument, child);
        }
    }
    return entry->second;
}

const YinStatement *StatementFinder::GroupingIn(const YinStatement &scope, std::string_view name) const
{
    const auto &groupings = BelowOf(scope).groupings;
    const auto found = groupings.find(name);
    return found != groupings.end() ? found->second : nullptr;
}

const StatementFinder::Named &StatementFinder::NodesBelow(const YinFile &file, const YinStatement &statement) const
{
    Below &below = BelowOf(statement); /* stays where it is while others are added */
    if (below.known)
        return below.nodes;
    below.known = true;
    for (const YinStatement *child : statement.children) {
        if (child->Is("uses")) {
            const Spot grouping = GroupingOf(file, *child);
            if (grouping.statement == nullptr || grouping.statement == &statement)
                continue;
            for (const auto &[name, spots] : NodesBelow(*grouping.file, *grouping.statement))
                below.nodes[name].insert(below.nodes[name].end(), spots.begin(), spots.end());
        } else if (IsNode(*child)) {
            below.nodes[child->argument].push_back({&file, child, false});
        } else if (child->argument.empty() && !child->keyword.empty()) { /* input, output */
            below.nodes[child->keyword].push_back({&file, child, false});
        }
    }
    return below.nodes;
}

void StatementFinder::AddBelow(const Spot &spot, const WayStep &step, Spots *spots) const
{
    if (spot.impliedCase) {
        if (spot.statement->argument == step.name)
            spots->push_back({spot.file, spot.statement, false});
        return;
    }
    const Named &nodes = NodesBelow(*spot.file, *spot.statement);
    const auto found = nodes.find(step.name);
    if (found == nodes.end())
        return;
    for (const Spot &below : found->second) {
        const bool choiceOrCase = below.statement->Is("choice") || below.statement->Is("case");
        spots->push_back({below.file, below.statement, !step.named && !choiceOrCase});
    }
}

void StatementFinder::AddAugments(const std::string &target, const WayStep &step, Spots *spots) const
{
    const auto found = augments_.find(target);
    if (found == augments_.end())
        return;
    for (const Spot &augment : found->second)
        AddBelow(augment, step, spots);
}

std::optional<Position> StatementFinder::Find(const std::vector<WayStep> &way) const
{
    Spots spots = Roots();
    std::string above;
    for (const WayStep &step : way) {
        Spots next;
        if (module_ == step.module) {
            for (const Spot &spot : spots)
                AddBelow(spot, step, &next);
            if (!above.empty())
                AddAugments(above, step, &next);
        }
        spots.swap(next);
        above.append("/").append(step.name);
    }
    if (spots.size() != 1)
        return std::nullopt;
    const YinStatement *statement = spots.front().statement;
    return Position{spots.front().file->Path(), statement->line, statement};
}

std::optional<Position> StatementFinder::Module() const
{
    if (own_.empty())
        return std::nullopt;
    return Position{own_.front()->Path(), own_.front()->Module().line, &own_.front()->Module()};
}

} // namespace inspect
