/* JSON for scripts: real output against the published schemas, and errors as JSON. */
#include <gtest/gtest.h>

#include <set>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

/* Runs commands and compares what they write with docs/schemas/, all in one go. */
class Validation {
  public:
    /* Standard output belongs to the schema of that name, standard error to that of messages. Returns the exit status. */
    int Add(const std::string &schema, const std::string &command)
    {
        const std::string base = dir.Path() + "/" + std::to_string(++count);
        const std::string out = base + (schema == "paths" ? ".out.lines" : ".json");
        const Result result = RunShell("{ " + command + "; } >" + out + " 2>" + base + ".lines");
        if (RunShell("[ -s " + out + " ]").exitCode == 0) {
            arguments += " " + schema + " " + out;
            seen.insert(schema);
        }
        arguments += " message " + base + ".lines";
        commands += base + ": " + command + "\n";
        return result.exitCode;
    }

    /* What does not fit; "" for nothing. */
    std::string Violations() const
    {
        const Result result = RunShell("python3 tests/inspect/validate.py docs/schemas" + arguments);
        return result.out + result.err + (result.exitCode == 0 && result.out.empty() ? "" : commands);
    }

    const std::set<std::string> &Seen() const { return seen; }

  private:
    ModelDir dir;
    int count = 0;
    std::string arguments;
    std::string commands;
    std::set<std::string> seen;
};

/* Every base type, a choice in a choice, augments of its own and of another module, a top-level list, an rpc. */
void AddOddModels(ModelDir *dir)
{
    std::string leaves;
    for (const char *type : {"binary", "bool", "empty", "int8", "int64", "string", "uint8", "uint16", "uint64"})
        leaves += Leaf(std::string("l-") + type, type == std::string("bool") ? "boolean" : type);
    leaves +=
        "<leaf name=\"zero\"><type name=\"uint16\"><range value=\"0\"/></type></leaf>"
        "<leaf name=\"either\"><type name=\"union\"><type name=\"int8\"/><type name=\"string\"/></type></leaf>"
        "<leaf name=\"color\"><type name=\"enumeration\"><enum name=\"red\"/><enum name=\"\xC3\xA9\"/></type></leaf>"
        "<leaf-list name=\"back\"><type name=\"leafref\"><path value=\"../zero\"/></type></leaf-list>";
    dir->Add("odd", Container("top", leaves + "<choice name=\"c\"><choice name=\"d\">" + Leaf("deep", "uint32") +
                                         "</choice></choice>" + Container("sub", "")) +
                        List("rows", "k", Leaf("k", "string")) + "<rpc name=\"reset\"><input>" + Leaf("why", "string") +
                        "</input></rpc>"
                        "<augment target-node=\"/p:top/p:sub\">" +
                        Leaf("own", "int32") + "</augment>");
    dir->Add("more",
             "<augment target-node=\"/odd:top/odd:c\">" + Leaf("cased", "uint16") + Container("boxed", "") +
                 "</augment><augment target-node=\"/odd:reset/odd:input\">" + Leaf("when", "string") + "</augment>",
             "odd");
    dir->Add("empty", "");
    dir->Add("bad", Container("c", Leaf("x", "strng") + Leaf("y", "strng")));
}

TEST(InspectJson, EveryCommandWritesWhatItsSchemaSays)
{
    ModelDir odd;
    AddOddModels(&odd);
    const std::string examples = " -d examples/yin --format json";
    const std::string own = " -d " + odd.Path() + " --format json";
    const std::string faulty = " -d tests/inspect/yin/faulty -d examples/yin --format json";
    const std::pair<const char *, std::string> runs[] = {
        {"tree", "example-interfaces" + examples},
        {"tree", "example-qos example-optics example-interface-qos" + examples},
        {"tree", "example-interface-shaping --own" + examples},
        {"tree", "odd more empty --own" + own},
        {"tree", "more --load odd" + own},
        {"tree", "odd --depth 1" + own},
        {"tree", "example-faulty" + faulty},
        {"find", "example-interface-qos /interfaces/interface/shaping-rate" + examples},
        {"find", "example-interfaces /interfaces/interface" + examples},
        {"find", "example-interfaces /interfaces/interface/mode" + examples},
        {"find", "more /top/cased" + own},
        {"find", "odd /top/back" + own},
        {"find", "0x1001" + examples},
        {"find", "--sample 0x51" + examples},
        {"walk", "example-interfaces /interfaces/interface/mtu" + examples},
        {"walk", "more /top/boxed" + own},
        {"dump", "example-interfaces" + examples},
        {"dump", "example-interface-qos --augment 1" + examples},
        {"dump", "odd" + own},
        {"dump", "empty" + own},
        {"enums", "example-interfaces /interfaces/interface/status" + examples},
        {"enums", "odd /top/color" + own},
        {"modules", "example-interfaces example-interface-qos" + examples},
        {"modules", "odd@2020-01-01 more" + own},
        {"check", "--rules --format json"},
        {"diff", "--rules --format json"},
    };
    Validation validation;
    for (const auto &[command, arguments] : runs)
        EXPECT_EQ(validation.Add(command, std::string("korv-inspect ") + command + " " + arguments), 0) << arguments;
    const std::string fans = "diff example-fans --old tests/inspect/yin/v1 --old examples/yin --new ";
    for (const std::string &negative :
         {"find why" + own, std::string("paths -d examples/yin --format jsonl"),
          "paths -d " + odd.Path() + " --format jsonl", "check example-faulty example-qos" + faulty,
          "check --all" + own, fans + "tests/inspect/yin/v2 --new examples/yin --format json",
          fans + "tests/inspect/yin/v1 --new examples/yin --format json",
          "diff --all examples/yin " + odd.Path() + " --format json"})
        validation.Add(negative.substr(0, negative.find(' ')), "korv-inspect " + negative);
    const std::string registry = " --registry " + odd.Path() + "/ids.json";
    for (const char *ids : {"ids lock example-interfaces --range m=1..9", "ids list", "ids check --all",
                            "ids lock --all", "ids assign example-interfaces --dry-run"})
        validation.Add("ids", std::string("korv-inspect ") + ids + examples + registry);
    EXPECT_EQ(validation.Violations(), "");
    EXPECT_EQ(validation.Seen(), (std::set<std::string>{"tree", "find", "walk", "dump", "enums", "modules", "check",
                                                        "diff", "ids", "paths"}));
}

TEST(InspectJson, AnErrorIsOneObjectAndTheExitStatusSaysOfWhichKind)
{
    ModelDir odd;
    AddOddModels(&odd);
    const std::string own = " -d " + odd.Path();
    const struct {
        std::string arguments;
        int exitCode;
        std::string kind;
        std::string text;
        unsigned failures;
    } cases[] = {
        {"tree bad" + own, 3, "not-loaded", "module 'bad' cannot be loaded", 2},
        {"tree odd --load bad" + own, 3, "not-loaded", "module 'bad' cannot be loaded", 2},
        {"dump nowhere" + own, 3, "not-loaded", "module 'nowhere' cannot be loaded", 1},
        {"modules ./gone.yin" + own, 3, "not-loaded", "./gone.yin: No such file or directory", 0},
        {"tree - </dev/null" + own, 3, "not-loaded", "standard input holds no module", 1},
        {"find odd /top/zeroo" + own, 1, "not-found", "no 'zeroo' below /top: did you mean 'zero'?", 0},
        {"walk odd /tip" + own, 1, "not-found", "no node /tip in the trees of 'odd': did you mean 'top'?", 0},
        {"tree odd --path /nope" + own, 1, "not-found", "no node /nope in the trees of 'odd': did you mean 'top'?", 0},
        {"enums odd /top/zero" + own, 1, "not-found", "/top/zero is no enumeration, but uint16", 0},
        {"dump odd --augment 5" + own, 1, "not-found", "module 'odd' has 1 augments, counted from 0", 0},
        {"find odd //" + own, 2, "usage", "'//' is no path: a step is empty", 0},
        {"tree odd --own --full" + own, 2, "usage",
         "--own shows whole modules without copies: give neither --full nor --path", 0},
        {"tree odd --frmat=json" + own, 2, "usage", "there is no option '--frmat': did you mean '--format'?", 0},
        {"tree odd -d /no/such/dir", 2, "usage", "--dir: Directory does not exist: /no/such/dir", 0},
        {"tree odd >/dev/full" + own, 1, "failed", "cannot write to standard output", 0},
    };
    Validation validation;
    for (const auto &test : cases) {
        const std::string command = "korv-inspect " + test.arguments + " --format json";
        const Result result = RunShell(command);
        EXPECT_EQ(result.exitCode, test.exitCode) << command;
        rapidjson::Document json;
        ASSERT_FALSE(json.Parse(result.err.c_str()).HasParseError()) << command << "\n" << result.err;
        EXPECT_EQ(json["error"]["kind"].GetString(), test.kind) << command;
        EXPECT_EQ(json["error"]["text"].GetString(), test.text) << command;
        EXPECT_EQ(json["error"]["failures"].Size(), test.failures) << result.err;
        validation.Add("message", command);
    }
    EXPECT_EQ(validation.Violations(), "");
    const Result first = RunShell("korv-inspect tree bad --format=json" + own);
    EXPECT_EQ(first.err,
              "{\"error\":{\"kind\":\"not-loaded\",\"text\":\"module 'bad' cannot be loaded\",\"failures\":["
              "{\"module\":\"bad\",\"file\":\"" +
                  odd.Path() +
                  "/bad.yin\",\"line\":5,\"column\":16,\"text\":\"unknown type 'strng'; did you mean "
                  "'string'?\"},{\"module\":\"bad\",\"file\":\"" +
                  odd.Path() +
                  "/bad.yin\",\"line\":6,\"column\":16,\"text\":\"unknown type 'strng'; did you mean "
                  "'string'?\"}]}}\n");
}

TEST(InspectJson, ANoteIsAnObjectOfItsLineAndDoesNotEndTheRun)
{
    ModelDir dir;
    dir.Add("m", Container("a", "<choice name=\"c\"><container name=\"x\"/></choice>"));
    RunShell("cp " + dir.Path() + "/m.yin " + dir.Path() + "/copy.yin");
    const Result result = Inspect({"dump", dir.Path() + "/copy.yin", "--augment", "0", "--format", "json"});
    EXPECT_EQ(result.err, "{\"note\":{\"module\":null,\"file\":null,\"line\":null,\"column\":null,\"text\":\"" +
                              dir.Path() +
                              "/copy.yin holds module 'm': a load by name finds it only in a file of that name\"}}\n"
                              "{\"error\":{\"kind\":\"not-found\",\"text\":\"module 'm' has 0 augments, counted from "
                              "0\",\"failures\":[]}}\n");
}

} // namespace
