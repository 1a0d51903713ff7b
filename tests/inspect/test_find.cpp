/* find, walk, enums: what a person's path means, and how a host asks for it. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

/* "MODULE|pcPath|pcXpathMain|own" or "...|target N", with "holder" where the request is for the leaf's holder. */
std::string Asked(const Result &result)
{
    if (result.exitCode != 0)
        return "exit " + std::to_string(result.exitCode) + ": " + result.err;
    const rapidjson::Document json = Json(result);
    if (json["request"].IsNull())
        return "none";
    const rapidjson::Value &request = json["request"];
    std::string text = std::string(request["module"].GetString()) + "|" + request["path"].GetString() + "|" +
                       request["xpath_main"].GetString() + "|" + json["tree"]["kind"].GetString();
    if (json["tree"].HasMember("augment"))
        text += " " + std::to_string(json["tree"]["augment"].GetUint());
    if (request["for_holder"].GetBool())
        text += " holder";
    return request["answered"].GetBool() ? text : text + " unanswered";
}

std::string Find(const std::string &module, const std::string &path, const std::vector<std::string> &more = {})
{
    std::vector<std::string> args = {"find", module, path, "--format", "json"};
    args.insert(args.end(), more.begin(), more.end());
    return Asked(InspectExamples(args));
}

TEST(InspectFind, DerivesBothPathFormsAndTheLibraryFindsTheNode)
{
    const std::string address =
        "example-interfaces|/interfaces/interface/address|if:interfaces/if:interface/if:address|own";
    for (const char *path :
         {"/interfaces/interface/address", "interfaces/interface/address", "/if:interfaces/if:interface/if:address",
          "/example-interfaces:interfaces/interface/address", "/interfaces/interface[name='eth0/1']/address"})
        EXPECT_EQ(Find("example-interfaces", path), address) << path;
    EXPECT_EQ(Find("example-interfaces", "/interfaces/interface/address/ip"),
              "example-interfaces|/interfaces/interface/address/ip|if:interfaces/if:interface/if:address/if:ip|own");
    EXPECT_EQ(Find("example-interfaces", "/interfaces/interface/negotiated/interval"),
              "example-interfaces|/interfaces/interface/negotiated/interval|"
              "if:interfaces/if:interface/if:negotiated/if:interval|own");
}

TEST(InspectFind, FindsWhatAugmentsAdd)
{
    const std::string qos = "example-interface-qos";
    EXPECT_EQ(Find(qos, "/interfaces/interface/traffic"),
              qos + "|/interfaces/interface/traffic|if:interfaces/if:interface/ifq:traffic|target 0");
    EXPECT_EQ(Find(qos, "/if:interfaces/if:interface/ifq:traffic/matched"),
              qos + "|/interfaces/interface/traffic/matched|if:interfaces/if:interface/ifq:traffic/matched|target 0");
    /* Added to what another augment added. */
    EXPECT_EQ(Find("example-interface-shaping", "interfaces/interface/traffic/shaper"),
              "example-interface-shaping|/interfaces/interface/traffic/shaper|"
              "if:interfaces/if:interface/ifq:traffic/ifs:shaper|target 0");
    /* The module that holds the augment is the one to ask, whichever module's tree shows the node. */
    EXPECT_EQ(Find("example-interfaces", "interfaces/interface/traffic", {"--load", qos}),
              qos + "|/interfaces/interface/traffic|if:interfaces/if:interface/ifq:traffic|own");
    const std::string asked = qos + "|/interfaces/interface/traffic|if:interfaces/if:interface/ifq:traffic|target 0";
    EXPECT_EQ(Find("example-interface-shaping", "/interfaces/interface/traffic"), asked + " unanswered");
    EXPECT_EQ(Find("example-interface-shaping", "/interfaces/interface/traffic", {"--load", qos}), asked);
    EXPECT_EQ(Find("example-interface-shaping", "/interfaces/interface/shaping-rate", {"--load", qos}),
              qos + "|/interfaces/interface|if:interfaces/if:interface/if:mode/ifq:shaping-rate|target 0 holder");
}

TEST(InspectFind, TellsLeavesOfOneNameApart)
{
    ModelDir dir;
    dir.Add("x1", Container("top", Container("d", Leaf("deep", "string"))));
    dir.Add("x3", "<augment target-node=\"/x1:top/x1:d\">" + Leaf("deep", "string") + "</augment>", "x1");
    const auto find = [&](const char *path) {
        return Asked(Inspect({"find", "x1", path, "--load", "x3", "-d", dir.Path(), "--format", "json"}));
    };
    EXPECT_EQ(find("/top/d/x1:deep"), "x1|/top/d/deep|p:top/p:d/p:deep|own");
    EXPECT_EQ(find("/top/d/x3:deep"), "x3|/top/d/deep|x1:top/x1:d/p:deep|own");
}

TEST(InspectFind, AsksForTheHolderOfALeafThatTheLibraryDoesNotFindByItself)
{
    EXPECT_EQ(Find("example-interfaces", "/interfaces/interface/duplex"),
              "example-interfaces|/interfaces/interface|if:interfaces/if:interface|own holder");
    EXPECT_EQ(Find("example-interface-qos", "/interfaces/interface/shaping-rate"),
              "example-interface-qos|/interfaces/interface|"
              "if:interfaces/if:interface/if:mode/ifq:shaping-rate|target 1 holder");
    EXPECT_EQ(Find("example-interface-shaping", "/interfaces/interface/burst"),
              "example-interface-shaping|/interfaces/interface|"
              "if:interfaces/if:interface/if:mode/ifq:shaped/ifs:burst|target 1 holder");
}

TEST(InspectFind, SendsTheHostToTheModuleOfATargetsOwnNodes)
{
    const std::string asked = "example-interfaces|/interfaces/interface/mtu|if:interfaces/if:interface/if:mtu|target 0";
    EXPECT_EQ(Find("example-interface-qos", "/interfaces/interface/mtu"), asked + " unanswered");
    EXPECT_EQ(Find("example-interface-qos", "/interfaces/interface/mtu", {"--load", "example-interfaces"}), asked);
    const Result text = InspectExamples({"find", "example-interface-qos", "/interfaces/interface/mtu"});
    EXPECT_NE(LineWith(text.out, "(once example-interfaces is loaded: see --load)"), "") << text.out;
}

TEST(InspectFind, TakesTheRevisionOfTheModuleAsTheKeyThatTheHostGives)
{
    const rapidjson::Document json =
        Json(InspectExamples({"find", "example-interfaces@lab", "/interfaces", "--format", "json"}));
    EXPECT_STREQ(json["request"]["revision"].GetString(), "lab");
    EXPECT_TRUE(json["request"]["answered"].GetBool());
}

TEST(InspectFind, NamesOfChoicesLeadToTheSameLeafAndAChoiceIsShownWithoutRequest)
{
    EXPECT_EQ(Find("example-interfaces", "/interfaces/interface/mode/fixed/duplex"),
              "example-interfaces|/interfaces/interface|if:interfaces/if:interface|own holder");
    EXPECT_EQ(Find("example-interfaces", "/interfaces/interface/mode"), "none");
}

TEST(InspectFind, ShowsALeafBelowItsHolder)
{
    EXPECT_EQ(InspectExamples({"find", "example-interfaces", "/interfaces/interface/duplex"}).out,
              R"(leaf           /interfaces/interface/duplex
module         example-interfaces
tree           own tree of example-interfaces
pcModuleName   example-interfaces
pcPath         /interfaces/interface
pcXpathMain    if:interfaces/if:interface
               (this asks for the leaf's holder: the library does not find the leaf itself)

interface       class 0x1001  sample 0x52  key 1
  choice mode
    case fixed
      - duplex   20  enumeration
)");
}

TEST(InspectFind, ALeafListOfACaseIsFoundBelowItsClass)
{
    ModelDir dir;
    dir.Add("sys", Container("sys",
                             "<choice name=\"c\"><case name=\"x\"><leaf-list name=\"many\">"
                             "<type name=\"string\"/></leaf-list></case></choice>"));
    for (const std::vector<std::string> &words : std::vector<std::vector<std::string>>{
             {"find", "sys", "/sys/many"}, {"find", "sys", "/sys/c/x/many"}, {"find", "**/many"}}) {
        std::vector<std::string> args = words;
        args.insert(args.end(), {"-d", dir.Path(), "--format", "json"});
        const Result result = Inspect(args);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_NE(result.out.find("\"/sys/many\""), std::string::npos) << result.out;
    }
}

TEST(InspectFind, SaysHowFarAPathLeads)
{
    const std::pair<const char *, const char *> cases[] = {
        {"/interfaces/interface/mtuu", "no 'mtuu' below /interfaces/interface: did you mean 'mtu'?"},
        {"/interface", "no node /interface in the trees of 'example-interfaces': did you mean 'interfaces'?"},
        {"/interfaces/if2:interface", "no 'if2:interface' below /interfaces: did you mean 'interface'?"},
        {"/interfaces/interface/mtu/low", "/interfaces/interface/mtu is a leaf: nothing is below it"},
    };
    for (const auto &[path, text] : cases) {
        const Result result = InspectExamples({"find", "example-interfaces", path});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, std::string("korv-inspect: ") + text + "\n");
    }
    EXPECT_EQ(InspectExamples({"find", "example-interfaces", "/interfaces//mtu"}).exitCode, 2);
}

TEST(InspectFind, NamesTheOtherNodesThatAPathMayMean)
{
    ModelDir dir;
    dir.Add("base", Container("sys", Leaf("up", "string")));
    dir.Add("one", "<augment target-node=\"/base:sys\">" + Container("stats", Leaf("a", "string")) + "</augment>",
            "base");
    dir.Add("two", "<augment target-node=\"/base:sys\">" + Container("stats", Leaf("b", "string")) + "</augment>",
            "base one");
    const Result plain = Inspect({"find", "two", "/sys/stats", "-d", dir.Path()});
    EXPECT_EQ(plain.exitCode, 0);
    EXPECT_EQ(plain.err, "korv-inspect: '/sys/stats' may mean /base:sys/two:stats as well\n");
    const Result qualified = Inspect({"find", "two", "/sys/two:stats", "-d", dir.Path()});
    EXPECT_EQ(qualified.err, "");
    EXPECT_NE(LineWith(qualified.out, "- b"), "") << qualified.out;
}

TEST(InspectWalk, ListsTheCallbacksInTheirOrder)
{
    EXPECT_EQ(InspectExamples({"walk", "example-interfaces", "/interfaces/interface/address/ip"}).out,
              "   1  ancestor    interface    class 0x1001  sample 0x52  key 1\n"
              "   2  ancestor  interfaces     class 0x1000  sample 0x51\n"
              "   3  node          address    class 0x1003  key 1  ancestor key 10\n"
              "   4  node            history  class 0x1004  key 1  ancestor keys 20 21\n");
    const rapidjson::Document json =
        Json(InspectExamples({"walk", "example-interface-qos", "/interfaces/interface/traffic", "--format", "json"}));
    ASSERT_EQ(json.Size(), 3U);
    EXPECT_EQ(Compact(json[2]), R"({"callback":"node","name":"traffic","kind":"node","depth":2,)"
                                R"("path":"/interfaces/interface/traffic","class_id":12289,"task_id":null,)"
                                R"("place":{"file":"examples/yin/example-interface-qos.yin","line":25,"column":5}})");
}

TEST(InspectEnums, FollowsTypedefsAndLeafrefs)
{
    EXPECT_EQ(InspectExamples({"enums", "example-interfaces", "/interfaces/interface/status"}).out,
              "down     0\nup       1\ntesting  10\ndormant  11\n");
    EXPECT_EQ(
        Compact(
            Json(InspectExamples({"enums", "example-interfaces", "interfaces/interface/duplex", "--format", "json"}))),
        R"([{"name":"half","value":0,"task_id":120,"place":{"file":"examples/yin/example-interfaces.yin","line":107,"column":15}},)"
        R"({"name":"full","value":1,"task_id":120,"place":{"file":"examples/yin/example-interfaces.yin","line":108,"column":15}}])");
    ModelDir dir;
    dir.Add("ref", Container("top", Leaf("mode",
                                         "<type name=\"enumeration\"><enum name=\"on\"><value value=\"-3\"/>"
                                         "</enum></type>") +
                                        Leaf("same", "<type name=\"leafref\"><path value=\"../mode\"/></type>")));
    EXPECT_EQ(Inspect({"enums", "ref", "/top/same", "-d", dir.Path()}).out, "on  -3\n");
    const Result other = InspectExamples({"enums", "example-interfaces", "/interfaces/interface/mtu"});
    EXPECT_EQ(other.exitCode, 1);
    EXPECT_EQ(other.err, "korv-inspect: /interfaces/interface/mtu is no enumeration, but uint16\n");
}

} // namespace
