/* ids assign: ids for what has none, in the authors' own files. */
#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "commands/ids_action.h"
#include "ids/assign/assign_report.h"
#include "ids/assign/class_ids.h"
#include "ids/assign/type_table.h"
#include "ids/assign/unified_diff.h"

namespace inspect {
namespace {

class AssignIds final : public IdsAction {
  public:
    void AddTo(CLI::App *app) override;
    void Understand(const IdsOptions &options) override;
    int Run(const IdsOptions &options) override;

  private:
    void ReadDatatypes();

    ids::AssignOptions assign_;
    std::string rule_ = "leaf-holders";
    std::string firstClass_ = "0x1000";
    std::vector<std::string> datatypes_;
    bool isDryRun_ = false;
};

void AssignIds::AddTo(CLI::App *app)
{
    auto addList = [app](const char *name, std::vector<std::string> *values, const char *description) {
        return app->add_option(name, *values, description)->allow_extra_args(false);
    };
    app->add_option("--classes", rule_, "assign: which nodes become classes (leaf-holders)")
        ->option_text("lists|leaf-holders|all")
        ->check(CLI::IsMember({"lists", "leaf-holders", "all"}));
    addList("--include", &assign_.include, "assign: this node becomes a class; may be repeated")->option_text("NODE");
    addList("--exclude", &assign_.exclude, "assign: no ids at this node and below it; may be repeated")
        ->option_text("NODE");
    addList("--datatype", &datatypes_, "assign: datatype of a type that has none; may be repeated")
        ->option_text("TYPE=ID");
    app->add_option("--first-class", firstClass_, "assign: first class id where the registry has no range (0x1000)")
        ->option_text("ID");
    app->add_flag("--dry-run", isDryRun_, "assign: show what would change as a diff");
}

void AssignIds::ReadDatatypes()
{
    for (const std::string &text : datatypes_) {
        size_t equals = text.find('=');
        std::string type = text.substr(0, equals);
        std::string id = equals != std::string::npos ? text.substr(equals + 1) : "";
        Number number = ReadNumber(id);
        if (!number.wellFormed || !number.fits || number.value == 0)
            throw CLI::ValidationError("--datatype: '" + text + "' is not TYPE=ID");
        if (!ids::IsTableType(type))
            throw CLI::ValidationError("--datatype: '" + type +
                                       "' is neither MODULE:TYPEDEF nor a type without a datatype of its own");
        assign_.datatypes[type] = id;
    }
}

void AssignIds::Understand(const IdsOptions &options)
{
    RequireModules(options);
    if (options.models.TakesStandardInput())
        throw CLI::ValidationError("'ids assign' changes files: standard input is none");
    Number first = ReadNumber(firstClass_);
    if (!first.wellFormed || !first.fits || first.value == 0 || first.value > ids::LAST_CLASS_ID)
        throw CLI::ValidationError("--first-class: '" + firstClass_ + "' is no class id");
    assign_.firstClassId = first.value;
    assign_.rule = rule_ == "lists" ? ids::ClassRule::Lists
                   : rule_ == "all" ? ids::ClassRule::All
                                    : ids::ClassRule::LeafHolders;
    ReadDatatypes();
}

int AssignIds::Run(const IdsOptions &options)
{
    ids::Registry registry = ids::LoadRegistry(options.registry, ids::IfMissing::Empty);
    if (std::error_code error; options.isRegistryGiven && !std::filesystem::exists(options.registry, error))
        options.models.Request().notes.Say("there is no registry '" + options.registry +
                                           "': ids of nodes that have gone are not known");
    ids::ModelSet models(options.models.Request(), options.all);
    ids::Survey survey(models);
    ids::Placement placement(survey);
    ids::Plan plan = ids::MakePlan(survey, placement, registry, assign_);
    std::vector<ids::FileChange> changes = ids::ChangesOf(survey, placement, plan);
    ids::AssignReport report = ids::MakeReport(survey, plan, changes, isDryRun_);
    for (const auto &[type, id] : assign_.datatypes)
        if (std::string fault = ids::TypeFault(models, type); !fault.empty())
            options.models.Request().notes.Say("datatype '" + type + "': " + fault);
    bool asJson = options.models.OutputFormat() == Format::Json;
    if (!isDryRun_)
        ids::WriteChanges(changes);
    else if (!asJson)
        for (const ids::FileChange &change : changes)
            ids::WriteUnifiedDiff(change, stdout);
    std::fflush(stdout);
    if (asJson)
        ids::WriteReportJson(report);
    else
        ids::WriteReportText(report, isDryRun_ ? stderr : stdout);
    if (!asJson && !isDryRun_ && !changes.empty())
        std::printf("'korv-inspect ids lock' keeps these ids in '%s'\n", Printable(options.registry).c_str());
    return EXIT_OK;
}

} // namespace

const IdsActionEntry IDS_ASSIGN = {"assign", MakeAction<AssignIds>};

} // namespace inspect
