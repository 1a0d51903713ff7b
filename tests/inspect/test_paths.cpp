/* paths and find without a module: rows of many modules, patterns, ids. */
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

std::vector<std::string> Lines(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/* The paths that are listed, each behind a blank. */
std::string Listed(const std::string &arguments)
{
    const Result result = RunShell("korv-inspect paths -d examples/yin --columns path " + arguments);
    EXPECT_EQ(result.exitCode, 0) << arguments << "\n" << result.err;
    std::string text;
    for (const std::string &line : Lines(result.out))
        text += " " + line;
    return text;
}

TEST(InspectPaths, ARowIsTheSameWhateverElseIsListed)
{
    const std::vector<std::string> all = Lines(RunShell("korv-inspect paths -d examples/yin --format csv").out);
    ASSERT_GT(all.size(), 60U);
    std::vector<std::string> single = {all.front()};
    for (const std::string &file : Lines(RunShell("ls examples/yin/*.yin").out)) {
        std::vector<std::string> rows =
            Lines(RunShell("korv-inspect paths " + file + " -d examples/yin --format csv 2>/dev/null").out);
        if (!rows.empty())
            single.insert(single.end(), rows.begin() + 1, rows.end());
    }
    EXPECT_EQ(all, single);
}

TEST(InspectPaths, PatternsAndFiltersChooseRows)
{
    const std::pair<const char *, const char *> cases[] = {
        {"--all mtu", " /interfaces/interface/mtu"},
        {"--all interface/mtu", " /interfaces/interface/mtu"},
        {"'/interfaces/*'", " /interfaces/number /interfaces/interface"},
        {"'/*/inter?ace/ad*'", " /interfaces/interface/address"},
        {"'/qos/**/name'", " /qos/policy/name /qos/queues/queue/name /qos/queues/queue/settings/name"},
        {"'**/policy/**/dscp'", " /qos/policy/rule/dscp"},
        {"'/if:interfaces/**/ifq:*'",
         " /interfaces/interface/traffic /interfaces/interface/traffic/policy /interfaces/interface/traffic/matched "
         "/interfaces/interface/shaping-rate"},
        {"'/example-qos:*'", " /qos"},
        {"--all 'i?:mtu'", " /interfaces/interface/mtu"},
        {"example-interfaces 'mt?'", " /interfaces/interface/mtu"},
        {"example-interfaces /interfaces/number/", " /interfaces/number"},
        {"example-qos '**/*'  --keys",
         " /qos/policy/name /qos/policy/rule/direction /qos/policy/rule/precedence /qos/queues/queue/name "
         "/qos/queues/queue/settings/name"},
        {"--all --class 0x1002", " /interfaces/interface/negotiated /interfaces/interface/negotiated/interval"},
        {"--type et:busy-percent", " /interfaces/interface/alarm-threshold"},
        {"--type decimal64", " /interfaces/interface/load"},
        {"--module example-qos --regex '/q[a-z]+s/q.*th$'", " /qos/queues/queue/settings/depth"},
        {"--regex '^(.*)*(.*)*(.*)*(.*)*/dscp$'", " /qos/policy/rule/dscp"},
    };
    for (const auto &[arguments, paths] : cases)
        EXPECT_EQ(Listed(arguments), paths) << arguments;
}

TEST(InspectPaths, EveryColumnSaysWhatTheModelSays)
{
    ModelDir dir;
    dir.Add("all",
            "<typedef name=\"percent\"><type name=\"uint8\"><range value=\"0..100\"/></type><units name=\"%\"/>"
            "<default value=\"5\"/></typedef>"
            "<identity name=\"kind\"/>"
            "<container name=\"top\"><description><text>The  top,\n of \"all\".</text></description>" +
                ClassId("16") + "<list name=\"row\"><key value=\"id\"/>" + ClassId("17") +
                "<leaf name=\"id\"><type name=\"string\"><length value=\"1..8\"/><pattern value=\"[a-z]*\"/></type>" +
                Id("1") +
                "</leaf></list>"
                "<leaf name=\"load\"><type name=\"percent\"/>" +
                Id("2") +
                "<config value=\"false\"/><status value=\"deprecated\"/></leaf>"
                "<leaf-list name=\"ref\"><type name=\"leafref\"><path value=\"/p:top/p:load\"/></type></leaf-list>"
                "<leaf name=\"is\"><type name=\"identityref\"><base name=\"kind\"/></type></leaf>"
                "<leaf name=\"one\"><type name=\"union\"><type name=\"percent\"/><type name=\"enumeration\">"
                "<enum name=\"no\"/></type><type name=\"leafref\"><path value=\"/p:top/p:load\"/></type></type></leaf>"
                "<leaf name=\"bits\"><type name=\"bits\"><bit name=\"a\"/><bit name=\"b\"/></type></leaf></container>"
                "<leaf name=\"alone\"><type name=\"decimal64\"><fraction-digits value=\"3\"/></type></leaf>"
                "<rpc name=\"go\"><input><leaf name=\"far\"><type name=\"empty\"/></leaf></input></rpc>");
    const std::string file = dir.Path() + "/all.yin";
    const Result csv = Inspect({"paths", "all", "-d", dir.Path(), "--format", "csv", "--columns",
                                "path,kind,class_id,field_id,key,self_keys,type,base_type,limits,units,default,config,"
                                "status,enum,description"});
    EXPECT_EQ(
        csv.out,
        R"(path,kind,class_id,field_id,key,self_keys,type,base_type,limits,units,default,config,status,enum,description
/top,container,16,,false,,,,,,,true,current,,"The top, of ""all""."
/top/row,list,17,,false,1,,,,,,true,current,,
/top/row/id,leaf,17,1,true,,string,string,length 1..8; pattern [a-z]*,,,true,current,,
/top/load,leaf,16,2,false,,percent,uint8,0..100,%,5,false,deprecated,,
/top/ref,leaf-list,16,,false,,leafref,uint8,leads to /top/load; 0..100,,,true,current,,
/top/is,leaf,16,,false,,identityref,identityref,derived from all:kind,,,true,current,,
/top/one,leaf,16,,false,,union,union,uint8 (0..100) | enumeration (no 0) | leafref (/p:top/p:load),,,true,current,,
/top/bits,leaf,16,,false,,bits,bits,,,,true,current,a=0 b=1,
/alone,leaf,,,false,,decimal64,decimal64,3 digits behind the point,,,true,current,,
/go,rpc,,,false,,,,,,,false,current,,
/go/input,input,,,false,,,,,,,false,current,,
/go/input/far,leaf,,,false,,empty,empty,,,,false,current,,
)");
}

TEST(InspectPaths, WhatCannotBeLoadedIsSaidAndLeftOut)
{
    ModelDir dir;
    dir.Add("good", Container("c", Leaf("x", "string")));
    dir.Add("bad", Container("c", Leaf("x", "strng")));
    dir.AddFile("part.yang", "submodule part { belongs-to good { prefix g; } }");
    const std::string here = " -d " + dir.Path();
    const std::string why = dir.Path() +
                            "/bad.yin:5:16: unknown type 'strng'; did you mean 'string'?\n"
                            "korv-inspect: module 'bad' cannot be loaded and is left out\n";
    const struct {
        std::string command;
        std::string out;
        std::string err;
    } cases[] = {
        {"paths --columns path", "/c\n/c/x\n", ""},
        {"find c/x", "leaf", ""},
        {"find nothing", "", "korv-inspect: no path in the 2 modules fits 'nothing'\n"},
        {"paths bad", "", "module 'bad' cannot be loaded"},
    };
    for (const auto &test : cases) {
        const Result result = RunShell("korv-inspect " + test.command + here);
        EXPECT_EQ(result.exitCode, 3) << test.command;
        EXPECT_EQ(result.out.find(test.out), 0U) << result.out;
        if (test.command != "paths bad") {
            EXPECT_EQ(result.err, why + test.err);
        }
    }
}

TEST(InspectPaths, WhatIsNotThereNamesTheNearest)
{
    const std::string history = "0x1004 (/interfaces/interface/address/history)";
    const std::string discards = "32 (/interfaces/interface/statistics/discards)";
    const std::pair<const char *, std::string> cases[] = {
        {"find 0x1005", "no class 0x1005 in the 9 modules: the nearest are " + history + " and 0x2001 (/qos/policy)"},
        {"find 0xffffffff", "no class 0xffffffff in the 9 modules: the nearest is 0x5001 (/transceivers/transceiver)"},
        {"find 0x1001.39", "class 0x1001 has no attribute 39 in the 9 modules: the nearest are " + discards +
                               " and 40 (/interfaces/interface/shaping-rate)"},
        {"find --sample 83",
         "no sample 0x53 in the 9 modules: the nearest are 0x52 (/interfaces/interface) and 0x61 (/qos/policy)"},
        {"find example-qos 0x1001", "no class 0x1001 in module 'example-qos': the nearest is 0x2001 (/qos/policy)"},
        {"find mtuu", "no path in the 9 modules fits 'mtuu': did you mean 'mtu'?"},
        {"find /interface/mtu", "no path in the 9 modules fits '/interface/mtu': there is /interfaces/interface/mtu"},
        {"find '**/x*y'", "no path in the 9 modules fits '**/x*y'"},
        {"paths '/nothing/*'", "no path in the 9 modules fits '/nothing/*'"},
        {"paths --class 0x1fff --keys",
         "no class 0x1fff in the 9 modules: the nearest are " + history + " and 0x2001 (/qos/policy)"},
        {"paths --module example-qso", "no module 'example-qso' is looked through: did you mean 'example-qos'?"},
        {"paths --keys --type decimal64", "nothing in the modules is what was asked for"},
    };
    for (const auto &[arguments, text] : cases) {
        const Result result = RunShell(std::string("korv-inspect ") + arguments + " -d examples/yin");
        EXPECT_EQ(result.exitCode, 1) << arguments;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, std::string("korv-inspect: ") + text + "\n");
    }
}

TEST(InspectFind, AnIdIsShownAtEachPlaceWhereItStands)
{
    const std::pair<const char *, const char *> cases[] = {
        {"0x1001",
         " /interfaces/interface /interfaces/interface/statistics /interfaces/interface/shaping-rate "
         "/interfaces/interface/burst"},
        {"4097.40", " /interfaces/interface/shaping-rate"},
        {"010001.6", " /interfaces/interface/mtu"},
        {"--sample 0x51", " /interfaces"},
        {"example-qos 0x2010", " /qos/queues/queue /qos/queues/queue/settings"},
    };
    for (const auto &[arguments, paths] : cases) {
        const Result result =
            RunShell("korv-inspect find " + std::string(arguments) + " -d examples/yin --format json");
        const rapidjson::Document json = Json(result);
        std::string text;
        for (const rapidjson::Value &place : json.GetArray())
            text += std::string(" ") + place["path"].GetString() + (place["request"]["answered"].GetBool() ? "" : "?");
        EXPECT_EQ(text, paths) << arguments;
    }
}

} // namespace
