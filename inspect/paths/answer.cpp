#include "paths/answer.h"

#include <cstdio>

#include "base/text.h"
#include "model/schema_places.h"
#include "model/schema_scan.h"
#include "tree/tree_json.h"
#include "tree/tree_rows.h"

namespace inspect {
namespace {

constexpr size_t LABEL_WIDTH = 15;

struct Answer {
    Place place;
    std::optional<NodeRequest> request;
    bool toHolder; /* the library finds the leaf by no path of its own: the request is its holder's */
    bool asked;    /* the module to ask is loaded */
    bool answered; /* and the library finds the node */
};

bool Holds(const KorvTreeNode &node, const KorvTreeLeaf &wanted)
{
    for (const VEC_VECTOR_S *list : {node.pstLeafList, node.pstCaseLeafList}) {
        for (const KorvTreeLeaf &leaf : Leaves(list))
            if (leaf.pYinNode == wanted.pYinNode)
                return true;
    }
    return !CasesAbove(node, wanted).empty();
}

/* Asks what the answer's request says. */
void Ask(const Instance &instance, Answer *answer)
{
    const Place &place = answer->place;
    const KorvTreeNode *wanted = place.leaf != nullptr ? OrdinaryAt(*place.node) : place.node;
    answer->asked = instance.Find(answer->request->module) != nullptr;
    const KorvTreeNode *node = Ask(instance, *answer->request);
    answer->answered = node != nullptr && wanted != nullptr &&
                       QualifiedPath({{}, node, nullptr}) == QualifiedPath({{}, wanted, nullptr}) &&
                       (place.leaf == nullptr || Holds(*node, *place.leaf));
}

Answer AskFor(const Instance &instance, const Place &place)
{
    Answer answer = {place, MakeRequest(instance, place), false, false, false};
    if (!answer.request)
        return answer;
    Ask(instance, &answer);
    if (!answer.asked || answer.answered || place.leaf == nullptr)
        return answer;
    answer.toHolder = true;
    answer.request = MakeHolderRequest(instance, place);
    if (answer.request)
        Ask(instance, &answer);
    return answer;
}

void PrintLine(const char *label, const std::string &value)
{
    std::string line = label;
    PadTo(&line, LABEL_WIDTH, 1);
    std::printf("%s%s\n", line.c_str(), value.c_str());
}

std::string TreeText(const ModuleFile &file, const Place &place)
{
    if (!place.augment)
        return std::string("own tree of ") + file.pcModuleName;
    return "target tree of augment " + std::to_string(*place.augment) + " of " + file.pcModuleName + ", " +
           file.astAugment[*place.augment].acAugNodeName;
}

/* The node with its leaves, those of its cases included, and the names below it. */
void AddFound(TreeRows *rows, const KorvTreeNode &node, uint32_t indent)
{
    rows->AddNode(node, indent);
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
        rows->AddLeaf(leaf, indent + 1);
    for (const KorvTreeNode &child : Children(node))
        if (IsOrdinary(child))
            rows->AddNode(child, indent + 1);
        else
            AddFound(rows, child, indent + 1);
}

/* The leaf below its holder, with the choices and cases between them. */
void AddLeafBelow(TreeRows *rows, const KorvTreeNode &holder, const KorvTreeLeaf &leaf)
{
    uint32_t indent = 0;
    const KorvTreeNode *top = OrdinaryAt(holder);
    rows->AddNode(top != nullptr ? *top : holder, indent++);
    for (const KorvTreeNode *step : CasesAbove(top != nullptr ? *top : holder, leaf))
        rows->AddNode(*step, indent++);
    rows->AddLeaf(leaf, indent);
}

void PrintRequest(const Answer &answer)
{
    if (!answer.request) {
        PrintLine("pcPath", answer.toHolder ? "none: no host's lookup finds a leaf at the top of a module"
                                            : "none: no host's path names a choice or case");
        return;
    }
    PrintLine("pcModuleName", answer.request->module.name);
    if (!answer.request->module.revision.empty())
        PrintLine("pcRevision", answer.request->module.revision);
    PrintLine("pcPath", answer.request->path);
    PrintLine("pcXpathMain", answer.request->xpathMain);
    if (answer.toHolder)
        PrintLine("", "(this asks for the leaf's holder: the library does not find the leaf itself)");
    if (!answer.asked)
        PrintLine("", "(once " + answer.request->module.name + " is loaded: see --load)");
    else if (!answer.answered)
        PrintLine("", "(the library does not find it: see -v)");
}

void PrintAnswer(const ModuleFile &file, const Answer &answer, const Paint &paint)
{
    const Place &place = answer.place;
    bool isLeaf = place.leaf != nullptr;
    PrintLine(isLeaf ? "leaf" : KindName(*place.node), PlainPath(place));
    PrintLine("module", isLeaf ? place.leaf->pcModuleName : place.node->pcModuleName);
    PrintLine("tree", TreeText(file, place));
    PrintRequest(answer);
    std::printf("\n");
    TreeRows rows(place.node->pcModuleName, paint);
    if (isLeaf)
        AddLeafBelow(&rows, *place.node, *place.leaf);
    else
        AddFound(&rows, *place.node, 0);
    rows.Print();
}

void WriteAnswer(const ModuleFile &file, const Answer &answer, TreePlaces *places, JsonOut *json)
{
    const Place &place = answer.place;
    JsonOut &out = *json;
    TreeJson tree(&out, places);
    out.Object();
    out.Member("path", PlainPath(place));
    out.Member("module", place.leaf != nullptr ? place.leaf->pcModuleName : place.node->pcModuleName);
    out.NumberOrNull("task_id", TaskId(file));
    WritePlace(&out, places->Of(place));
    out.Key("tree");
    out.Object();
    out.Member("kind", place.augment ? "target" : "own");
    out.Member("module", file.pcModuleName);
    if (place.augment) {
        out.Member("augment", *place.augment);
        out.Member("target", file.astAugment[*place.augment].acAugNodeName);
    }
    out.EndObject();
    out.Key("request");
    if (answer.request) {
        out.Object();
        out.Member("module", answer.request->module.name);
        out.Member("revision",
                   answer.request->module.revision.empty() ? nullptr : answer.request->module.revision.c_str());
        out.Member("path", answer.request->path);
        out.Member("xpath_main", answer.request->xpathMain);
        out.Member("for_holder", answer.toHolder);
        out.Member("answered", answer.answered);
        out.EndObject();
    } else {
        out.Null();
    }
    out.Key("node");
    tree.Write(*place.node, place.augment, 1);
    out.Key("leaf");
    if (place.leaf != nullptr)
        tree.Write(*place.leaf);
    else
        out.Null();
    out.EndObject();
}

} // namespace

TreePlaces &Answers::PlacesIn(const ModuleFile &file)
{
    if (file_ != &file)
        places_ = std::make_unique<TreePlaces>(instance_, file, dirs_);
    file_ = &file;
    return *places_;
}

void Answers::WriteText(const ModuleFile &file, const Place &place)
{
    PrintAnswer(file, AskFor(instance_, place), paint_);
}

void Answers::WriteJson(const ModuleFile &file, const Place &place, JsonOut *out)
{
    WriteAnswer(file, AskFor(instance_, place), &PlacesIn(file), out);
}

void Answers::WriteText(const PathNode &node)
{
    if (node.place.node != nullptr)
        return WriteText(*node.file, node.place);
    PrintLine(KindOf(node.node), node.path);
    PrintLine("module", ModuleNameOf(node.node));
    PrintLine("tree", "none: no host's lookup finds it");
}

void Answers::WriteJson(const PathNode &node, JsonOut *out)
{
    if (node.place.node != nullptr)
        return WriteJson(*node.file, node.place, out);
    out->Object();
    out->Member("path", node.path);
    out->Member("module", ModuleNameOf(node.node));
    out->NumberOrNull("task_id", TaskId(*node.file));
    WritePlace(out, Places(dirs_).Of(node.node));
    for (const char *name : {"tree", "request", "node", "leaf"}) {
        out->Key(name);
        out->Null();
    }
    out->EndObject();
}

} // namespace inspect
