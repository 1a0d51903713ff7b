#include "check/report/ignores.h"

#include <qxyang.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>

#include "check/report/marked_statements.h"
#include "model/instance.h"
#include "model/model_file.h"
#include "model/module_search.h"

namespace inspect {
namespace {

constexpr uint64_t MAX_FILE_SIZE = uint64_t{256} << 20U; /* that a load reads */

bool HasMark(std::string_view text)
{
    return text.find(IGNORE_MARK) != std::string_view::npos;
}

/* A look at the bytes, since few files are worth reading as a model. */
bool FileHasMark(const std::string &path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) || std::filesystem::file_size(path, error) > MAX_FILE_SIZE)
        return false;
    std::ifstream stream(path, std::ios::binary);
    return HasMark(std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()));
}

/* What is wrong with the comment itself, or "". */
std::string FaultOf(const IgnoreMark &mark)
{
    if (mark.rule.empty())
        return "a comment that hides findings names a rule: '" + std::string(IGNORE_MARK) + " RULE: reason'";
    const RuleRow *rule = FindRule(mark.rule);
    if (rule == nullptr)
        return NoRuleText(mark.rule);
    if (rule == &*Rule("load-failed") || rule == &*Rule("bad-ignore") || rule == &*Rule("unused-ignore"))
        return "findings of " + mark.rule + " cannot be hidden by a comment";
    if (mark.reason.empty())
        return "the comment gives no reason to hide findings of " + mark.rule + ": '" + std::string(IGNORE_MARK) + " " +
               mark.rule + ": reason'";
    return "";
}

/* Hides the findings of one file. */
class FileIgnores {
  public:
    FileIgnores(const ModelFile &file, bool unusedCount, bool all)
        : file_(file), statements_(file), unusedCount_(unusedCount), all_(all)
    {
        for (const IgnoreMark &mark : statements_.Marks())
            states_.push_back({FindRule(mark.rule), FaultOf(mark), false});
    }

    /* True if a comment hides the finding; all that do are in use. */
    bool Hides(const Finding &finding)
    {
        bool hidden = false;
        for (const size_t i : statements_.MarksAround(finding.cause.line, finding.cause.column)) {
            if (!states_[i].fault.empty() || states_[i].rule != &*finding.rule)
                continue;
            states_[i].used = true;
            hidden = true;
        }
        return hidden;
    }

    void AddFindings(std::vector<Finding> *findings) const
    {
        for (size_t i = 0; i < states_.size(); ++i) {
            const IgnoreMark &mark = statements_.Marks()[i];
            const State &state = states_[i];
            if (!state.fault.empty())
                findings->push_back({"bad-ignore", Module(), {file_.Shown(), mark.line, mark.column, state.fault}});
            else if (!state.used && unusedCount_ && (all_ || !state.rule->isOfAll))
                findings->push_back(
                    {"unused-ignore",
                     Module(),
                     {file_.Shown(), mark.line, mark.column, "the comment hides nothing: " + Why(mark)}});
        }
    }

  private:
    struct State {
        const RuleRow *rule;
        std::string fault;
        bool used;
    };

    static std::string Why(const IgnoreMark &mark)
    {
        return mark.covered ? "its statement has no finding of " + mark.rule : "it stands at no statement";
    }

    std::string Module() const
    {
        QXYANG_STATEMENT_S root = file_.Root();
        if (IsYang(root, "submodule"))
            return file_.ArgumentIn(root, "belongs-to");
        return root.pcArgument != nullptr ? root.pcArgument : "";
    }

    const ModelFile &file_;
    MarkedStatements statements_;
    bool unusedCount_;
    bool all_;
    std::vector<State> states_; /* one a mark */
};

} // namespace

void NoteMarkedFiles(const QY_CTX *schema, const QY_MOD *module, const SearchDirs &dirs, MarkedFiles *marked)
{
    for (const auto &[name, path] : FilesOf(module)) {
        const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema, name);
        uint64_t size = 0;
        const char *text = file != nullptr ? QXYANG_GetFileText(file, &size) : nullptr;
        if (text != nullptr && HasMark({text, size}))
            marked->insert(ShownPath(dirs, path));
    }
}

size_t Ignores::Apply(std::vector<Finding> *findings) const
{
    std::map<std::string, std::vector<size_t>> byFile;
    for (size_t i = 0; i < findings->size(); ++i)
        if (!(*findings)[i].cause.file.empty())
            byFile[(*findings)[i].cause.file].push_back(i);
    for (const std::string &file : marked_)
        byFile.try_emplace(file);

    std::map<std::string, std::string> paths; /* of files that stand elsewhere than a person named them */
    for (const auto &[path, shown] : dirs_.shown)
        paths[shown] = path;

    std::vector<bool> hidden(findings->size(), false);
    std::vector<Finding> more;
    for (const auto &[shown, indexes] : byFile) {
        auto elsewhere = paths.find(shown);
        const std::string &path = elsewhere != paths.end() ? elsewhere->second : shown;
        if (marked_.count(shown) == 0 && !FileHasMark(path))
            continue;
        ModelFile file = ModelFile::Read(path, shown, true);
        FileIgnores ignores(file, marked_.count(shown) != 0, all_);
        for (const size_t index : indexes)
            hidden[index] = ignores.Hides((*findings)[index]);
        ignores.AddFindings(&more);
    }
    std::vector<Finding> left;
    for (size_t i = 0; i < findings->size(); ++i)
        if (!hidden[i])
            left.push_back(std::move((*findings)[i]));
    size_t number = findings->size() - left.size();
    left.insert(left.end(), more.begin(), more.end());
    findings->swap(left);
    return number;
}

} // namespace inspect
