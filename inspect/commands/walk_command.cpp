/* walk: the callbacks of a host's travel. */
#include <algorithm>
#include <cstdio>
#include <new>

#include "base/json_out.h"
#include "base/text.h"
#include "commands/commands.h"
#include "commands/node_command.h"
#include "model/load_causes.h"
#include "model/path_finder.h"
#include "model/tree_places.h"
#include "tree/tree_rows.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Lists the library's callbacks in the order in which they come: the ancestors, nearest
first, then the node and everything below it, parents first. A leaf stands for the node
that holds it.

Example:
  korv-inspect walk example-interfaces /interfaces/interface -d examples/yin)";

struct Call {
    const KorvTreeNode *node;
    bool ancestor;
};

using Calls = std::vector<Call>;

uint32_t AddCall(void *calls, KorvTreeNode *node, bool ancestor)
try {
    static_cast<Calls *>(calls)->push_back({node, ancestor});
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

uint32_t AddAncestor(void *calls, KorvTreeNode *node)
{
    return AddCall(calls, node, true);
}

uint32_t AddNode(void *calls, KorvTreeNode *node)
{
    return AddCall(calls, node, false);
}

size_t Depth(const KorvTreeNode &node)
{
    return FromTop(node).size() - 1;
}

std::string NameText(const KorvTreeNode &node)
{
    return std::string(2 * Depth(node), ' ') + (IsOrdinary(node) ? "" : KindName(node) + std::string(" ")) +
           node.pcName;
}

void PrintText(const Calls &calls)
{
    size_t width = 0;
    for (const Call &call : calls)
        width = std::max(width, NameText(*call.node).size());
    size_t number = 0;
    for (const Call &call : calls) {
        std::string line = NameText(*call.node);
        PadTo(&line, width);
        line += "  " + NodeSummary(*call.node);
        line.erase(line.find_last_not_of(' ') + 1);
        std::printf("%4zu  %-8s  %s\n", ++number, call.ancestor ? "ancestor" : "node", line.c_str());
    }
}

void PrintJson(const Calls &calls, const Place &place, uint32_t taskId, TreePlaces *places)
{
    JsonOut out;
    out.Array();
    for (const Call &call : calls) {
        out.Object();
        out.Member("callback", call.ancestor ? "ancestor" : "node");
        out.Member("name", call.node->pcName);
        out.Member("kind", KindName(*call.node));
        out.Member("depth", Depth(*call.node));
        out.Member("path", DataPath(*call.node));
        out.Member("class_id", call.node->uiClassId);
        out.NumberOrNull("task_id", taskId);
        WritePlace(&out, places->Of({place.augment, call.node, nullptr}));
        out.EndObject();
    }
    out.EndArray();
}

class WalkCommand final : public NodeCommand {
  public:
    int Run() override;
};

int WalkCommand::Run()
{
    Instance instance(options_.Request().dirs, options_.Request().verbose);
    LoadRequested(&instance, options_.Request());
    const ModuleFile &file = Loaded(instance, options_.Module());
    Place place = PathFinder(instance, file).Require(options_.Path(), options_.Request().notes);
    Calls calls;
    auto *start = const_cast<KorvTreeNode *>(place.node);
    if (YANGLIB_TravelYangModuleSubTree(instance.Local(), start, &calls, AddAncestor, AddNode) != KORV_OK)
        throw std::bad_alloc();
    TreePlaces places(instance, file, options_.Request().dirs);
    if (options_.OutputFormat() == Format::Json)
        PrintJson(calls, place, TaskId(file), &places);
    else
        PrintText(calls);
    return 0;
}

} // namespace

const CommandEntry WALK_COMMAND = {"walk", "Travel from a node as a host does", HELP, Make<WalkCommand>};

} // namespace inspect
