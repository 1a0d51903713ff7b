/* diff: two versions of a module. */
#include <algorithm>
#include <cstdio>

#include "commands.h"
#include "diff_compare.h"
#include "failure.h"
#include "json_out.h"
#include "load_causes.h"
#include "text.h"

namespace inspect {
namespace {

constexpr size_t MARK_WIDTH = 12; /* "compatible" and a gap */
constexpr size_t MAX_PATH_WIDTH = 60;

/* One version, loaded from its directories. The instance is gone when the model is made. */
DiffModel LoadVersion(const Arguments &args, const std::vector<std::string> &dirs)
{
    Arguments version = args;
    version.dirs.base = dirs;
    Instance instance(version.dirs, version.verbose);
    LoadRequested(&instance, version);
    return MakeDiffModel(instance, Loaded(instance, args.modules.front()));
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
    const size_t breaking = CountBreaking(changes);
    std::printf("%s, %zu compatible\n", Count(breaking, "breaking change").c_str(), changes.size() - breaking);
}

void PrintJson(const std::string &module, const DiffModel &oldModel, const DiffModel &newModel,
               const std::vector<Change> &changes)
{
    const auto orNull = [](const std::string &text) { return text.empty() ? nullptr : text.c_str(); };
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

} // namespace

int RunDiff(const Arguments &args)
{
    const DiffModel oldModel = LoadVersion(args, args.oldDirs);
    const DiffModel newModel = LoadVersion(args, args.newDirs);
    const std::vector<Change> changes = Compare(oldModel, newModel);
    const std::string &module = args.modules.front().name;
    if (args.format == Format::JSON)
        PrintJson(module, oldModel, newModel, changes);
    else
        PrintText(module, oldModel, newModel, changes);
    return CountBreaking(changes) != 0 ? EXIT_NEGATIVE : EXIT_OK;
}

} // namespace inspect
