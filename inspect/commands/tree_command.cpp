/* tree: a module's class trees. */
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/child_process.h"
#include "base/failure.h"
#include "base/temporary_folder.h"
#include "commands/commands.h"
#include "line/model_options.h"
#include "model/instance.h"
#include "model/load_causes.h"
#include "model/path_finder.h"
#include "model/schema_scan.h"
#include "tree/own_rows.h"
#include "tree/tree_json.h"
#include "tree/tree_view.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(A node's line has its class id, sample id, own keys and ancestor keys (attribute ids);
a leaf's line has "*" for a key or "-", the name, the field id, the built-in type, and
then datatype, range, index map and reference key where the model has them. For each
augment the text shows the way to its target and what the module adds there; --full
shows the whole tree that a device keeps for it. --own leaves out, in every format, what
other modules define and the copies of what augments extend: each node comes once.

Examples:
  korv-inspect tree example-interfaces -d examples/yin
  korv-inspect tree example-interfaces -d examples/yin --depth 2
  korv-inspect tree example-interfaces -d examples/yin --path /interfaces/interface/address
  korv-inspect tree example-interface-qos -d examples/yin --own --format json
  korv-inspect tree example-interfaces -d examples/yin --format dot | dot -Tsvg -o tree.svg
  korv-inspect tree example-interfaces -d examples/yin --format dot --classes --depth 2)";

/* What of the trees is to be shown. */
struct Selection {
    std::string path;   /* "": everything */
    uint32_t depth = 0; /* levels of nodes, 0: all */
    bool full = false;
    bool own = false;
    bool classes = false; /* of graphs: nothing else */
};

TreeView EmptyView(const Instance &instance, const ModuleFile &file, const Selection &selection)
{
    TreeView view = {};
    view.module = file.pcModuleName;
    view.revision = instance.Revision(view.module);
    view.taskId = TaskId(file);
    view.depth = selection.depth;
    view.full = selection.full;
    view.classes = selection.classes;
    return view;
}

/* Everything that the module has. */
TreeView WholeView(const Instance &instance, const ModuleFile &file, const Selection &selection)
{
    TreeView view = EmptyView(instance, file, selection);
    view.whole = true;
    view.origin.first = file.pstOriginTree;
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i) {
        const TELMYANG_AUGMENT_INFO_S &augment = file.astAugment[i];
        view.augments.push_back({i, augment.acAugNodeName, {augment.pstSelfTree, true}, {augment.pstTargetTree, true}});
        ForEachChild(augment.pAugNode, [&view](QY_NODE *added) { view.augments.back().added.insert(NameOf(added)); });
    }
    if (selection.own)
        view.own = std::make_shared<OwnRows>(view);
    return view;
}

/* The node at --path, or the one that holds the leaf there. */
TreeView PathView(const Instance &instance, const ModuleFile &file, const Selection &selection, const Notes &notes)
{
    Place place = PathFinder(instance, file).Require(selection.path, notes);
    TreePart part = {place.node, false};
    TreeView view = EmptyView(instance, file, selection);
    if (place.augment)
        view.augments.push_back({*place.augment, file.astAugment[*place.augment].acAugNodeName, {}, part});
    else
        view.origin = part;
    return view;
}

/* One module is one object, several are an array of them. */
void PrintJson(const Instance &instance, const ModelRequest &request, const std::vector<TreeView> &views)
{
    JsonOut out;
    if (views.size() > 1)
        out.Array();
    for (size_t i = 0; i < views.size(); ++i) {
        TreePlaces places(instance, Loaded(instance, request.modules[i]), request.dirs);
        TreeJson(&out, &places).Write(views[i]);
    }
    if (views.size() > 1)
        out.EndArray();
}

void PrintText(const std::vector<TreeView> &views)
{
    for (const TreeView &view : views) {
        if (&view != &views.front())
            std::printf("\n");
        WriteTreeText(view);
    }
}

/* The graph as Graphviz draws it. */
std::string Drawn(const std::string &graph)
{
    TemporaryFolder folder;
    Finished dot = RunProgram({"dot", "-Tsvg"}, graph, folder.Make());
    if (dot.startError == ENOENT)
        throw BrokenRun(
            "SVG is drawn by Graphviz, and there is no program 'dot': install graphviz, or give --format dot");
    std::string why = dot.startError != 0 ? std::strerror(dot.startError) : dot.err.substr(0, dot.err.find('\n'));
    if (dot.startError != 0 || dot.signal != 0 || dot.exitCode != 0)
        throw BrokenRun("'dot' did not draw the graph" + (why.empty() ? "" : ": " + why));
    return dot.out;
}

class TreeCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModules(app, "Modules, their files, or - for standard input", true);
        app->add_option("--path", selection_.path, "Show this node and what is below it")
            ->option_text("PATH")
            ->check(NotEmpty);
        app->add_option("--depth", selection_.depth, "Show this many levels of nodes")
            ->option_text("N")
            ->check(CLI::Range(1U, 1000U));
        app->add_flag("--full", selection_.full, "Show the whole target tree of each augment");
        app->add_flag("--own", selection_.own, "Show what the module itself defines, each node once");
        app->add_flag("--classes", selection_.classes, "Of a graph: show classes alone, without their leaves");
        options_.AddFormats(app, {"text", "json", "dot", "svg"});
    }

    void Understand() override
    {
        options_.Understand();
        bool isGraph = options_.OutputFormat() == Format::Dot || options_.OutputFormat() == Format::Svg;
        if (options_.Request().modules.size() > 1 && isGraph)
            throw CLI::ValidationError("a graph shows one module: name one only");
        if (selection_.classes && !isGraph)
            throw CLI::ValidationError("--classes is of graphs: give --format dot or svg");
        if (selection_.own && (selection_.full || !selection_.path.empty()))
            throw CLI::ValidationError("--own shows whole modules without copies: give neither --full nor --path");
    }

    int Run() override;

  private:
    ModelOptions options_;
    Selection selection_;
};

int TreeCommand::Run()
{
    const ModelRequest &request = options_.Request();
    Instance instance(request.dirs, request.verbose);
    LoadRequested(&instance, request);
    std::vector<TreeView> views;
    for (const ModuleKey &module : request.modules) {
        const ModuleFile &file = Loaded(instance, module);
        views.push_back(selection_.path.empty() ? WholeView(instance, file, selection_)
                                                : PathView(instance, file, selection_, request.notes));
        views.back().paint = options_.Colors();
    }
    if (options_.OutputFormat() == Format::Json)
        PrintJson(instance, request, views);
    else if (options_.OutputFormat() == Format::Dot)
        std::fputs(TreeDot(views.front()).c_str(), stdout);
    else if (options_.OutputFormat() == Format::Svg)
        std::fputs(Drawn(TreeDot(views.front())).c_str(), stdout);
    else
        PrintText(views);
    return EXIT_OK;
}

} // namespace

const CommandEntry TREE_COMMAND = {"tree", "Show a module's class trees", HELP, Make<TreeCommand>};

} // namespace inspect
