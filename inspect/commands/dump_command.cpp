/* dump: a tree as flat records. */
#include <CLI/CLI.hpp>
#include <optional>

#include "base/failure.h"
#include "commands/commands.h"
#include "dump/dump_records.h"
#include "line/model_options.h"
#include "model/instance.h"
#include "model/load_causes.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Nodes come level by level, choices and cases included. Augments are counted from 0, as
'tree' and 'modules' show them. CSV has a heading and one row a leaf.

Examples:
  korv-inspect dump example-interfaces -d examples/yin
  korv-inspect dump example-interfaces -d examples/yin --format csv > attributes.csv
  korv-inspect dump example-interface-qos -d examples/yin --augment 0 --self)";

/* The tree to dump. */
struct Selection {
    std::optional<uint32_t> augment; /* none: the module's own */
    bool self = false;               /* of an augment: its self tree */
};

class Dump {
  public:
    explicit Dump(const YangDumpRequest &request)
    {
        /* A tree that is not there is an empty dump, whichever way the library says so. */
        (void)YANGLIB_DumpYangModuleDataEx(&request, &records_, &count_);
    }
    ~Dump()
    {
        YANGLIB_FreeDumpDataEx(records_, count_);
        ZOR_Free_F(records_, __FILE__, __LINE__);
    }
    Dump(const Dump &) = delete;
    Dump &operator=(const Dump &) = delete;

    DumpRecords Records() const { return {records_, count_}; }

  private:
    YangDumpNodeData **records_ = nullptr;
    uint32_t count_ = 0;
};

KorvTreeNode *AugmentTree(const ModuleFile &file, const Selection &selection)
{
    if (*selection.augment >= file.ucAugmentNum)
        throw Failure(std::string("module '") + file.pcModuleName + "' has " + std::to_string(file.ucAugmentNum) +
                      " augments, counted from 0");
    const TELMYANG_AUGMENT_INFO_S &augment = file.astAugment[*selection.augment];
    return selection.self ? augment.pstSelfTree : augment.pstTargetTree;
}

/* Why there is nothing to dump. */
std::string NothingText(const ModuleFile &file, const Selection &selection)
{
    if (selection.augment)
        return "augment " + std::to_string(*selection.augment) + " has no " + (selection.self ? "self" : "target") +
               " tree";
    return std::string("module '") + file.pcModuleName + "' has no tree of its own" +
           (file.ucAugmentNum != 0 ? ": --augment N dumps the tree of an augment" : "");
}

class DumpCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModule(app);
        app->add_option("--augment", augment_, "Dump this augment's target tree, the first is 0")
            ->option_text("N")
            ->check(CLI::Range(int64_t{0}, int64_t{KORV_AUGMENT_NUM} - 1));
        app->add_flag("--self", selection_.self, "With --augment: the augment's self tree");
        app->add_flag("--target", target_, "With --augment: its target tree, as without this");
        options_.AddFormats(app, {"text", "json", "csv"});
    }

    void Understand() override
    {
        options_.Understand();
        if ((selection_.self || target_) && augment_ < 0)
            throw CLI::ValidationError("--self and --target say which tree of an augment: give --augment N, too");
        if (selection_.self && target_)
            throw CLI::ValidationError("give --self or --target, not both");
        if (augment_ >= 0)
            selection_.augment = static_cast<uint32_t>(augment_);
    }

    int Run() override;

  private:
    ModelOptions options_;
    Selection selection_;
    int64_t augment_ = -1;
    bool target_ = false;
};

int DumpCommand::Run()
{
    Instance instance(options_.Request().dirs, options_.Request().verbose);
    LoadRequested(&instance, options_.Request());
    const ModuleKey &key = options_.Module();
    const ModuleFile &file = Loaded(instance, key);
    YangDumpRequest request = {instance.Local(), key.name.c_str(), key.revision.c_str(), nullptr, 0};
    if (selection_.augment) {
        request.pstAugmentTree = AugmentTree(file, selection_);
        request.bIsAugment = 1;
    }
    Dump dump(request);
    if (dump.Records().empty())
        options_.Request().notes.Say(NothingText(file, selection_));
    TreePlaces places(instance, file, options_.Request().dirs);
    const KorvTreeNode *first = selection_.augment ? request.pstAugmentTree : file.pstOriginTree;
    if (options_.OutputFormat() == Format::Json)
        WriteDumpJson(dump.Records(), {TaskId(file), NodesInDumpOrder(first), selection_.augment, &places});
    else if (options_.OutputFormat() == Format::Csv)
        WriteDumpCsv(dump.Records());
    else
        WriteDumpText(dump.Records());
    return 0;
}

} // namespace

const CommandEntry DUMP_COMMAND = {"dump", "Show a tree as the flat records of a dump", HELP, Make<DumpCommand>};

} // namespace inspect
