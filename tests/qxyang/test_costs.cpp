/* What models cost that multiply two of their sizes. The schema layer is compiled into this program so that each basic
 * block counts when it is entered, and so does what is allocated: both are the same in every run. */
#include <gtest/gtest.h>
#include <qxyang.h>

#include <cstdlib>
#include <functional>

#include "schema.h"
#include "support/operator_new.h"

namespace {

struct Cost {
    uint64_t blocks = 0; /* of code that was run */
    uint64_t bytes = 0;  /* allocated, whether released again or not */
};

Cost g_cost;

} // namespace

extern "C" void __sanitizer_cov_trace_pc(void);
extern "C" void __sanitizer_cov_trace_pc(void)
{
    ++g_cost.blocks;
}

void *test::New(std::size_t size)
{
    g_cost.bytes += size;
    return std::malloc(size != 0 ? size : 1);
}

void test::Delete(void *memory)
{
    std::free(memory);
}

namespace {

using test::Schema;

/* The text for 0, 1, ... with each '#' replaced by the number. */
std::string Each(int count, const std::string &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        for (char c : text)
            all += c == '#' ? std::to_string(i) : std::string(1, c);
    return all;
}

const std::string STRING = "<type name=\"string\"/>";
const std::string LEAVES = "<leaf name=\"name#\">" + STRING + "</leaf>";

std::string Container(const std::string &body)
{
    return "<container name=\"c\">" + body + "</container>";
}

std::string Grouping(const std::string &body)
{
    return "<grouping name=\"g\">" + body + "</grouping>";
}

std::string Typedef(const std::string &body)
{
    return "<typedef name=\"t\"><type name=\"" + body + "</type></typedef>";
}

std::string Deviations(const std::string &path, const std::string &kind, const std::string &body)
{
    return "<deviation target-node=\"" + path + "\"><deviate value=\"" + kind + "\">" + body + "</deviate></deviation>";
}

/* A grouping of one leaf, copied about that many times by groupings that each use the one before twice. */
std::string Doubled(int count, const std::string &leaf)
{
    std::string text = "<grouping name=\"g0\">" + leaf + "</grouping>";
    int level = 0;
    for (; count > 1; count /= 2, ++level) {
        std::string use = "\"><uses name=\"g" + std::to_string(level) + "\"/></container>";
        text += "<grouping name=\"g" + std::to_string(level + 1) + "\"><container name=\"a" + use +
                "<container name=\"b" + use + "</grouping>";
    }
    return text + Container("<uses name=\"g" + std::to_string(level) + "\"/>");
}

std::string Leaf(const std::string &name, const std::string &type)
{
    return "<leaf name=\"" + name + "\"><type name=\"" + type + "</type></leaf>";
}

/* A range of that many single numbers. */
std::string Parts(int count, int distance)
{
    std::string text = "<range value=\"0";
    for (int i = 1; i < count; ++i)
        text += "|" + std::to_string(i * distance);
    return text + "\"/>";
}

struct Model {
    const char *what;
    std::function<std::string(int)> body;
    const char *failure = ""; /* what the first one says */
};

const Model MODELS[] = {
    {"conditions of a uses and of its nodes",
     [](int n) {
         return Grouping(Each(n, "<leaf name=\"l#\">" + STRING + "<if-feature name=\"f\"/></leaf>")) +
                Container("<uses name=\"g\">" + Each(n, "<if-feature name=\"f\"/>") + "</uses>");
     }},
    {"conditions above many nodes",
     [](int n) {
         return Grouping("<container name=\"k\">" + Each(n, LEAVES) + "</container>") +
                Container("<uses name=\"g\">" + Each(n, "<refine target-node=\"k\"><if-feature name=\"f\"/></refine>") +
                          "</uses>");
     }},
    {"refines of one node",
     [](int n) {
         return Grouping("<container name=\"k\"/>") +
                Container("<uses name=\"g\">" + Each(n, "<refine target-node=\"k\"><m:x v=\"#\"/></refine>") +
                          "</uses>");
     }},
    {"deviates that add to a node",
     [](int n) { return Container("") + Each(n, Deviations("/c", "add", "<m:x v=\"#\"/>")); }},
    {"deviates that take from a node",
     [](int n) {
         return Container(Each(n, "<m:x v=\"#\"/>")) + Each(n, Deviations("/c", "delete", "<m:x v=\"#\"/>"));
     }},
    {"deviates that change a node's type and properties",
     [](int n) {
         return Container(Leaf("l", "int8\">") + Leaf("r", "int8\">")) +
                Each(n, Deviations("/c/l", "replace",
                                   "<type name=\"leafref\"><path value=\"../r\"/></type><config value=\"true\"/>") +
                            Deviations("/c/l", "replace", "<config value=\"false\"/>"));
     }},
    {"types that restrict an enumeration",
     [](int n) {
         return Typedef("enumeration\">" + Each(n, "<enum name=\"e#\"/>")) +
                Each(n, Leaf("l#", "t\"><enum name=\"e#\"/>"));
     }},
    {"types that restrict a range with gaps",
     [](int n) { return Typedef("uint32\">" + Parts(n, 2)) + Each(n, Leaf("l#", "t\"><range value=\"max\"/>")); }},
    {"types that restrict a range of adjoining parts",
     [](int n) { return Typedef("uint32\">" + Parts(n, 1)) + Each(n, Leaf("l#", "t\"><range value=\"0..max\"/>")); }},
    {"names of each uses in a container",
     [](int n) {
         return Each(n, "<grouping name=\"g#\"><choice name=\"h#\"/></grouping>") +
                Container(Each(n, "<uses name=\"g#\"><augment target-node=\"h#\">" + LEAVES + "</augment></uses>"));
     }},
    {"names added twice",
     [](int n) {
         std::string add = "<augment target-node=\"/c/h#\"><leaf name=\"l\">" + STRING + "</leaf></augment>";
         return Container(Each(n, "<choice name=\"h#\"/>")) + Each(n, add + add);
     },
     "second node 'l' in container 'c'"},
    {"extensions", [](int n) { return Each(n, "<extension name=\"x#\"/>") + Container(Each(n, "<m:x#/>")); }},
    {"unknown extensions",
     [](int n) { return Each(n, "<extension name=\"right#\"/>") + Container(Each(n, "<m:wright#/>")); },
     "module 'm' has no extension 'wright0'; did you mean 'right0'?"},
    {"targets of deviations that are not there",
     [](int n) { return Container(Each(n, LEAVES)) + Each(n, Deviations("/c/nane#", "not-supported", "")); },
     "deviation '/c/nane0': container 'c' has no node 'nane0' of module 'm'; did you mean 'name0'?"},
    {"targets of refines that are not there",
     [](int n) {
         return Grouping(Each(n, LEAVES)) +
                Container("<uses name=\"g\">" + Each(n, "<refine target-node=\"nane#\"/>") + "</uses>");
     },
     "refine 'nane0': grouping 'g' has no node 'nane0'; did you mean 'name0'?"},
    {"targets of leafrefs that are not there",
     [](int n) { return Container(Each(n, LEAVES + Leaf("r#", "leafref\"><path value=\"../nane#\"/>"))); },
     "leafref 'r0' with path '../nane0': 'c' has no 'nane0'; did you mean 'name0'?"},
    {"leafrefs past choices",
     [](int n) {
         return Container(Each(n, "<choice name=\"h#\"/>") + Leaf("l", "int8\">") +
                          Each(n, Leaf("r#", "leafref\"><path value=\"../l\"/>")));
     }},
    {"defaults of a union",
     [](int n) {
         return Typedef("union\">" + Each(n, "<type name=\"uint32\"><range value=\"#\"/></type>")) +
                Each(n, Leaf("l#", "t\">") + "<leaf name=\"d#\"><type name=\"t\"/><default value=\"" +
                            std::to_string(n - 1) + "\"/></leaf>");
     }},
};

constexpr const char *HEAD = "<feature name=\"f\"/><extension name=\"x\"><argument name=\"v\"/></extension>";

/* Loads the module with all its features and asks every node whether it is enabled. The first failure's text, or nothing. */
std::string LoadAndAsk(QY_CTX *context)
{
    std::string first;
    if (QY_CTX_LoadModule(context, "m", nullptr) != 0) {
        auto keep = [](const char *, const char *, uint32_t, const char *text, uint32_t, void *cookie) {
            *static_cast<std::string *>(cookie) = text;
            return 1u;
        };
        QY_CTX_ScanAllSchemaLoadFail(context, keep, &first);
        return first;
    }
    auto ask = [](QY_NODE *node, uint32_t, void *) { return QY_NODE_IsEnabled(node) & 0u; };
    auto askBelow = [](QY_NODE *node, void *, void *cookie) {
        return QY_NODE_TreeScanAllNode(node, *static_cast<QY_TREE_SCAN_PF *>(cookie), nullptr);
    };
    QY_TREE_SCAN_PF scan = ask;
    QY_MOD *module = QY_CTX_GetModuleByModName(context, "m");
    QY_MOD_EnableFeature(module, QY_FEATURE_ALL);
    QY_MOD_IterScanTopmostNode(module, askBelow, &scan);
    return first;
}

Cost CostOf(const Model &model, int size)
{
    Schema schema;
    schema.Module("m", HEAD + model.body(size));
    g_cost = {};
    std::string failure = LoadAndAsk(schema.Context());
    Cost cost = g_cost;
    EXPECT_NE(failure.find(model.failure), std::string::npos) << model.what << ": " << failure;
    EXPECT_EQ(failure.empty(), *model.failure == '\0') << model.what << ": " << failure;
    return cost;
}

TEST(Costs, TenTimesTheModelCostsAtMostTwelveTimesAsMuch)
{
    for (const Model &model : MODELS) {
        Cost small = CostOf(model, 400);
        Cost large = CostOf(model, 4000);
        EXPECT_LE(large.blocks, small.blocks * 12) << model.what;
        EXPECT_LE(large.bytes, small.bytes * 12) << model.what;
    }
}

TEST(Costs, AWrongLeafrefCostsLittleMoreThanARightOne)
{
    auto copies = [](const std::string &target) {
        return [target](int) {
            return Doubled(512, Each(100, LEAVES) + Leaf("r", "leafref\"><path value=\"../" + target + "\"/>"));
        };
    };
    Cost right = CostOf({"right", copies("name1")}, 0);
    Cost wrong = CostOf({"wrong", copies("nane1"), "'a' has no 'nane1'; did you mean 'name1'?"}, 0);
    EXPECT_LE(wrong.blocks, right.blocks * 3 / 2);
}

TEST(Costs, WhatManyNodesShareIsLimited)
{
    const Model models[] = {
        {"statements of a node that is used often",
         [](int) {
             return Grouping("<container name=\"k\">" + Each(6000, "<m:x v=\"1\"/>") + "</container>") +
                    Each(6000, "<container name=\"c#\"><uses name=\"g\"/></container>");
         },
         "the load needs more than 33554432 extension statements of schema nodes"},
        {"the same, with another one each time",
         [](int) {
             return Grouping("<container name=\"k\">" + Each(2100, "<m:x v=\"1\"/>") + "</container>") +
                    Each(2100,
                         "<container name=\"c#\"><uses name=\"g\"><refine target-node=\"k\"><m:x v=\"1\"/></refine>"
                         "</uses></container>");
         },
         "the load needs more than 4194304 extension statements of nodes that are refined or deviated"},
        {"a node's statements, once for each deviation",
         [](int) {
             return Grouping("<container name=\"k\">" + Each(5700, "<m:x v=\"1\"/>") + "</container>") +
                    Container(Each(5700, "<container name=\"c#\"><uses name=\"g\"/></container>")) +
                    Each(5700, Deviations("/c/c#/k", "add", "<m:x v=\"1\"/>"));
         },
         "the load needs more than 4194304 extension statements of nodes that are refined or deviated"},
        {"a range with many parts, put there by deviations",
         [](int) {
             return Typedef("uint32\">" + Parts(17000, 2)) + Container(Each(17000, LEAVES)) +
                    Each(17000, Deviations("/c/name#", "replace", "<type name=\"t\"/>"));
         },
         "the load needs more than 268435456 parts of ranges of leaves"},
        {"a range that many leafrefs lead to",
         [](int) {
             return Container(Leaf("l", "uint32\">" + Parts(17000, 2)) +
                              Each(17000, Leaf("r#", "leafref\"><path value=\"../l\"/>")));
         },
         "the load needs more than 268435456 parts of ranges of leaves"},
        {"types that many leafrefs lead through",
         [](int) {
             std::string nested = Each(33000, Leaf("r#", "leafref\"><path value=\"../l\"/>"));
             for (int i = 0; i < 64; ++i)
                 nested = Container(Leaf("l", "t126\">") + nested);
             std::string typedefs =
                 "<typedef name=\"t0\"><type name=\"leafref\"><path value=\"../../l\"/></type></typedef>";
             for (int i = 1; i < 127; ++i)
                 typedefs += "<typedef name=\"t" + std::to_string(i) + "\"><type name=\"t" + std::to_string(i - 1) +
                             "\"/></typedef>";
             return typedefs + Container(Leaf("l", "int8\">") + nested);
         },
         "the load needs more than 268435456 types on the ways of leafrefs"},
        {"a range with many parts",
         [](int) { return Typedef("uint32\">" + Parts(17000, 2)) + Each(17000, Leaf("l#", "t\">")); },
         "the load needs more than 268435456 parts of ranges of leaves"},
        {"members of a union",
         [](int) {
             return Typedef("union\">" + Each(2100, "<type name=\"leafref\"><path value=\"/t\"/></type>")) +
                    Each(2100, Leaf("l#", "t\">"));
         },
         "the load needs more than 4194304 leafrefs"},
        {"unions in a union",
         [](int) {
             return "<typedef name=\"ref\"><type name=\"union\"><type name=\"leafref\"><path value=\"/t\"/></type>"
                    "</type></typedef>" +
                    Typedef("union\">" + Each(5800, "<type name=\"union\"><type name=\"ref\"/></type>")) +
                    Each(5800, Leaf("l#", "t\">"));
         },
         "the load needs more than 33554432 steps of leafrefs"},
        {"a long path",
         [](int) {
             return Typedef("leafref\"><path value=\"" + Each(500, "/c") + "\"/>") + Each(70000, Leaf("l#", "t\">"));
         },
         "the load needs more than 33554432 steps of leafrefs"},
    };
    for (const Model &model : models)
        EXPECT_LE(CostOf(model, 0).bytes, size_t{512} << 20) << model.what;
}

TEST(Costs, LeavesShareTheStatementsThatTheyTakeOver)
{
    constexpr uint32_t STATEMENTS = 6000;
    constexpr uint32_t LEAVES_WITH_THEM = (32u << 20) / STATEMENTS;
    Schema schema;
    schema.Module("m", HEAD + Container("<leaf name=\"l\">" + STRING + Each(STATEMENTS, "<m:x v=\"#\"/>") + "</leaf>" +
                                        Each(LEAVES_WITH_THEM + 1, LEAVES)));
    schema.Load("m");
    struct Given {
        QY_NODE *source;
        uint32_t leaves = 0;
    } given{schema.Node("m", "c/l")};
    auto give = [](QY_NODE *leaf, void *, void *cookie) -> uint32_t {
        auto *to = static_cast<Given *>(cookie);
        if (QY_NODE_ReplaceDstExtInst(leaf, to->source) != 0)
            return 1;
        to->leaves += leaf != to->source ? 1 : 0;
        return 0;
    };
    g_cost = {};
    EXPECT_EQ(QY_NODE_IterScanChildrenNode(schema.Node("m", "c"), give, &given), 1u);
    EXPECT_EQ(given.leaves, LEAVES_WITH_THEM);
    EXPECT_LE(g_cost.bytes, size_t{2} << 20);
    EXPECT_EQ(test::Extensions(schema.Node("m", "c/name0")), ""); // as the model has it
}

TEST(Costs, HintsEndWhenTooManyNamesAreCompared)
{
    constexpr size_t NAMES = 30000;
    Schema schema;
    schema.Module("m", Container(Each(NAMES, LEAVES)) + Each(64, Deviations("/c/nane#", "not-supported", "")));
    std::string failures = schema.Failures("m");
    size_t hints = 0;
    for (size_t at = 0; (at = failures.find("did you mean", at)) != std::string::npos; ++at)
        ++hints;
    EXPECT_EQ(hints, ((size_t{1} << 20) + NAMES - 1) / NAMES);
}

/* What it costs to ask for a node's details once more. */
Cost CostOfDetails(QY_NODE *node)
{
    QXYANG_NODE_DETAILS_S details;
    EXPECT_EQ(QXYANG_GetNodeDetails(node, &details), 0u);
    g_cost = {};
    EXPECT_EQ(QXYANG_GetNodeDetails(node, &details), 0u);
    return g_cost;
}

TEST(Costs, ReloadsOfADeviationModuleLeaveNoDetails)
{
    Schema schema;
    EXPECT_EQ(QXYANG_KeepDetails(schema.Context()), 0u);
    schema.LoadText("m", Container(Leaf("l", "int8\">")));
    schema.Module("dev", Deviations("/m:c/m:l", "add", "<units name=\"u\"/><must condition=\"a\"/>"), "m");
    schema.Module("bad", Deviations("/m:c/m:l", "add", "<must condition=\"a\"/>") + Leaf("l", "none\">"), "m");
    Cost first;
    Cost firstDetails;
    for (int i = 0; i < 100; ++i) {
        g_cost = {};
        schema.Load("dev");
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "dev"), 0u);
        EXPECT_NE(QY_CTX_LoadModule(schema.Context(), "bad", nullptr), 0u);
        Cost cost = g_cost;
        Cost details = CostOfDetails(schema.Node("m", "c/l"));
        if (i == 1) {
            first = cost;
            firstDetails = details;
        }
        if (i == 99) {
            EXPECT_LE(cost.blocks, first.blocks * 101 / 100);
            EXPECT_LE(cost.bytes, first.bytes * 101 / 100);
            EXPECT_EQ(details.blocks, firstDetails.blocks);
            EXPECT_EQ(details.bytes, firstDetails.bytes);
        }
    }
}

TEST(Costs, AModuleAmongManyCostsWhatItCostsAmongFew)
{
    struct Costs {
        uint64_t details; /* of a leaf whose type is long derived */
        uint64_t load;    /* of a module that imports another one */
        uint64_t unload;  /* of both */
    };
    auto costsAmong = [](int modules) {
        Schema schema;
        EXPECT_EQ(QXYANG_KeepDetails(schema.Context()), 0u);
        for (int i = 0; i < modules; ++i)
            schema.LoadText("other" + std::to_string(i), Typedef("int8\">"));
        std::string typedefs = "<typedef name=\"t0\"><type name=\"int8\"/></typedef>";
        for (int i = 1; i < 100; ++i)
            typedefs += "<typedef name=\"t" + std::to_string(i) + "\"><type name=\"t" + std::to_string(i - 1) +
                        "\"/></typedef>";
        schema.LoadText("z", typedefs + Leaf("l", "t99\">"));
        Costs costs{CostOfDetails(schema.Node("z", "l")).blocks, 0, 0};
        schema.Module("imported", "");
        schema.Module("m", Leaf("l", "int8\">"), "imported");
        g_cost = {};
        schema.Load("m");
        costs.load = g_cost.blocks;
        g_cost = {};
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
        costs.unload = g_cost.blocks;
        return costs;
    };
    Costs few = costsAmong(1);
    Costs many = costsAmong(400);
    EXPECT_LE(many.details, few.details * 3 / 2);
    EXPECT_LE(many.load, few.load * 3 / 2);
    EXPECT_LE(many.unload, few.unload * 3 / 2);
}

} // namespace
