#include "check/report/baseline.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "base/failure.h"
#include "base/output_file.h"
#include "base/text.h"
#include "check/report/baseline_reader.h"
#include "check/report/file_glob.h"

namespace inspect {
namespace {

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool EndsInWord(std::string_view text, std::string_view word)
{
    if (!text.ends_with(word))
        return false;
    size_t before = text.size() - word.size();
    return before == 0 || text[before - 1] == ' ' || text[before - 1] == '(';
}

std::string Key(const Baseline::Entry &entry)
{
    return entry.rule + "\n" + entry.module + "\n" + entry.file + "\n" + entry.text;
}

void WriteText(rapidjson::PrettyWriter<rapidjson::StringBuffer> *writer, const char *name, const std::string &text)
{
    writer->Key(name);
    writer->String(text.c_str());
}

/* The text without "line 12", "lines 3", "FILE.yin:12:3". */
std::string WithoutLines(const std::string &text)
{
    std::string without;
    for (size_t i = 0; i < text.size(); ++i) {
        bool isPlace = without.ends_with(".yin:") || without.ends_with(".yang:") || EndsInWord(without, "line ") ||
                       EndsInWord(without, "lines ");
        while (isPlace && i < text.size() &&
               (IsDigit(text[i]) || (text[i] == ':' && i + 1 < text.size() && IsDigit(text[i + 1]))))
            ++i;
        if (i < text.size())
            without += text[i];
    }
    return without;
}

/* The words that say which finding of its rule in its file it is. They do not depend on where the statement stands, on other
 * uses of its grouping, on other modules, and on the folder in which a run begins, as a text does. A file has at most one
 * finding of a rule as a whole. */
std::string WordsOf(const Finding &finding)
{
    if (!finding.statement.empty())
        return ValidUtf8(finding.statement);
    bool isOfFile = !finding.cause.file.empty() && finding.cause.line == 0;
    return isOfFile ? "" : ValidUtf8(WithoutLines(finding.cause.text));
}

} // namespace

std::string KeyOf(const Finding &finding, const std::string &file)
{
    return Key({finding.rule->name, finding.module, file, WordsOf(finding), 0});
}

Baseline::Baseline(const std::string &path) : folder_(std::filesystem::path(AbsolutePath(path)).parent_path().string())
{
}

std::string Baseline::FileOf(const Finding &finding) const
{
    if (finding.cause.file.empty())
        return "";
    if (finding.cause.file != last_.first) {
        std::filesystem::path file = AbsolutePath(finding.cause.file);
        last_ = {finding.cause.file, ValidUtf8(file.lexically_relative(folder_).generic_string())};
    }
    return last_.second;
}

void Baseline::Add(const Entry &entry)
{
    auto [same, isNew] = entries_.try_emplace(Key(entry), entry);
    if (!isNew)
        same->second.count += entry.count;
}

Baseline Baseline::Read(const std::string &path)
{
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw Failure("the baseline '" + path + "' is a directory", EXIT_USAGE);
    std::ifstream stream(path, std::ios::binary);
    if (!stream.is_open())
        throw Failure("cannot read the baseline '" + path + "'", EXIT_USAGE);
    std::ostringstream text;
    text << stream.rdbuf();
    Baseline baseline(path);
    for (const Entry &entry : ReadBaselineText(path, text.str()))
        baseline.Add(entry);
    return baseline;
}

Baseline Baseline::Write(const std::string &path, const std::vector<Finding> &findings)
{
    Baseline baseline(path);
    for (const Finding &finding : findings)
        if (finding.rule != Rule("load-failed"))
            baseline.Add({finding.rule->name, finding.module, baseline.FileOf(finding), WordsOf(finding), 1});
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writer.Key("version");
    writer.Uint(BASELINE_VERSION);
    writer.Key("findings");
    writer.StartArray();
    for (const auto &[key, entry] : baseline.entries_) {
        writer.StartObject();
        WriteText(&writer, "rule", entry.rule);
        WriteText(&writer, "module", entry.module);
        WriteText(&writer, "file", entry.file);
        WriteText(&writer, "text", entry.text);
        writer.Key("count");
        writer.Uint64(entry.count);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    WriteOutputFile(path, std::string(buffer.GetString(), buffer.GetSize()) + "\n");
    return baseline;
}

BaselineUse::BaselineUse(const Baseline *baseline) : baseline_(baseline)
{
    if (baseline != nullptr)
        left_ = baseline->entries_;
}

bool BaselineUse::Takes(const Finding &finding)
{
    if (baseline_ == nullptr || finding.rule == Rule("load-failed"))
        return false;
    auto entry = left_.find(KeyOf(finding, baseline_->FileOf(finding)));
    if (entry == left_.end() || entry->second.count == 0)
        return false;
    --entry->second.count;
    return true;
}

size_t BaselineUse::Gone(const std::set<std::string> &modules, bool all) const
{
    size_t gone = 0;
    for (const auto &[key, entry] : left_) {
        const RuleRow *rule = FindRule(entry.rule);
        bool isOverlooked = !modules.contains(entry.module) || (rule != nullptr && rule->isOfAll && !all);
        gone += isOverlooked ? 0 : entry.count;
    }
    return gone;
}

} // namespace inspect
