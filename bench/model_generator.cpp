#include "model_generator.h"

#include <array>
#include <string_view>

namespace bench {
namespace {

constexpr uint32_t LEAVES_A_CLASS = 8;
constexpr uint32_t TREE_LEAVES = 4;
constexpr uint32_t LISTS_A_BRANCH = 10;
constexpr uint32_t FIRST_EXTENDING_CLASS = 1000000;
/* Siblings as models have them; the path of NestPath goes on in the fifth. */
constexpr std::array<std::string_view, 8> SECTIONS = {"interfaces", "statistics", "policies", "alarms",
                                                      "neighbors",  "history",    "settings", "sessions"};
constexpr uint32_t SECTION_ON = 4;
constexpr std::array<std::string_view, 8> TYPES = {
    R"(<type name="string"/>)",
    R"(<type name="uint32"/>)",
    R"(<type name="percent"/>)",
    R"(<type name="enumeration"><enum name="down"/><enum name="up"/></type>)",
    R"(<type name="uint64"/>)",
    R"(<type name="boolean"/>)",
    R"(<type name="uint16"><range value="1..4094"/></type>)",
    R"(<type name="int32"/>)",
};
constexpr std::array<std::string_view, 8> DATATYPES = {"25", "6", "4", "29", "8", "283", "4", "5"};

void AddStatement(std::string *text, const char *indent, std::string_view keyword, std::string_view value)
{
    *text += indent;
    *text += "<mimext:";
    *text += keyword;
    *text += " value=\"";
    *text += value;
    *text += "\"/>\n";
}

void AddLeaf(std::string *text, uint32_t index)
{
    const std::string id = std::to_string(index + 1);
    *text += "      <leaf name=\"attribute-" + id + "\">\n        ";
    *text += TYPES[index % TYPES.size()];
    *text += "\n";
    AddStatement(text, "        ", "field-id", id);
    AddStatement(text, "        ", "datatype-id", DATATYPES[index % DATATYPES.size()]);
    AddStatement(text, "        ", "name2id-key-fid", id);
    *text += "      </leaf>\n";
}

void AddClassHead(std::string *text, const std::string &name, uint32_t classId)
{
    *text += "    <list name=\"" + name + "\">\n      <key value=\"attribute-1\"/>\n";
    AddStatement(text, "      ", "class-id", std::to_string(classId));
    for (uint32_t i = 0; i < LEAVES_A_CLASS; ++i)
        AddLeaf(text, i);
}

/* Everything in front of the module's own definitions. */
std::string Head(const std::string &name)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<module name=")" +
           name + R"(" xmlns="urn:ietf:params:xml:ns:yang:yin:1" xmlns:b="urn:)" + name +
           R"(" xmlns:mimext="urn:quelvo:yang:mim-extensions">
  <yang-version value="1.1"/>
  <namespace uri="urn:)" +
           name +
           R"("/>
  <prefix value="b"/>
  <import module="quelvo-mim-extensions">
    <prefix value="mimext"/>
  </import>
)";
}

void AddLevel(std::string *text, uint32_t level, uint32_t levels)
{
    for (uint32_t i = 0; i < SECTIONS.size(); ++i) {
        *text += "<container name=\"" + std::string(SECTIONS[i]) + "\">\n";
        if (i == SECTION_ON && level + 1 < levels)
            AddLevel(text, level + 1, levels);
        *text += "</container>\n";
    }
}

/* A leaf with a description, of a type that needs no typedef. */
void AddPlainLeaf(std::string *text, uint32_t index)
{
    static constexpr std::array<size_t, TREE_LEAVES> PLAIN = {0, 1, 5, 4}; /* of TYPES */
    const std::string id = std::to_string(index + 1);
    *text += "      <leaf name=\"attribute-" + id + "\">\n        ";
    *text += TYPES[PLAIN[index]];
    *text +=
        "\n        <description><text>What the device counts here since it was started, or since a user set "
        "the value to zero for the last time.</text></description>\n";
    AddStatement(text, "        ", "field-id", id);
    AddStatement(text, "        ", "datatype-id", DATATYPES[PLAIN[index]]);
    *text += "      </leaf>\n";
}

/* A list without its end. */
void AddTreeList(std::string *text, uint32_t number)
{
    *text += "    <list name=\"class-" + std::to_string(number) + "\">\n      <key value=\"attribute-1\"/>\n";
    AddStatement(text, "      ", "class-id", std::to_string(number + 2));
    for (uint32_t i = 0; i < TREE_LEAVES; ++i)
        AddPlainLeaf(text, i);
}

} // namespace

std::string WideModule(const std::string &name, uint32_t children)
{
    std::string text = Head(name) + "  <container name=\"top\">\n";
    AddStatement(&text, "    ", "class-id", "1");
    for (uint32_t i = 0; i < children; ++i) {
        text += "    <container name=\"child-" + std::to_string(i) + "\">\n";
        AddStatement(&text, "      ", "class-id", std::to_string(i + 2));
        text += "    </container>\n";
    }
    return text + "  </container>\n</module>\n";
}

std::string DeepModule(const std::string &name, uint32_t chains, uint32_t levels)
{
    std::string text = Head(name) + "  <container name=\"top\">\n";
    AddStatement(&text, "    ", "class-id", "1");
    uint32_t classId = 2;
    for (uint32_t chain = 0; chain < chains; ++chain) {
        for (uint32_t level = 0; level < levels; ++level) {
            const bool isFirst = level == 0;
            text += "    <list name=\"" + (isFirst ? "chain-" + std::to_string(chain) : "l") + "\">\n";
            text += "      <key value=\"attribute-1\"/>\n";
            AddStatement(&text, "      ", "class-id", std::to_string(classId++));
            AddLeaf(&text, 0);
        }
        for (uint32_t level = 0; level < levels; ++level)
            text += "    </list>\n";
    }
    return text + "  </container>\n</module>\n";
}

std::string NestModule(const std::string &name, uint32_t levels)
{
    std::string text = Head(name);
    AddLevel(&text, 0, levels);
    return text + "</module>\n";
}

std::string AugmentModule(const std::string &name, const std::string &module, const std::string &target)
{
    return R"(<module name=")" + name + R"(" xmlns="urn:ietf:params:xml:ns:yang:yin:1" xmlns:x="urn:)" + name +
           R"(" xmlns:b="urn:)" + module + R"(">
  <namespace uri="urn:)" +
           name + R"("/>
  <prefix value="x"/>
  <import module=")" +
           module + R"(">
    <prefix value="b"/>
  </import>
  <augment target-node=")" +
           target + R"(">
    <container name="added"/>
  </augment>
</module>
)";
}

std::string FlatName(uint32_t number)
{
    return "bench-flat-" + std::to_string(number);
}

std::string FlatModule(const std::string &name, uint32_t leaves)
{
    std::string text = Head(name) + R"(  <typedef name="percent">
    <type name="uint16"/>
  </typedef>
  <container name="top">
)";
    AddStatement(&text, "    ", "class-id", "1");
    for (uint32_t i = 0; i < leaves; ++i)
        AddLeaf(&text, i);
    return text + "  </container>\n</module>\n";
}

std::vector<std::string> NestPath(uint32_t levels)
{
    return std::vector<std::string>(levels, std::string(SECTIONS[SECTION_ON]));
}

std::string MixedModule(const std::string &name, uint32_t nodes)
{
    std::string text = Head(name) + R"(  <typedef name="percent">
    <type name="uint16">
      <range value="0..100"/>
    </type>
  </typedef>
  <container name="top">
)";
    AddStatement(&text, "    ", "class-id", "1");
    const uint32_t nodesAPair = 2 * (LEAVES_A_CLASS + 1);
    uint32_t classId = 2;
    for (uint32_t made = 1; made + nodesAPair <= nodes; made += nodesAPair) {
        AddClassHead(&text, "class-" + std::to_string(classId), classId);
        AddClassHead(&text, "inner", classId + 1);
        text += "      <mimext:ancestor-key-fid value=\"1\">\n";
        AddStatement(&text, "        ", "field-id", "20");
        text += "      </mimext:ancestor-key-fid>\n    </list>\n    </list>\n";
        classId += 2;
    }
    text += "  </container>\n</module>\n";
    return text;
}

std::string TreeModule(const std::string &name, uint32_t lists)
{
    std::string text = Head(name) + "  <container name=\"top\">\n";
    AddStatement(&text, "    ", "class-id", "1");
    for (uint32_t i = 0; i < lists; ++i) {
        if (i % LISTS_A_BRANCH == 0 && i != 0)
            text += "    </list>\n";
        AddTreeList(&text, i);
        if (i % LISTS_A_BRANCH != 0)
            text += "    </list>\n";
    }
    return text + (lists != 0 ? "    </list>\n" : "") + "  </container>\n</module>\n";
}

std::string ExtendingModule(const std::string &name, const std::string &module, uint32_t augments)
{
    std::string text = Head(name);
    text.insert(text.find(" xmlns:mimext"), " xmlns:t=\"urn:" + module + "\"");
    text += "  <import module=\"" + module + "\"><prefix value=\"t\"/></import>\n";
    for (uint32_t i = 0; i < augments; ++i) {
        text += "  <augment target-node=\"/t:top\">\n    <container name=\"" + name + "-" + std::to_string(i) + "\">\n";
        AddStatement(&text, "      ", "class-id", std::to_string(FIRST_EXTENDING_CLASS + i));
        AddPlainLeaf(&text, 0);
        AddPlainLeaf(&text, 1);
        text += "    </container>\n  </augment>\n";
    }
    return text + "</module>\n";
}

std::string ExtensionModule()
{
    std::string text =
        R"(<module name="quelvo-mim-extensions" xmlns="urn:ietf:params:xml:ns:yang:yin:1" xmlns:mimext="urn:quelvo:yang:mim-extensions"><namespace uri="urn:quelvo:yang:mim-extensions"/><prefix value="mimext"/>)";
    for (const char *keyword : {"class-id", "field-id", "aaa-task-id", "datatype-id", "ref-id-key-fid",
                                "name2id-key-fid", "ancestor-key-fid", "class-type", "tlmt-sample-id"})
        text += "<extension name=\"" + std::string(keyword) + "\"><argument name=\"value\"/></extension>";
    return text + "</module>";
}

} // namespace bench
