/* find: nodes and leaves, and how a host asks for them. */
#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/failure.h"
#include "commands/commands.h"
#include "line/model_options.h"
#include "model/load_causes.h"
#include "model/module_set.h"
#include "paths/answer.h"
#include "paths/path_rows.h"
#include "paths/search.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(WHAT is a path, a pattern of paths, or an id.

A path of a module may be plain (/interfaces/interface/mtu) or qualified with prefixes or
module names (/if:interfaces/if:interface); choices and cases have no component. It is looked
for in the module's own tree and in the target trees of its augments. 'pcPath' and
'pcXpathMain' are the two forms with which a host asks the library for the node.

Without a module, all modules in the directories of -d are looked through, with what their
augments add to others; without -d, those in the current one, or else those of
KORV_MODEL_PATH. '*' stands for any characters of a step, '?' for one, '**' for any number of
steps, and what does not begin with '/' fits the ends of paths. Of several paths that fit, the
rows of 'paths' are shown.

An id is that of a class (0x1001), with an attribute's behind a point (0x1001.6), or with
--sample that of a sample. All places are shown at which it stands.

Examples:
  korv-inspect find example-interfaces /interfaces/interface -d examples/yin
  korv-inspect find example-interfaces interfaces/interface/mtu -d examples/yin
  korv-inspect find example-interface-qos /if:interfaces/if:interface/ifq:traffic -d examples/yin
  korv-inspect find mtu -d examples/yin
  korv-inspect find '/interfaces/**/*octets' -d examples/yin
  korv-inspect find 0x1001.6 -d examples/yin
  korv-inspect find --sample 0x52 -d examples/yin)";

class FindCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override;
    void Understand() override;
    int Run() override;

  private:
    bool IsOnePath() const;
    int FindPath() const;
    void Print(const Instance &instance, const std::vector<PathNode> &found) const;

    ModelOptions options_;
    std::string what_;
    std::string sample_;
    std::optional<IdQuery> id_;
};

void FindCommand::AddTo(CLI::App *app)
{
    options_.AddCommon(app);
    options_.AddWords(app, "WHAT", "[MODULE] PATH|PATTERN|ID",
                      "What to find, behind its module or file if that is known");
    app->add_option("--sample", sample_, "Find the nodes with this sample id")->option_text("ID")->check(NotEmpty);
    options_.AddFormats(app, {"text", "json"});
}

void FindCommand::Understand()
{
    std::vector<std::string> &words = options_.Words();
    if (sample_.empty() && words.empty())
        throw CLI::ValidationError("WHAT is required: a path, a pattern or an id");
    if (words.size() > (sample_.empty() ? 2U : 1U))
        throw CLI::ValidationError(sample_.empty() ? "name one module at most, and one thing to find"
                                                   : "with --sample, name one module at most");
    if (sample_.empty()) {
        what_ = words.back();
        words.pop_back();
        id_ = ToIdQuery(what_);
    } else {
        id_ = ToIdQuery(sample_, true);
    }
    if (words.empty() && (what_.ends_with(".yin") || what_.ends_with(".yang")))
        throw CLI::ValidationError("'" + what_ + "' looks like a file: say behind it what to find");
    options_.Understand();
}

/* A path of one module: its place is told, also when it is that of a choice, or below a node of another module. */
bool FindCommand::IsOnePath() const
{
    return !id_ && !options_.Request().modules.empty() && !PathPattern::HasWildcards(what_);
}

int FindCommand::FindPath() const
{
    const ModelRequest &request = options_.Request();
    Instance instance(request.dirs, request.verbose);
    LoadRequested(&instance, request);
    const ModuleFile &file = Loaded(instance, options_.Module());
    Place place = PathFinder(instance, file).Require(what_, request.notes);
    Answers answers(instance, request.dirs, options_.Colors());
    if (options_.OutputFormat() == Format::Json) {
        JsonOut out;
        answers.WriteJson(file, place, &out);
    } else {
        answers.WriteText(file, place);
    }
    return EXIT_OK;
}

void FindCommand::Print(const Instance &instance, const std::vector<PathNode> &found) const
{
    const SearchDirs &dirs = options_.Request().dirs;
    Answers answers(instance, dirs, options_.Colors());
    if (options_.OutputFormat() == Format::Json) {
        JsonOut out;
        out.Array();
        for (const PathNode &node : found)
            answers.WriteJson(node, &out);
        out.EndArray();
    } else if (!id_ && found.size() > 1) {
        PathRowReader reader(instance, dirs);
        std::unique_ptr<PathWriter> writer = NewTextWriter(ColumnsOf(USUAL_COLUMNS), options_.Colors());
        for (const PathNode &node : found)
            writer->Write(reader.Read(node));
    } else {
        for (const PathNode &node : found) {
            if (&node != &found.front())
                std::printf("\n");
            answers.WriteText(node);
        }
    }
}

int FindCommand::Run()
{
    if (IsOnePath())
        return FindPath();
    std::optional<PathPattern> pattern;
    if (!id_)
        pattern.emplace(what_);
    const ModelRequest &request = options_.Request();
    ModuleListing listing(request.dirs);
    Instance instance(request.dirs, request.verbose, listing.Handle());
    ModuleSet set = LoadSet(&instance, request, listing);
    Search search(instance, set);
    Print(instance, id_ ? search.Ids(*id_) : search.Paths(*pattern, what_));
    return set.failed == 0 ? EXIT_OK : EXIT_NOT_LOADED;
}

} // namespace

const CommandEntry FIND_COMMAND = {"find", "Look up nodes and leaves by path, pattern or id", HELP, Make<FindCommand>};

} // namespace inspect
