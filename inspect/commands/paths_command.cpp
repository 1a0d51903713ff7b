/* paths: what modules define, a row a node. */
#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>

#include "base/failure.h"
#include "base/text.h"
#include "commands/commands.h"
#include "line/model_options.h"
#include "model/module_set.h"
#include "model/schema_scan.h"
#include "paths/path_rows.h"
#include "paths/search.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Each node and leaf that the modules define comes once: those of their own trees, of
operations and notifications, and what their augments add to other modules. Without a module,
all modules in the directories of -d are listed (without -d, those in the current one, or else
those of KORV_MODEL_PATH); what cannot be loaded is said and left out.

In PATTERN, '*' stands for any characters of a step, '?' for one, and '**' for any number of
steps. A step may have a module or prefix in front of a colon. A pattern that does not begin
with '/' fits the ends of paths: 'mtu' every node of that name. Behind modules, a word is the
pattern if it has a '*' or '?' or begins with '/'.

Text has these columns unless --columns names others: class id, attribute id, '*' for a key,
kind, built-in type, path, what the type allows, units. JSON is an object a line.

Examples:
  korv-inspect paths example-interfaces -d examples/yin
  korv-inspect paths example-interfaces '/interfaces/interface/*' -d examples/yin
  korv-inspect paths mtu -d examples/yin --all
  korv-inspect paths -d examples/yin --keys --columns class_id,field_id,path,file,line
  korv-inspect paths -d examples/yin --regex 'octets$' --format csv > octets.csv)";

/* Which rows are wanted, beside the pattern. */
struct Filter {
    std::optional<uint32_t> classId;
    std::string type;
    std::vector<std::string> modules;
    bool keys = false;
    std::optional<PathExpression> expression;

    /* Looks at what costs least first. */
    bool Fits(const PathNode &node, PathRowReader *reader) const
    {
        if (classId && node.ClassId() != *classId)
            return false;
        if (keys && !node.IsKey())
            return false;
        if (expression && !expression->Fits(node.path))
            return false;
        if (type.empty())
            return true;
        TypeText text = reader->TypeOf(node);
        return text.base == type || text.written == type;
    }

    bool HasModule(const std::string &name) const
    {
        return modules.empty() || std::find(modules.begin(), modules.end(), name) != modules.end();
    }
};

/* Of a negative answer: a module that is not loaded may have it. */
ExitCode ExitCodeOf(const ModuleSet &set)
{
    return set.failed == 0 ? EXIT_NEGATIVE : EXIT_NOT_LOADED;
}

class PathsCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override;
    void Understand() override;
    int Run() override;

  private:
    std::unique_ptr<PathWriter> NewWriter() const;
    void CheckModules(const ModuleSet &set) const;
    [[noreturn]] void FailEmpty(const Instance &instance, const ModuleSet &set) const;

    ModelOptions options_;
    bool all_ = false;
    std::string class_;
    std::string regex_;
    std::string columns_;
    Filter filter_;
    std::string patternText_;
    std::optional<PathPattern> pattern_;
    std::vector<const PathColumn *> chosen_;
};

void PathsCommand::AddTo(CLI::App *app)
{
    options_.AddCommon(app);
    options_.AddWords(app, "MODULE", "[@REVISION]|FILE ... [PATTERN]", "Modules to list, and which of their paths");
    app->add_flag("--all", all_, "List every module in the directories of -d: a word is the pattern");
    app->add_option("--regex", regex_, "List paths in which this regular expression is found")
        ->option_text("EXPR")
        ->check(NotEmpty);
    app->add_option("--class", class_, "List what has this class id")->option_text("ID")->check(NotEmpty);
    app->add_option("--type", filter_.type, "List leaves of this type, built-in or as the model has it")
        ->option_text("TYPE")
        ->check(NotEmpty);
    app->add_flag("--keys", filter_.keys, "List keys only");
    app->add_option("--module", filter_.modules, "List what this module defines; may be repeated")
        ->option_text("NAME")
        ->allow_extra_args(false)
        ->check(NotEmpty);
    app->add_option("--columns", columns_, "Columns of text or CSV, separated by commas")
        ->option_text("NAME,...")
        ->check(NotEmpty);
    options_.AddFormats(app, {"text", "jsonl", "csv"});
}

/* The last word is a pattern if it can be no module. */
bool IsPatternWord(const std::string &word)
{
    bool isFile = word.ends_with(".yin") || word.ends_with(".yang");
    return word.find_first_of("*?") != std::string::npos || (word.starts_with("/") && !isFile);
}

void PathsCommand::Understand()
{
    std::vector<std::string> &words = options_.Words();
    if (!words.empty() && (all_ || words.back().empty() || IsPatternWord(words.back()))) {
        patternText_ = words.back();
        pattern_.emplace(patternText_);
        words.pop_back();
    }
    if (all_ && !words.empty())
        throw CLI::ValidationError("name modules, or give --all");
    options_.Understand();
    if (!class_.empty()) {
        std::optional<IdQuery> query = ToIdQuery(class_);
        if (!query || query->fieldId)
            throw CLI::ValidationError("--class: '" + class_ + "' is no class id");
        filter_.classId = query->classId;
    }
    if (!regex_.empty())
        filter_.expression.emplace(regex_);
    if (!columns_.empty() && options_.OutputFormat() == Format::Json)
        throw CLI::ValidationError("JSON has all columns: give --columns with text or csv");
    if (!columns_.empty())
        chosen_ = ColumnsOf(columns_);
}

std::unique_ptr<PathWriter> PathsCommand::NewWriter() const
{
    if (options_.OutputFormat() == Format::Json)
        return NewJsonLinesWriter();
    if (options_.OutputFormat() == Format::Text)
        return NewTextWriter(chosen_.empty() ? ColumnsOf(USUAL_COLUMNS) : chosen_, options_.Colors());
    return NewCsvWriter(chosen_.empty() ? AllColumns() : chosen_);
}

/* A module of --module has to be one that is looked through. */
void PathsCommand::CheckModules(const ModuleSet &set) const
{
    for (const std::string &wanted : filter_.modules) {
        NearestName nearest(wanted);
        bool isThere = false;
        for (const ModuleFile *file : set.modules) {
            isThere = isThere || wanted == file->pcModuleName;
            nearest.Offer(file->pcModuleName);
        }
        if (!isThere)
            throw Failure("no module '" + wanted + "' is looked through" + nearest.Hint(), ExitCodeOf(set));
    }
}

/* Says what does not exist at all, with what is nearest to it; else, that nothing has all of what was asked for. */
void PathsCommand::FailEmpty(const Instance &instance, const ModuleSet &set) const
{
    Search search(instance, set);
    if (filter_.classId.value_or(0) != 0)
        (void)search.Ids({*filter_.classId, std::nullopt, false});
    if (pattern_)
        (void)search.Paths(*pattern_, patternText_);
    throw Failure("nothing in the modules is what was asked for", ExitCodeOf(set));
}

int PathsCommand::Run()
{
    const ModelRequest &request = options_.Request();
    ModuleListing listing(request.dirs);
    Instance instance(request.dirs, request.verbose, listing.Handle());
    ModuleSet set = LoadSet(&instance, request, listing);
    CheckModules(set);
    PathRowReader reader(instance, request.dirs);
    PathWalk walk(instance, pattern_ ? &*pattern_ : nullptr);
    std::unique_ptr<PathWriter> writer = NewWriter();
    bool isEmpty = true;
    for (const ModuleFile *file : set.modules)
        if (filter_.HasModule(file->pcModuleName))
            walk.Walk(*file, [&](const PathNode &node) {
                if (!filter_.Fits(node, &reader))
                    return;
                writer->Write(reader.Read(node));
                isEmpty = false;
            });
    if (isEmpty)
        FailEmpty(instance, set);
    return set.failed == 0 ? EXIT_OK : EXIT_NOT_LOADED;
}

} // namespace

const CommandEntry PATHS_COMMAND = {"paths", "List paths with all that is known of them", HELP, Make<PathsCommand>};

} // namespace inspect
