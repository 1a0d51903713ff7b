#include "inspect/run_inspect.h"

#include <gtest/gtest.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace test {
namespace {

std::string Quoted(const std::string &text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string ReadFile(const std::string &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

Result RunShell(const std::string &command)
{
    const std::string temporary = std::filesystem::temp_directory_path().string();
    std::string out = temporary + "/korv-inspect-out-XXXXXX";
    std::string err = temporary + "/korv-inspect-err-XXXXXX";
    close(mkstemp(out.data()));
    close(mkstemp(err.data()));
    const std::string whole = "cd " + Quoted(KORV_SOURCE_DIR) + " && PATH=" + Quoted(KORV_BINARY_DIR "/bin") +
                              ":$PATH PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=" + Quoted(KORV_BINARY_DIR "/python") +
                              " && export PYTHONPATH PYTHONDONTWRITEBYTECODE && { " + command + "\n} >" + out + " 2>" +
                              err + " </dev/null";
    const int status = std::system(whole.c_str());
    Result result = {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
    std::remove(out.c_str());
    std::remove(err.c_str());
    return result;
}

Result Inspect(const std::vector<std::string> &args)
{
    std::string command = "korv-inspect";
    for (const std::string &arg : args)
        command += " " + Quoted(arg);
    return RunShell(command);
}

Result InspectExamples(std::vector<std::string> args)
{
    args.insert(args.end(), {"-d", "examples/yin"});
    return Inspect(args);
}

rapidjson::Document Json(const Result &result)
{
    rapidjson::Document document;
    document.Parse(result.out.c_str());
    EXPECT_FALSE(document.HasParseError()) << result.out << result.err;
    return document;
}

std::string Told::Stem() const
{
    return std::filesystem::path(file).stem().string();
}

std::vector<Told> FindingsOf(const Result &result)
{
    const auto text = [](const rapidjson::Value &value) { return value.IsString() ? value.GetString() : ""; };
    const auto number = [](const rapidjson::Value &value) { return value.IsUint() ? value.GetUint() : 0; };
    std::vector<Told> findings;
    const rapidjson::Document json = Json(result);
    for (const rapidjson::Value &one : json["findings"].GetArray())
        findings.push_back({text(one["name"]), text(one["severity"]), text(one["section"]), text(one["module"]),
                            text(one["file"]), number(one["line"]), number(one["column"]), text(one["text"]),
                            number(one["places"]), text(one["first_place"])});
    return findings;
}

std::string Compact(const rapidjson::Value &value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return buffer.GetString();
}

std::string LineWith(const std::string &text, const std::string &part)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(part) != std::string::npos)
            return line;
    }
    return "";
}

} // namespace test
