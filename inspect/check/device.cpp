#include "check/device.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "model/load_causes.h"

namespace inspect {
namespace {

/* Follows the revision that a module is loaded under, when it is loaded once more. */
constexpr const char *LAST = "+";

} // namespace

Device::Device(const ModelRequest &request, const ModuleListing &listing)
    : request_(request), instance_(request.dirs, request.verbose, listing.Handle())
{
    for (const ModuleKey &load : request.loads)
        LoadOrFail(&instance_, request, load);
}

DeviceModule Device::Load(const ModuleKey &key)
{
    DeviceModule module = {key, instance_.Load(key), {}};
    module.causes = CausesOf(instance_, request_.dirs, key, module.report);
    if (!module.report.loaded)
        return module;
    module.at = instance_.Find(key);
    module.schema = QY_CTX_GetModuleByModName(instance_.Schema(), key.name.c_str());
    return module;
}

DeviceModule Device::LoadLast(const DeviceModule &module)
{
    return Load({module.key.name, module.key.revision + LAST});
}

void DeviceOrder::Add(const std::string &module, const ModuleFacts &facts, size_t turn)
{
    entries_[module] = {facts.imports, facts.changes, turn};
    for (const std::string &changed : facts.changes)
        changers_[changed].emplace_back(turn, module);
}

/* Those whose turns are from the first number on and below the second, the first MANY and one more: the module itself may be
 * among them. */
void DeviceOrder::AddChangers(const Changers &all, const std::pair<size_t, size_t> &turns, std::set<std::string> *found)
{
    auto isBefore = [](const auto &changer, size_t turn) { return changer.first < turn; };
    auto changer = std::lower_bound(all.begin(), all.end(), turns.first, isBefore);
    for (size_t num = 0; num <= MANY && changer != all.end() && changer->first < turns.second; ++num, ++changer)
        found->insert(changer->second);
}

std::set<std::string> DeviceOrder::ChangersOf(const std::string &module, Turns turns) const
{
    std::set<std::string> found;
    auto entry = entries_.find(module);
    if (entry == entries_.end())
        return found;
    std::pair<size_t, size_t> range = {0, SIZE_MAX};
    if (turns == Turns::Later)
        range.first = entry->second.turn + 1;
    else if (turns == Turns::Earlier)
        range = {1, entry->second.turn};
    auto addThoseOf = [&](const std::string &name) {
        if (auto changers = changers_.find(name); changers != changers_.end())
            AddChangers(changers->second, range, &found);
    };
    addThoseOf(module);
    for (const std::string &changed : entry->second.changes)
        addThoseOf(changed);
    found.erase(module);
    return found;
}

/* Climbs from what is changed to all that import it. */
void DeviceOrder::Close()
{
    for (auto &[changed, changers] : changers_)
        std::sort(changers.begin(), changers.end());
    std::map<std::string, std::vector<std::string>> importers;
    for (const auto &[name, entry] : entries_)
        for (const std::string &imported : entry.imports)
            importers[imported].push_back(name);
    std::set<std::string> seen;
    std::vector<std::string> open;
    for (const auto &[changed, changers] : changers_) {
        open.push_back(changed);
        for (const auto &[turn, changer] : changers)
            matters_.insert(changer);
    }
    while (!open.empty()) {
        std::string name = std::move(open.back());
        open.pop_back();
        if (!seen.insert(name).second)
            continue;
        auto found = importers.find(name);
        if (found != importers.end())
            open.insert(open.end(), found->second.begin(), found->second.end());
    }
    matters_.merge(seen);
}

} // namespace inspect
