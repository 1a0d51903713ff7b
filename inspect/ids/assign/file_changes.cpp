#include "ids/assign/file_changes.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <map>

#include "base/failure.h"
#include "base/output_file.h"
#include "model/instance.h"

namespace inspect::ids {
namespace {

using Statements = std::span<const NewStatement>;

/* What one file gets, by statement. */
struct FilePlan {
    std::vector<std::pair<uint32_t, Statements>> statements;
    std::map<uint32_t, std::vector<Refinement>> refinements;
};

void Print(std::string_view text, FILE *file)
{
    (void)std::fwrite(text.data(), 1, text.size(), file);
}

void PrintChanged(const FileChange &change, FILE *file)
{
    size_t at = 0;
    for (const Edit &edit : change.edits) {
        Print(change.before.substr(at, edit.offset - at), file);
        Print(edit.text, file);
        at = edit.offset + edit.length;
    }
    Print(change.before.substr(at), file);
}

void RequireUnchanged(const FileChange &change)
{
    std::ifstream file(change.path, std::ios::binary);
    if (!file)
        throw Failure("cannot read '" + change.shown + "' again");
    std::array<char, 65536> block = {};
    std::string_view left = change.before;
    bool isSame = true;
    while (isSame && file) {
        file.read(block.data(), block.size());
        std::string_view now(block.data(), static_cast<size_t>(file.gcount()));
        isSame = left.starts_with(now);
        left.remove_prefix(isSame ? now.size() : 0);
    }
    if (!isSame || !left.empty())
        throw Failure("'" + change.shown + "' has changed while it was read");
}

/* Gives the first `count` files their old text again. Returns the end of the message about the failure. */
std::string Undone(const std::vector<FileChange> &changes, size_t count)
{
    std::string lost;
    for (size_t i = 0; i < count; ++i)
        try {
            NewFile old(changes[i].path, changes[i].shown);
            old.Write([&](FILE *file) { Print(changes[i].before, file); });
            old.TakeName();
        } catch (const Failure &failure) {
            lost += std::string(lost.empty() ? "" : ", ") + failure.what();
        }
    return lost.empty() ? "nothing is written" : "files are changed that cannot be changed back: " + lost;
}

} // namespace

std::vector<FileChange> ChangesOf(const Survey &survey, const Placement &placement, const Plan &plan)
{
    std::map<const QXYANG_FILE *, FilePlan> plans;
    for (size_t begin = 0, end = 0; begin < plan.statements.size(); begin = end) {
        uint32_t node = plan.statements[begin].node;
        while (end < plan.statements.size() && plan.statements[end].node == node)
            ++end;
        std::optional<Target> target = placement.Of(node);
        if (!target)
            continue;
        Statements statements(&plan.statements[begin], end - begin);
        FilePlan *file = &plans[target->spot.file];
        if (target->refine.empty())
            file->statements.emplace_back(target->spot.statement, statements);
        else
            file->refinements[target->spot.statement].push_back({target->refine, statements});
    }
    std::vector<FileChange> changes;
    for (const LoadedModule &module : survey.Models().Modules())
        for (const SourceFile &source : module.files) {
            auto found = plans.find(source.file);
            if (found == plans.end())
                continue;
            std::string shown = ShownPath(survey.Models().Dirs(), source.path);
            SourceEditor editor(source.file, shown);
            for (const auto &[statement, added] : found->second.statements)
                editor.Insert(statement, added);
            for (const auto &[uses, refinements] : found->second.refinements)
                editor.Refine(uses, refinements);
            changes.push_back({source.file, source.path, shown, editor.Text().Bytes(), editor.Finish()});
        }
    return changes;
}

void WriteChanges(const std::vector<FileChange> &changes)
{
    size_t done = 0;
    try {
        std::vector<NewFile> files;
        for (const FileChange &change : changes) {
            files.emplace_back(change.path, change.shown);
            files.back().Write([&change](FILE *file) { PrintChanged(change, file); });
        }
        for (const FileChange &change : changes)
            RequireUnchanged(change);
        for (; done < files.size(); ++done)
            files[done].TakeName();
    } catch (const Failure &failure) {
        throw Failure(std::string(failure.what()) + "; " + Undone(changes, done));
    }
}

} // namespace inspect::ids
