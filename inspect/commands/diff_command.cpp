/* diff: two versions of a module. */
#include <algorithm>
#include <cstdio>

#include "base/failure.h"
#include "base/json_out.h"
#include "base/text.h"
#include "commands/commands.h"
#include "diff/diff_compare.h"
#include "line/model_options.h"
#include "model/load_causes.h"

namespace inspect {
namespace {

constexpr const char *HELP = R"(Compares what a device makes of the two versions, deviations and augments applied. A
change is breaking when a host that addresses data by ids has to follow it:

  breaking    class or leaf with an id removed; class id, sample id, field id, type,
              datatype, index map or reference key changed; own or ancestor keys or their
              order changed; range narrowed or moved; enumeration value removed or changed
  compatible  added; moved or renamed under the same ids; an id where there was none;
              range widened; enumeration value added; task id changed

Either version may have several directories: one for what has changed, say, and the common one.

Example:
  korv-inspect diff example-interfaces --old examples/yin --new examples/yin)";

constexpr size_t MARK_WIDTH = 12; /* "compatible" and a gap */
constexpr size_t MAX_PATH_WIDTH = 60;

/* One version, loaded from its directories. The instance is gone when the model is made. */
DiffModel LoadVersion(const ModelRequest &version)
{
    Instance instance(version.dirs, version.verbose);
    LoadRequested(&instance, version);
    return MakeDiffModel(instance, Loaded(instance, version.modules.front()));
}

size_t CountBreaking(const std::vector<Change> &changes)
{
    return static_cast<size_t>(
        std::count_if(changes.begin(), changes.end(), [](const Change &change) { return change.breaking; }));
}

std::string OrNone(const std::string &text)
{
    return text.empty() ? "none" : text;
}

/* "class-removed" as words, with what it was or is. */
std::string ChangeText(const Change &change)
{
    std::string text = change.what;
    std::replace(text.begin(), text.end(), '-', ' ');
    if (change.what.ends_with("-moved"))
        return text + " to " + change.after;
    if (change.what.ends_with("-removed") || change.what.ends_with("-added")) {
        const std::string &id = change.before.empty() ? change.after : change.before;
        return text + (id.empty() ? "" : change.what.starts_with("leaf") ? " (field id " + id + ")" : " (" + id + ")");
    }
    return text + " " + OrNone(change.before) + " -> " + OrNone(change.after);
}

void PrintText(const std::string &module, const DiffModel &oldModel, const DiffModel &newModel,
               const std::vector<Change> &changes)
{
    std::printf("%s, revision %s -> %s\n", module.c_str(), OrNone(oldModel.revision).c_str(),
                OrNone(newModel.revision).c_str());
    size_t width = 0;
    for (const Change &change : changes)
        width = std::max(width, std::min(change.path.size(), MAX_PATH_WIDTH));
    for (const Change &change : changes) {
        std::string line = change.breaking ? "breaking" : "compatible";
        PadTo(&line, MARK_WIDTH);
        std::string path = change.path.empty() ? module : change.path;
        PadTo(&path, width);
        std::printf("%s%s  %s\n", line.c_str(), path.c_str(), Printable(ChangeText(change)).c_str());
    }
    if (changes.empty()) {
        std::printf("no difference\n");
        return;
    }
    size_t breaking = CountBreaking(changes);
    std::printf("%s, %zu compatible\n", Count(breaking, "breaking change").c_str(), changes.size() - breaking);
}

void PrintJson(const std::string &module, const DiffModel &oldModel, const DiffModel &newModel,
               const std::vector<Change> &changes)
{
    auto orNull = [](const std::string &text) { return text.empty() ? nullptr : text.c_str(); };
    JsonOut out;
    out.Object();
    out.Member("module", module);
    out.Member("old_revision", orNull(oldModel.revision));
    out.Member("new_revision", orNull(newModel.revision));
    out.Member("breaking", CountBreaking(changes));
    out.Member("compatible", changes.size() - CountBreaking(changes));
    out.Key("changes");
    out.Array();
    for (const Change &change : changes) {
        out.Object();
        out.Member("change", change.what);
        out.Member("breaking", change.breaking);
        out.Member("path", orNull(change.path));
        out.Member("old", orNull(change.before));
        out.Member("new", orNull(change.after));
        out.EndObject();
    }
    out.EndArray();
    out.EndObject();
}

class DiffCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModuleName(app);
        ModelOptions::AddDirOption(app, "--old", &oldDirs_, "Directory of the old version; may be repeated");
        ModelOptions::AddDirOption(app, "--new", &newDirs_, "Directory of the new version; may be repeated");
        options_.AddFormats(app, {"text", "json"});
    }

    void Understand() override { options_.Understand(); }

    int Run() override;

  private:
    ModelOptions options_;
    std::vector<std::string> oldDirs_;
    std::vector<std::string> newDirs_;
};

int DiffCommand::Run()
{
    DiffModel oldModel = LoadVersion(options_.RequestWith(oldDirs_));
    DiffModel newModel = LoadVersion(options_.RequestWith(newDirs_));
    std::vector<Change> changes = Compare(oldModel, newModel);
    const std::string &module = options_.Module().name;
    if (options_.OutputFormat() == Format::Json)
        PrintJson(module, oldModel, newModel, changes);
    else
        PrintText(module, oldModel, newModel, changes);
    return CountBreaking(changes) != 0 ? EXIT_NEGATIVE : EXIT_OK;
}

} // namespace

const CommandEntry DIFF_COMMAND = {"diff", "Compare two versions of a module", HELP, Make<DiffCommand>};

} // namespace inspect
