/* tree: text, JSON, graph, and parts of a tree. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

TEST(InspectTree, ShowsNodesWithIdsAndKeysAndLeavesInColumns)
{
    const Result result = InspectExamples({"tree", "example-qos"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, R"(module example-qos, revision 2026-05-11, task id 121

qos
  policy            class 0x2001  sample 0x61  key 1
    * name            1  string
    - weight          2  uint16       0..100
    rule            class 0x2002  keys 1 2  ancestor key 10
      * direction     1  enumeration
      * precedence    2  uint16
      - committed     5  uint32
      - peak          6  uint32
      choice action
        case drop
          - drop      7  boolean
        case mark
          - dscp      8  uint8
  queues
    queue           class 0x2010  key 1
      * name          1  string
      settings      class 0x2010  key 1
        * name        1  string
        - depth       2  uint32       4096
)");
}

TEST(InspectTree, ShowsEverythingThatAStatementCanSayOfALeaf)
{
    const std::string text = InspectExamples({"tree", "example-interfaces"}).out;
    EXPECT_EQ(LineWith(text, "* name"), "    * name               1  string       index map 2");
    EXPECT_EQ(LineWith(text, "- load"), "    - load               9  decimal64    datatype 64");
    EXPECT_EQ(LineWith(text, "- parent"), "    - parent            12  uint32       1..4294967295  reference key 12");
    EXPECT_EQ(LineWith(text, "- tag"), "    - tag                -  string");
}

TEST(InspectTree, ShowsWhatAnAugmentAddsAndOnRequestItsWholeTargetTree)
{
    const Result part = InspectExamples({"tree", "example-interface-qos"});
    EXPECT_EQ(part.out, R"(module example-interface-qos, revision 2026-05-11

no tree of its own: no container stands at the module's top

augment 0 of /if:interfaces/if:interface
  interfaces              class 0x1000  sample 0x51  (example-interfaces)
    interface             class 0x1001  sample 0x52  key 1
      traffic             class 0x3001  ancestor key 10  (example-interface-qos)
        - policy            1  string
        - matched           2  uint64

augment 1 of /if:interfaces/if:interface/if:mode
  interfaces              class 0x1000  sample 0x51  (example-interfaces)
    interface             class 0x1001  sample 0x52  key 1
      choice mode
        case shaped       (example-interface-qos)
          - shaping-rate   40  uint32
)");
    const Result full = InspectExamples({"tree", "example-interface-qos", "--full"});
    EXPECT_NE(LineWith(full.out, "- mtu"), "");
    EXPECT_NE(LineWith(full.out, "- matched"), "");
}

TEST(InspectTree, AppliesDeviations)
{
    const Result result = InspectExamples({"tree", "quelvo-bras-user-manage"});
    EXPECT_EQ(LineWith(result.out, "licensed"), "");
    EXPECT_EQ(LineWith(result.out, "  user "), "  user         class 0x4001  sample 0x72  key 1");
    EXPECT_EQ(LineWith(result.out, "vlan"), "    - vlan       3  uint32  1..16777215");
}

TEST(InspectTree, JsonHoldsTheWholeModel)
{
    const rapidjson::Document json = Json(InspectExamples({"tree", "example-interface-qos", "--format", "json"}));
    EXPECT_EQ(Compact(json["revision"]), R"("2026-05-11")");
    EXPECT_EQ(Compact(json["origin"]), "[]");
    ASSERT_EQ(json["augments"].Size(), 2U);
    EXPECT_STREQ(json["augments"][1]["target"].GetString(), "/if:interfaces/if:interface/if:mode");
    EXPECT_EQ(json["augments"][1]["self"].Size(), 0U);
    EXPECT_EQ(json["augments"][1]["target_tree"].Size(), 1U);
    EXPECT_EQ(Compact(json["augments"][0]["self"]),
              R"([{"name":"traffic","module":"example-interface-qos","kind":"node","class_id":12289,"sample_id":0,)"
              R"("self_keys":[],"ancestor_keys":[10],)"
              R"("place":{"file":"examples/yin/example-interface-qos.yin","line":25,"column":5},"leaves":[)"
              R"({"name":"policy","module":"example-interface-qos","key":false,"base_type":"string","mask":2,)"
              R"("class_id":12289,"field_id":1,"data_type":0,"ref_id_key_fid":0,"name2id_key_fid":0,"range":null,)"
              R"("place":{"file":"examples/yin/example-interface-qos.yin","line":30,"column":7}},)"
              R"({"name":"matched","module":"example-interface-qos","key":false,"base_type":"uint64","mask":2,)"
              R"("class_id":12289,"field_id":2,"data_type":0,"ref_id_key_fid":0,"name2id_key_fid":0,)"
              R"("range":[0,18446744073709551615],)"
              R"("place":{"file":"examples/yin/example-interface-qos.yin","line":36,"column":7}}],)"
              R"("case_leaves":[],"children":[]}])");
}

TEST(InspectTree, JsonTellsChoicesCasesAndTheirLeavesApart)
{
    const rapidjson::Document json = Json(InspectExamples({"tree", "example-qos", "--format", "json"}));
    const rapidjson::Value &rule = json["origin"][0]["children"][0]["children"][0];
    EXPECT_STREQ(rule["name"].GetString(), "rule");
    EXPECT_EQ(Compact(rule["self_keys"]), "[1,2]");
    EXPECT_TRUE(rule["leaves"][0]["key"].GetBool());
    ASSERT_EQ(rule["case_leaves"].Size(), 2U);
    EXPECT_EQ(rule["case_leaves"][1]["class_id"].GetUint(), 0x2002U);
    const rapidjson::Value &action = rule["children"][0];
    EXPECT_STREQ(action["kind"].GetString(), "choice");
    EXPECT_STREQ(action["children"][1]["kind"].GetString(), "case");
    EXPECT_EQ(action["children"][1]["leaves"][0]["class_id"].GetUint(), 0U);
}

TEST(InspectTree, ShowsAPartAndAsManyLevelsAsAskedFor)
{
    EXPECT_EQ(InspectExamples({"tree", "example-interfaces", "--path", "interfaces/interface/address"}).out,
              R"(module example-interfaces, revision 2026-09-01, task id 120

address            class 0x1003  key 1  ancestor key 10
  * ip               1  string
  - prefix-length    2  uint8
  history          class 0x1004  key 1  ancestor keys 20 21
    * number         1  uint16
    - changed        2  int64
)");
    const Result cut = InspectExamples({"tree", "example-interfaces", "--depth", "1"});
    EXPECT_NE(LineWith(cut.out, "  ... 9 nodes"), "") << cut.out;
    EXPECT_EQ(LineWith(cut.out, "mtu"), "");

    const rapidjson::Document json = Json(InspectExamples(
        {"tree", "example-interface-qos", "--path", "/interfaces/interface/traffic", "--format", "json"}));
    EXPECT_EQ(json["origin"].Size(), 0U);
    ASSERT_EQ(json["augments"].Size(), 1U);
    EXPECT_STREQ(json["augments"][0]["target_tree"][0]["name"].GetString(), "traffic");
    EXPECT_EQ(json["augments"][0]["target_tree"].Size(), 1U);
}

TEST(InspectTree, DrawsAGraph)
{
    const Result result = InspectExamples({"tree", "example-interface-qos", "--format", "dot"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.find("digraph \"example-interface-qos\" {\n"), 0U);
    EXPECT_NE(LineWith(result.out, R"(n2 [style=bold, label="traffic\nclass 0x3001  ancestor key 10\n\n)"
                                   R"(- policy  1  string\l- matched  2  uint64\l"];)"),
              "")
        << result.out;
    EXPECT_NE(LineWith(result.out, "n1 -> n2;"), "");
    EXPECT_NE(LineWith(result.out, "style=dashed, label=\"mode\""), "");
    EXPECT_TRUE(result.out.ends_with("}\n"));
    if (RunShell("command -v dot").exitCode == 0) {
        EXPECT_EQ(RunShell("korv-inspect tree example-interfaces -d examples/yin --format dot | dot -Tsvg").err, "");
    }
    const std::pair<const char *, const char *> classes[] = {
        {"--depth 1", "interfaces "},
        {"--depth 2", "interfaces interface n0->n1 "},
        {"--path /interfaces/interface/mode", "negotiated "},
        {"--path /interfaces/interface",
         "interface negotiated n0->n1 statistics n0->n2 address n0->n3 history n3->n4 "},
    };
    for (const auto &[options, drawn] : classes)
        EXPECT_EQ(
            RunShell(
                std::string("korv-inspect tree example-interfaces -d examples/yin --format dot --classes ") + options +
                " | sed -nE 's/.*label=\"([a-z]+).*/\\1/p; s/^  (n[0-9]+) -> (n[0-9]+);/\\1->\\2/p' | tr '\\n' ' '")
                .out,
            drawn)
            << options;
}

TEST(InspectTree, GraphvizDrawsWhereItIs)
{
    ModelDir dir;
    dir.AddFile("dot", "#!/bin/sh\necho \"<svg $* $(wc -l)/>\"\n");
    dir.AddFile("bad", "#!/bin/sh\necho out of ink >&2; exit 1\n");
    const std::string tree = "tree example-qos -d examples/yin --format svg";
    const std::string only = "chmod +x " + dir.Path() + "/*; run=$(command -v korv-inspect); ";
    EXPECT_EQ(RunShell(only + "PATH=" + dir.Path() + ":$PATH; $run " + tree).out, "<svg -Tsvg 21/>\n");
    const Result none = RunShell(only + "PATH=/no/such/dir $run " + tree);
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.err,
              "korv-inspect: SVG is drawn by Graphviz, and there is no program 'dot': install graphviz, or give "
              "--format dot\n");
    const Result failed = RunShell(only + "cd " + dir.Path() + "; mv bad dot; PATH=" + dir.Path() +
                                   ":$PATH; $run tree example-qos -d " KORV_SOURCE_DIR "/examples/yin --format svg");
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.err, "korv-inspect: 'dot' did not draw the graph: out of ink\n");
}

TEST(InspectTree, SaysSoWhereThereIsNoTree)
{
    ModelDir dir;
    dir.Add("calls", "<rpc name=\"reset\"><input>" + Leaf("why", "string") + "</input></rpc>");
    dir.Add("more", "<augment target-node=\"/calls:reset/calls:input\">" + Leaf("when", "string") + "</augment>",
            "calls");
    const Result result = Inspect({"tree", "more", "-d", dir.Path()});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(LineWith(result.out, "no tree of its own"), "");
    EXPECT_NE(LineWith(result.out, "  no tree: what it adds stands in no container"), "") << result.out;
    const Result dump = Inspect({"dump", "more", "-d", dir.Path()});
    EXPECT_EQ(dump.exitCode, 0);
    EXPECT_EQ(dump.err,
              "korv-inspect: module 'more' has no tree of its own: --augment N dumps the tree of an augment\n");
}

TEST(InspectTree, ShowsOfAnAugmentItsOwnAdditionsOnly)
{
    ModelDir dir;
    const std::string note = "<notification name=\"note\">" + Leaf("far", "string") + "</notification>";
    dir.Add("base", Container("top", Container("a", Leaf("own", "string") + note + Container("near", ""))) +
                        "<augment target-node=\"/p:top/p:a\">" + Leaf("added", "string") + Container("new", "") +
                        "</augment>");
    dir.Add("more", "<augment target-node=\"/base:top/base:a/base:note\">" + Leaf("when", "string") + "</augment>",
            "base");
    const auto augment = [&](const char *module) {
        const std::string text = Inspect({"tree", module, "-d", dir.Path()}).out;
        return text.substr(text.find("augment 0"));
    };
    EXPECT_EQ(augment("base"), "augment 0 of /p:top/p:a\n  top\n    a\n      - added    -  string\n      new\n");
    EXPECT_EQ(augment("more"),
              "augment 0 of /base:top/base:a/base:note\n  top  (base)\n    a\n"
              "      ... what it adds is in no tree: none holds 'note'\n");
}

/* Names of the nodes and leaves that a value of `tree` in JSON has, leaves of cases as the class has them in parentheses. */
std::string Names(const rapidjson::Value &value)
{
    std::string names;
    for (const rapidjson::Value &item : value.GetArray()) {
        names += (names.empty() ? "" : " ") + std::string(item["name"].GetString());
        if (!item.HasMember("children"))
            continue;
        const std::string below[] = {Names(item["leaves"]), Names(item["children"]), Names(item["case_leaves"])};
        names += "{" + below[0] + ";" + below[1] + (below[2].empty() ? "" : " (" + below[2] + ")") + "}";
    }
    return names;
}

TEST(InspectTree, OwnShowsEachNodeOfTheModuleOnceAndNoneOfOthers)
{
    ModelDir dir;
    std::string many;
    for (int i = 0; i < 100; ++i)
        many += Leaf("far" + std::to_string(i), "string");
    dir.Add("base", Container("top", many + Container("a", "") + "<choice name=\"c\"><case name=\"one\">" +
                                         Leaf("first", "string") + "</case></choice>") +
                        "<augment target-node=\"/p:top/p:c\"><case name=\"two\">" + Leaf("second", "string") +
                        "</case></augment>");
    dir.Add("more",
            "<augment target-node=\"/base:top/base:a\">" + Leaf("l", "string") +
                Container("box", "<choice name=\"k\"><leaf name=\"m\"><type name=\"string\"/></leaf></choice>") +
                List("row", "id", Leaf("id", "string")) + "</augment><augment target-node=\"/base:top/base:a/p:box\">" +
                Leaf("late", "string") +
                "</augment><augment target-node=\"/base:top/base:a/p:box/p:k\"><case name=\"n\">" +
                Leaf("o", "string") + "</case></augment><augment target-node=\"/base:top/base:c\">" +
                Leaf("third", "string") + "</augment>",
            "base");
    const std::string own = "korv-inspect tree base more -d " + dir.Path() + " --load more --own --format ";
    const Result run = RunShell(own + "json");
    const rapidjson::Document json = Json(run);
    ASSERT_EQ(json.Size(), 2U) << run.err;
    std::string shown;
    for (const rapidjson::Value &module : json.GetArray()) {
        const std::string origin = Names(module["origin"]);
        shown += origin.substr(origin.find("far99") == std::string::npos ? 0 : origin.find("far99")) + "\n";
        for (const rapidjson::Value &augment : module["augments"].GetArray()) {
            EXPECT_EQ(augment["target_tree"].Size(), 0U);
            shown += Names(augment["leaves"]) + " | " + Names(augment["self"]) + " | " + Names(augment["case_leaves"]) +
                     "\n";
        }
    }
    EXPECT_EQ(shown,
              "far99;a{;} c{;one{first;}} (first)}\n"
              " | two{second;} | second\n"
              "\n"
              "l | box{;k{;m{m;}} (m)} row{id;} | \n"
              "late |  | \n"
              " | n{o;} | o\n"
              " | third{third;} | third\n");
    for (const char *format : {"text", "dot"}) {
        const std::string text = RunShell("korv-inspect tree more -d " + dir.Path() + " --own --format " + format).out;
        EXPECT_EQ(text.find("far"), std::string::npos) << text;
        for (const char *leaf : {"- late", "- m", "- id", "- o", "- third"}) {
            const size_t at = text.find(leaf);
            ASSERT_NE(at, std::string::npos) << leaf << text;
            EXPECT_EQ(text.find(std::string(leaf) + "  ", at + 1), std::string::npos) << leaf << text;
        }
    }
    const Result cut = RunShell("korv-inspect tree base -d " + dir.Path() + " --load more --own --depth 1");
    EXPECT_NE(LineWith(cut.out, "  ... 3 nodes"), "") << cut.out;
}

} // namespace
