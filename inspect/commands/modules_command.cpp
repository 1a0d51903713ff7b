/* modules: what is loaded. */
#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/json_out.h"
#include "base/text.h"
#include "commands/commands.h"
#include "line/model_options.h"
#include "model/instance.h"
#include "model/load_causes.h"
#include "model/tree_places.h"
#include "model/trees.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Example:
  korv-inspect modules example-interfaces example-interface-qos -d examples/yin)";

std::string SizeText(const KorvTreeNode *first)
{
    if (first == nullptr)
        return "none";
    TreeSize size = SizeOf(Chain(first));
    return Count(size.nodes, "node") + " (" + Count(size.classes, "class") + "), " + Count(size.leaves, "leaf");
}

void PrintText(const Instance &instance)
{
    for (const ModuleFile *file : instance.Registered()) {
        const char *revision = instance.Revision(file->pcModuleName);
        std::printf("%s", file->pcModuleName);
        if (revision != nullptr)
            std::printf(", revision %s", revision);
        if (file->pcRevision != nullptr)
            std::printf(", registered as @%s", file->pcRevision);
        if (TaskId(*file) != 0)
            std::printf(", task id %u", TaskId(*file));
        std::printf("\n  own tree: %s\n", SizeText(file->pstOriginTree).c_str());
        for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
            const TELMYANG_AUGMENT_INFO_S &augment = file->astAugment[i];
            std::printf("  augment %u of %s\n    self tree: %s\n    target tree: %s\n", i, augment.acAugNodeName,
                        SizeText(augment.pstSelfTree).c_str(), SizeText(augment.pstTargetTree).c_str());
        }
    }
}

void WriteSize(JsonOut *out, const char *name, const KorvTreeNode *first)
{
    TreeSize size = SizeOf(Chain(first));
    out->Key(name);
    out->Object();
    out->Member("nodes", size.nodes);
    out->Member("classes", size.classes);
    out->Member("leaves", size.leaves);
    out->EndObject();
}

void PrintJson(const Instance &instance, const SearchDirs &dirs)
{
    JsonOut out;
    out.Array();
    for (const ModuleFile *file : instance.Registered()) {
        TreePlaces places(instance, *file, dirs);
        out.Object();
        out.Member("name", file->pcModuleName);
        out.Member("revision", instance.Revision(file->pcModuleName));
        out.Member("registered_revision", file->pcRevision);
        out.NumberOrNull("task_id", TaskId(*file));
        WriteSize(&out, "origin", file->pstOriginTree);
        out.Key("augments");
        out.Array();
        for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
            out.Object();
            out.Member("target", file->astAugment[i].acAugNodeName);
            WriteSize(&out, "self", file->astAugment[i].pstSelfTree);
            WriteSize(&out, "target_tree", file->astAugment[i].pstTargetTree);
            WritePlace(&out, places.OfAugment(i));
            out.EndObject();
        }
        out.EndArray();
        WritePlace(&out, places.OfModule());
        out.EndObject();
    }
    out.EndArray();
}

class ModulesCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModules(app, "Modules to load");
        options_.AddFormats(app, {"text", "json"});
    }

    void Understand() override
    {
        options_.Understand();
        if (options_.Request().modules.empty() && options_.Request().loads.empty())
            throw CLI::ValidationError("name a module to load");
    }

    int Run() override;

  private:
    ModelOptions options_;
};

int ModulesCommand::Run()
{
    Instance instance(options_.Request().dirs, options_.Request().verbose);
    LoadRequested(&instance, options_.Request());
    if (options_.OutputFormat() == Format::Json)
        PrintJson(instance, options_.Request().dirs);
    else
        PrintText(instance);
    return 0;
}

} // namespace

const CommandEntry MODULES_COMMAND = {"modules", "List what is loaded", HELP, Make<ModulesCommand>};

} // namespace inspect
