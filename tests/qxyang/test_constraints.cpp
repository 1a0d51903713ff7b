/* What a module has to keep to as a whole: where operations stand, and what holds for config, defaults and numbers. */
#include <gtest/gtest.h>

#include "failure_cases.h"
#include "schema.h"

namespace {

using test::ExpectFailures;
using test::Schema;

/* RFC 7950, 7.15 and 7.16. What a grouping is right or wrong about is told there and not at its uses. */
/* RFC 7950, 7.15 and 7.16. What a grouping is right or wrong about is told there and not at its uses. */
TEST(FailureTexts, OfActionsAndNotificationsThatHaveNoPlace)
{
    const std::string groups =
        R"(<grouping name="a"><action name="go"/></grouping><grouping name="n"><notification name="up"/>
        </grouping><grouping name="deep"><container name="d"><choice name="e"><container name="f"><uses name="a"/></container>
        </choice></container></grouping>)";
    const struct {
        const char *body;
        const char *failures; /* on line 4 */
    } cases[] = {
        {R"(<uses name="a"/>)", "1: uses 'a': action 'go' cannot stand in module 'm'; expected a container or list"},
        {R"(<uses name="n"/>)", nullptr},
        {R"(<container name="c"><uses name="a"/><uses name="n"/><uses name="deep"/></container>)", nullptr},
        {R"(<choice name="c"><case name="k"><uses name="n"/></case></choice>)",
         "33: uses 'n': notification 'up' cannot stand in case 'k'; expected a container or list"},
        {R"(<grouping name="g"><choice name="c"><case name="k"><uses name="a"/></case></choice></grouping><uses name="g"/>)",
         "52: uses 'a': action 'go' cannot stand in case 'k'; expected a container or list"},
        {R"(<container name="c"><choice name="h"/></container><augment target-node="/c/h"><uses name="a"/></augment>)",
         "79: uses 'a': action 'go' cannot stand in case 'go'; expected a container or list"},
        {R"(<container name="c"/><augment target-node="/c"><uses name="a"/></augment>)", nullptr},
        {R"(<rpc name="r"><input><uses name="a"/></input></rpc>)",
         "22: uses 'a': action 'go' cannot stand below operation 'r'"},
        {R"(<rpc name="r"><output><list name="l"><uses name="deep"/></list></output></rpc>)",
         "38: uses 'deep': action 'go' cannot stand below operation 'r'"},
        {R"(<notification name="x"><container name="c"><notification name="y"/></container></notification>)",
         "44: notification 'y' cannot stand below notification 'x'"},
        {R"(<grouping name="g"><action name="b"><input><uses name="n"/></input></action></grouping><container name="c">
            <uses name="g"/></container>)",
         "44: uses 'n': notification 'up' cannot stand below operation 'b'"},
        {R"(<rpc name="r"/><augment target-node="/r/output"><container name="c"><action name="z"/></container></augment>)",
         "69: action 'z' cannot stand below operation 'r'"},
        {R"(<rpc name="r"><input><container name="c"/></input></rpc><augment target-node="/r/input/c"><uses name="n"/>
            </augment>)",
         "91: uses 'n': notification 'up' cannot stand below operation 'r'"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("m", groups + "\n" + test.body);
        if (test.failures == nullptr)
            schema.Load("m");
        else
            EXPECT_EQ(schema.Failures("m"), std::string("m.yin:5:") + test.failures + "\n");
    }
}

TEST(Constraints, HoldForWhatTheModuleMakesOfItInTheEnd)
{
    const std::string state = R"(<container name="s"><config value="false"/>)";
    const std::string number = R"(<type name="int8"/>)";
    const std::string leaf = R"(<leaf name="x"><config value="true"/>)" + number + "</leaf>";
    const std::string bodies[] = {
        state + R"(<list name="l"><key value="k"/><leaf name="k">)" + number + R"(</leaf><action name="a"><input>)" +
            leaf + "</input></action></list></container>",
        state + R"(<notification name="n">)" + leaf + "</notification></container>",
        R"(<grouping name="g">)" + leaf + "</grouping>" + state +
            R"(<uses name="g"><refine target-node="x"><config value="false"/></refine></uses></container>)",
        R"(<leaf-list name="l"><min-elements value="2"/><max-elements value="2"/>)" + number + "</leaf-list>",
        R"(<grouping name="g"><leaf name="x"><mandatory value="true"/>)" + number +
            R"(</leaf></grouping><uses name="g"><refine target-node="x"><mandatory value="false"/><default value="3"/>
            </refine></uses>)",
        R"(<leaf name="l"><type name="int8"/><default value="0X7F"/></leaf><leaf name="p"><type name="int8"><range
            value="1..2|4..5"/></type><default value="2"/></leaf><leaf name="s"><type name="int8"/><default value="+5"/></leaf>
            <leaf name="z"><type name="uint8"/><default value="-0"/></leaf>)",
        R"(<leaf name="l"><type name="enumeration"><enum name="a"><value value="2147483646"/></enum><enum name="b"/></type>
            </leaf><leaf name="b"><type name="bits"><bit name="a"><position value="4294967294"/></bit><bit name="b"/></type>
            </leaf>)",
        R"(<container name="c"><choice name="ch"><default value="z"/><leaf name="l">)" + number +
            R"(</leaf></choice></container><augment target-node="/m:c/m:ch"><leaf name="z">)" + number +
            "</leaf></augment>",
        R"(<grouping name="g"><choice name="ch"><default value="z"/><leaf name="l">)" + number +
            R"(</leaf></choice></grouping><uses name="g"><augment target-node="ch"><leaf name="z">)" + number +
            "</leaf></augment></uses>",
    };
    for (const std::string &body : bodies) {
        Schema schema;
        schema.LoadText("m", body);
    }
    Schema schema;
    schema.LoadText("base", R"(<container name="c"><leaf name="x"><type name="int8"/><default value="3"/></leaf>
        <list name="l"><key value="k"/><leaf name="k"><type name="int8"/></leaf></list></container>)" +
                                state +
                                R"(<leaf name="y"><config value="false"/><type name="int8"/></leaf></container>)");
    schema.LoadText("dev", R"(<deviation target-node="/base:c/base:x"><deviate value="add"><mandatory value="true"/>
        </deviate></deviation><deviation target-node="/base:c/base:x"><deviate value="delete"><default value="3"/></deviate>
        </deviation><deviation target-node="/base:c/base:l"><deviate value="not-supported"/></deviation>
        <deviation target-node="/base:c/base:l/base:k"><deviate value="not-supported"/></deviation>
        <deviation target-node="/base:s/base:y"><deviate value="replace"><config value="true"/></deviate></deviation>
        <deviation target-node="/base:s"><deviate value="replace"><config value="true"/></deviate></deviation>)",
                    "base");
    schema.LoadText("dev2",
                    R"(<deviation target-node="/base:s/base:y"><deviate value="add"><default value="300"/></deviate>
        <deviate value="replace"><type name="enumeration"><enum name="none"/></type></deviate>
        <deviate value="replace"><default value="none"/></deviate></deviation>)",
                    "base");
    schema.LoadText("aug", "<augment target-node=\"/base:s\">" + leaf + "</augment>", "base");
    EXPECT_EQ(schema.Tree("base"),
              "container c\n  leaf x int8\ncontainer s\n  leaf y enumeration\n  leaf aug:x int8\n");
}

TEST(FailureTexts, OfConstraints)
{
    const auto leaf = [](const std::string &type, const std::string &value) {
        return "<leaf name=\"l\">" + type + "<default value=\"" + value + "\"/></leaf>";
    };
    const std::string string = "<type name=\"string\"/>";
    const std::string colour = "<type name=\"enumeration\"><enum name=\"red\"/></type>";
    const std::string choice = "<choice name=\"ch\"><default value=\"two\"/><case name=\"too\"/></choice>";
    const std::string state = "<container name=\"c\"><config value=\"false\"/>";
    const std::string group =
        "<grouping name=\"g\"><leaf name=\"x\"><config value=\"true\"/>" + string + "</leaf></grouping>";
    ExpectFailures({
        {choice, "@19: default 'two' is no case of choice 'ch'; did you mean 'too'?\n"},
        {leaf("<type name=\"uint8\"/>", "300"), "@36: default '300': expected 0..255\n"},
        {leaf("<type name=\"int8\"/>", "-0x80") +
             "<leaf name=\"n\"><type name=\"int8\"/><default value=\"0200\"/></leaf>",
         "@100: default '0200': expected -128..127\n"},
        {leaf("<type name=\"uint8\"/>", ""), "@36: default '': it is no number of the type\n"},
        {leaf("<type name=\"decimal64\"><fraction-digits value=\"1\"/><range value=\"1..2|4\"/></type>", "3.5"),
         "@97: default '3.5': expected 1.0..2.0|4.0\n"},
        {leaf(colour, "rad"), "@66: default 'rad': the type has no enum 'rad'; did you mean 'red'?\n"},
        {leaf("<type name=\"bits\"><bit name=\"up\"/></type>", "up at"),
         "@57: default 'up at': the type has no bit 'at'\n"},
        {leaf("<type name=\"boolean\"/>", "1"), "@38: default '1': expected 'true' or 'false'\n"},
        {leaf("<type name=\"empty\"/>", ""), "@36: default '': type 'empty' has no default\n"},
        {leaf("<type name=\"union\"><type name=\"int8\"/>" + colour + "</type>", "x"),
         "@111: default 'x': no type of the union has this value\n"},
        {"<typedef name=\"t\"><type name=\"string\"><length value=\"2..4\"/></type><default "
         "value=\"\xC3\xA4\"/></typedef>",
         "@68: default '\xC3\xA4': its length is 1; expected 2..4\n"},
        {"<leaf name=\"l\">" + string + "<default value=\"a\"/><mandatory value=\"true\"/></leaf>",
         "@1: leaf 'l' is mandatory and has a default\n"},
        {"<leaf-list name=\"l\">" + string + "<min-elements value=\"3\"/><max-elements value=\"2\"/></leaf-list>",
         "@67: max-elements 2 is less than min-elements 3\n"},
        {"<feature name=\"f\"/><list name=\"l\"><key value=\"k\"/><leaf name=\"k\">" + string +
             "<if-feature name=\"f\"/></leaf></list>",
         "@35: key 'k' of list 'l' has an 'if-feature', which no key may have\n"},
        {group + state + "<container name=\"d\">\n<uses name=\"g\"/></container></container>",
         "m.yin:3:1: leaf 'x' has config 'true' below container 'c', which has config 'false'\n"},
        {"<rpc name=\"r\"><input>" + state + "<leaf name=\"l\"><config value=\"true\"/>" + string +
             "</leaf></container></input></rpc><leaf name=\"x\"><type name=\"none\"/></leaf>",
         "@171: unknown type 'none'\n"},
    });
}

} // namespace
