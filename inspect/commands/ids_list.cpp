/* ids list: what the registry has. */
#include <CLI/CLI.hpp>

#include "base/failure.h"
#include "commands/ids_action.h"
#include "ids/listing.h"

namespace inspect {
namespace {

class ListIds final : public IdsAction {
  public:
    void AddTo(CLI::App *app) override
    {
        app->add_option("--by", by_, "list: the order of the entries (id)")
            ->option_text("id|path")
            ->check(CLI::IsMember({"id", "path"}));
    }

    void Understand(const IdsOptions &options) override
    {
        for (const ModuleKey &module : options.models.Request().modules)
            modules_.push_back(module.name);
    }

    int Run(const IdsOptions &options) override
    {
        ids::Registry all = ids::LoadRegistry(options.registry, ids::IfMissing::Fail);
        ids::Registry registry = Narrowed(all, modules_);
        for (const std::string &module : modules_)
            if (ids::Registry own = Narrowed(all, {module});
                own.ranges.empty() && own.classes.empty() && own.fields.empty())
                options.models.Request().notes.Say("the registry has nothing of module '" + module + "'");
        ids::By by = by_ == "id" ? ids::By::Id : ids::By::Path;
        if (options.models.OutputFormat() == Format::Json)
            ListJson(registry, by);
        else if (options.models.OutputFormat() == Format::Csv)
            ListCsv(registry, by);
        else
            ListText(registry, by);
        return EXIT_OK;
    }

  private:
    std::string by_ = "id";
    std::vector<std::string> modules_;
};

} // namespace

const IdsActionEntry IDS_LIST = {"list", MakeAction<ListIds>};

} // namespace inspect
