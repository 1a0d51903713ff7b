/* ids: the ids of models and their registry. */
#include <CLI/CLI.hpp>

#include <array>
#include <map>
#include <vector>

#include "base/text.h"
#include "commands/commands.h"
#include "commands/ids_action.h"
#include "ids/session.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Actions:
  assign  give ids to what has none, in the models' own files
  lock    write what the models' ids stand for into the registry, or extend it; ids that are
          gone from the models stay in it as reserved
  check   compare the models with the registry
  list    show the registry, of all modules or of those that are named

The registry is the file korv-ids.json in the directory that is searched first, or the one of
--registry. It belongs into version control, beside the models: it has one id a line.

'lock' writes nothing when an id has another meaning than in the registry: 'check' names each
of them. With --accept the models are right, and what the registry has is reserved.

Examples:
  korv-inspect ids check --all -d examples/yin
  korv-inspect ids list -d examples/yin --by path
  korv-inspect ids assign --all -d examples/yin --dry-run)";

constexpr std::array ACTIONS = {&IDS_ASSIGN, &IDS_LOCK, &IDS_CHECK, &IDS_LIST};

/* What CLI11 says of a word that is no action; "" for one that is. */
std::string ActionFault(const std::string &name)
{
    NearestName nearest(name);
    for (const IdsActionEntry *entry : ACTIONS) {
        if (name == entry->name)
            return "";
        nearest.Offer(entry->name);
    }
    return "there is no action '" + name + "'" + nearest.Hint();
}

class IdsCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override;
    void Understand() override;
    int Run() override { return chosen_->Run(options_); }

  private:
    void RefuseOthersOptions() const;

    IdsOptions options_;
    std::string action_;
    const CLI::App *app_ = nullptr;
    std::array<std::unique_ptr<IdsAction>, ACTIONS.size()> actions_;
    std::map<const CLI::Option *, const char *> owners_; /* names of the actions that have options of their own */
    IdsAction *chosen_ = nullptr;
};

void IdsCommand::AddTo(CLI::App *app)
{
    app_ = app;
    app->add_option("ACTION", action_, "What to do")
        ->option_text("assign|lock|check|list")
        ->required()
        ->check(CLI::Validator(ActionFault, ""));
    options_.models.AddCommon(app);
    options_.models.AddModules(app, "Modules whose ids are meant");
    app->add_flag("--all", options_.all, "Every module of the directories");
    app->add_option("--registry", options_.registry, "The registry (korv-ids.json in the first directory)")
        ->option_text("FILE");
    options_.models.AddFormats(app, {"text", "json", "csv"});
    for (size_t i = 0; i < ACTIONS.size(); ++i) {
        actions_[i] = ACTIONS[i]->make();
        size_t before = app->get_options().size();
        actions_[i]->AddTo(app);
        std::vector<CLI::Option *> all = app->get_options();
        for (size_t option = before; option < all.size(); ++option)
            owners_[all[option]] = ACTIONS[i]->name;
    }
}

/* In the configuration file the options of all actions stand in one section. */
void IdsCommand::RefuseOthersOptions() const
{
    for (const CLI::Option *option : app_->parse_order())
        if (auto owner = owners_.find(option); owner != owners_.end() && action_ != owner->second)
            throw CLI::ValidationError(option->get_name() + " is an option of 'ids " + owner->second + "'");
}

void IdsCommand::Understand()
{
    RefuseOthersOptions();
    options_.models.Understand();
    if (options_.models.OutputFormat() == Format::Csv && action_ != "list")
        throw CLI::ValidationError("'ids list' alone writes csv");
    options_.isRegistryGiven = !options_.registry.empty();
    if (!options_.isRegistryGiven)
        options_.registry = ids::DefaultRegistryPath(options_.models.Request().dirs);
    for (size_t i = 0; i < ACTIONS.size(); ++i)
        if (action_ == ACTIONS[i]->name)
            chosen_ = actions_[i].get();
    chosen_->Understand(options_);
}

} // namespace

void RequireModules(const IdsOptions &options)
{
    if (options.all == !options.models.Request().modules.empty())
        throw CLI::ValidationError("name the modules, or give --all");
}

const CommandEntry IDS_COMMAND = {"ids", "Give ids, and keep what they stand for in a registry", HELP,
                                  Make<IdsCommand>};

} // namespace inspect
