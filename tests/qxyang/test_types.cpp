/* Type chains with the ranges and values that are effective at each step. */
#include <gtest/gtest.h>

#include "schema.h"

namespace {

using test::Schema;

TEST(Types, ChainsCarryEffectiveRestrictions)
{
    Schema schema;
    schema.Module("lib", R"(<typedef name="percent"><type name="uint8"><range value="0..100"/></type></typedef>
        <typedef name="alias"><type name="percent"/></typedef>
        <typedef name="parts"><type name="int16"><range value="min..-1 | 5 | 10 .. max"/></type></typedef>
        <typedef name="adjoining"><type name="int8"><range value="1..4|5..9|11"/></type></typedef>
        <typedef name="big"><type name="uint64"><range value="9223372036854775808..max"/></type></typedef>
        <typedef name="state"><type name="enumeration"><enum name="down"/><enum name="up"><value value="7"/></enum>
          <enum name="testing"/><enum name="low"><value value="-3"/></enum><enum name="next"/></type></typedef>
        <typedef name="negative"><type name="enumeration"><enum name="a"><value value="-5"/></enum><enum name="b"/></type>
        </typedef>)");
    struct {
        const char *type;
        const char *chain;
    } cases[] = {
        {R"(<type name="uint32"/>)", "uint32 0..4294967295"},
        {R"(<type name="int64"/>)", "int64 -9223372036854775808..9223372036854775807"},
        {R"(<type name="uint64"/>)", "uint64 0..-1"},
        {R"(<type name="lib:percent"/>)", "uint8 0..255 | uint8 0..100"},
        {R"(<type name="lib:alias"/>)", "uint8 0..255 | uint8 0..100 | uint8 0..100"},
        {R"(<type name="lib:alias"><range value="min..10|20"/></type>)",
         "uint8 0..255 | uint8 0..100 | uint8 0..100 | uint8 0..10 20..20"},
        {R"(<type name="lib:parts"><range value="min..max"/></type>)", nullptr},
        {R"(<type name="lib:parts"><range value="-7..-1|11|12..20"/></type>)",
         "int16 -32768..32767 | int16 -32768..-1 5..5 10..32767 | int16 -7..-1 11..11 12..20"},
        {R"(<type name="lib:big"/>)", "uint64 0..-1 | uint64 -9223372036854775808..-1"},
        {R"(<type name="lib:adjoining"><range value="3..7"/></type>)",
         "int8 -128..127 | int8 1..4 5..9 11..11 | int8 3..7"},
        {R"(<type name="int64"><range value="-9223372036854775808..-7"/></type>)",
         "int64 -9223372036854775808..9223372036854775807 | int64 -9223372036854775808..-7"},
        {R"(<type name="lib:state"/>)", "enumeration | enumeration down=0 up=7 testing=8 low=-3 next=9"},
        {R"(<type name="lib:state"><enum name="up"/><enum name="low"><value value="-3"/></enum></type>)",
         "enumeration | enumeration down=0 up=7 testing=8 low=-3 next=9 | enumeration up=7 low=-3"},
        {R"(<type name="lib:negative"/>)", "enumeration | enumeration a=-5 b=-4"},
        {R"(<type name="decimal64"><fraction-digits value="3"/><range value="-1.5..2.001"/></type>)",
         "decimal64 | decimal64"},
        {R"(<type name="string"><length value="1..4|8"/><pattern value="[a-z]*"><modifier value="invert-match"/></pattern>
            </type>)",
         "string | string"},
        {R"(<type name="union"><type name="lib:percent"/><type name="enumeration"><enum name="x"/></type></type>)",
         "union | union"},
        {R"(<type name="bits"><bit name="one"/><bit name="nine"><position value="9"/></bit></type>)", "bits | bits"},
        {R"(<type name="identityref"><base name="m:sub"/></type>)", "identityref | identityref"},
        {R"(<type name="empty"/>)", "empty"},
    };
    for (const auto &test : cases) {
        schema.Module("m",
                      std::string(R"(<identity name="root"/><identity name="sub"><base name="root"/></identity>
            <leaf name="l">)") +
                          test.type + "</leaf>",
                      "lib");
        if (test.chain == nullptr) { // not within one part of what it restricts
            EXPECT_EQ(schema.Failures("m"),
                      "m.yin:3:51: range 'min..max': it leaves what it restricts, "
                      "-32768..-1|5|10..32767\n");
            continue;
        }
        schema.Load("m");
        EXPECT_EQ(test::TypeChain(schema.Node("m", "l")), test.chain) << test.type;
        QY_CTX_UnloadModule(schema.Context(), "m");
    }
}

TEST(Types, EnumsOfFeaturesThatAreOffAreLeftOut)
{
    Schema schema;
    schema.LoadText("m", R"(<feature name="f"/><leaf name="l"><type name="enumeration"><enum name="a"/>
        <enum name="b"><if-feature name="f"/></enum><enum name="c"/></type></leaf>)");
    EXPECT_EQ(test::TypeChain(schema.Node("m", "l")), "enumeration | enumeration a=0 c=2");
    EXPECT_EQ(QY_MOD_EnableFeature(schema.Mod("m"), "f"), 0u);
    EXPECT_EQ(test::TypeChain(schema.Node("m", "l")), "enumeration | enumeration a=0 b=1 c=2");
}

TEST(Types, MistakesAreReportedWhereTheyStand)
{
    struct {
        const char *type;
        const char *failure;
    } cases[] = {
        {R"(<type name="unit8"/>)", ":1: unknown type 'unit8'; did you mean 'uint8'?"},
        {R"(<type name="x:t"/>)", ":1: unknown prefix 'x' in 'x:t'"},
        {R"(<type name="enumeration"/>)", ":1: type 'enumeration' has no 'enum'"},
        {R"(<type name="decimal64"/>)", ":1: type 'decimal64' has no 'fraction-digits'"},
        {R"(<type name="leafref"/>)", ":1: type 'leafref' has no 'path'"},
        {R"(<type name="string"><range value="1..2"/></type>)", ":21: 'range' is not allowed in type 'string'"},
        {R"(<type name="sized"><path value="/a"/></type>)",
         ":20: 'path' is not allowed in type 'sized', which is derived from 'uint8'"},
        {R"(<type name="uint8"><range value="0..256"/></type>)",
         ":20: range '0..256': it leaves what it restricts, 0..255"},
        {R"(<type name="uint8"><range value="9..3"/></type>)", ":20: range '9..3': 9 is greater than 3"},
        {R"(<type name="uint8"><range value="1..5|5"/></type>)",
         ":20: range '1..5|5': its parts do not ascend: 5 follows 5"},
        {R"(<type name="uint8"><range value="1..x"/></type>)", ":20: range '1..x': 'x' is no number of the type"},
        {R"(<type name="uint8"><range value="1..99999999999999999999999"/></type>)",
         ":20: range '1..99999999999999999999999': '99999999999999999999999' is no number of the type"},
        {R"(<type name="int64"><range value="-9223372036854775809..0"/></type>)",
         ":20: range '-9223372036854775809..0': '-9223372036854775809' is no number of the type"},
        {R"(<type name="uint8"><range value="1||2"/></type>)", ":20: range '1||2': '' is no number of the type"},
        {R"(<type name="sized"><range value="0"/></type>)", ":20: range '0': it leaves what it restricts, 1..9"},
        {R"(<type name="decimal64"><fraction-digits value="2"/><range value="1.234"/></type>)",
         ":52: range '1.234': '1.234' is no number of the type"},
        {R"(<type name="decimal64"><fraction-digits value="2"/><range value="-0.05..-1"/></type>)",
         ":52: range '-0.05..-1': -0.05 is greater than -1.00"},
        {R"(<type name="decimal64"><fraction-digits value="18"/><range value="-9.5..10"/></type>)",
         ":53: range '-9.5..10': '-9.5' is no number of the type"},
        {R"(<type name="string"><length value="-1"/></type>)", ":21: length '-1': '-1' is no number of the type"},
        {R"(<type name="enumeration"><enum name="a"/><enum name="a"/></type>)", ":42: second enum 'a'"},
        {R"(<type name="enumeration"><enum name="a"/><enum name="b"><value value="0"/></enum></type>)",
         ":42: enum 'b' has the value 0 of another"},
        {R"(<type name="enumeration"><enum name="a"><value value="2147483647"/></enum><enum name="b"/></type>)",
         ":75: enum 'b' needs a value: the highest possible one is in use"},
        {R"(<type name="bits"><bit name="a"><position value="4294967295"/></bit><bit name="b"/></type>)",
         ":69: bit 'b' needs a position: the highest possible one is in use"},
        {R"(<type name="colour"><enum name="rad"/></type>)",
         ":21: enum 'rad' is not in the type that is restricted; did you mean 'red'?"},
        {R"(<type name="colour"><enum name="red"><value value="5"/></enum></type>)",
         ":21: enum 'red' has the value 1 in the type that is restricted"},
        {R"(<type name="identityref"><base name="rot"/></type>)", ":26: unknown identity 'rot'; did you mean 'root'?"},
    };
    for (const auto &test : cases) {
        Schema schema;
        schema.Module("m",
                      std::string(R"(<typedef name="sized"><type name="uint8"><range value="1..9"/></type></typedef>
            <typedef name="colour"><type name="enumeration"><enum name="red"><value value="1"/></enum></type></typedef>
            <identity name="root"/><leaf name="l">)") +
                          "\n" + test.type + "</leaf>");
        EXPECT_EQ(schema.Failures("m"), std::string("m.yin:5") + test.failure + "\n") << test.type;
    }
}

} // namespace
