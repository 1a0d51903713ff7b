/* walk: the callbacks of a host's travel. */
#include <algorithm>
#include <cstdio>

#include "commands.h"
#include "failure.h"
#include "json_out.h"
#include "load_causes.h"
#include "path_finder.h"
#include "text.h"
#include "tree_rows.h"

namespace inspect {
namespace {

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

void PrintJson(const Calls &calls)
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
        out.EndObject();
    }
    out.EndArray();
}

} // namespace

int RunWalk(const Arguments &args)
{
    Instance instance(args.dirs, args.verbose);
    LoadRequested(&instance, args);
    YinFiles files(args.dirs);
    const Place place = PathFinder(Loaded(instance, args.modules.front()), &files).Require(args.path);
    Calls calls;
    auto *start = const_cast<KorvTreeNode *>(place.node);
    if (YANGLIB_TravelYangModuleSubTree(instance.Local(), start, &calls, AddAncestor, AddNode) != KORV_OK)
        throw std::bad_alloc();
    if (args.format == Format::JSON)
        PrintJson(calls);
    else
        PrintText(calls);
    return 0;
}

} // namespace inspect
