/* Hostile models end in a failure that names the limit, soon and without harm. */
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>

#include "schema.h"

namespace {

using test::Schema;

std::string Repeat(int count, const std::function<std::string(int)> &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text(i);
    return all;
}

std::string Nested(int depth, const std::string &begin, const std::string &end)
{
    return Repeat(depth, [&](int) { return begin; }) + Repeat(depth, [&](int) { return end; });
}

std::string Number(int i)
{
    return std::to_string(i);
}

struct HostileModel {
    const char *what;
    std::string body;
    std::string failure; /* how its first failure ends */
};

std::vector<HostileModel> HostileModels()
{
    const std::string string = "<type name=\"string\"/>";
    return {
        {"nested containers", Nested(100000, "<container name=\"c\">", "</container>"),
         "elements are nested deeper than 512 levels"},
        {"nested extension statements", Nested(100000, "<m:x>", "</m:x>"),
         "elements are nested deeper than 512 levels"},
        {"nested text", "<description><text>" + Nested(100000, "<b>", "</b>") + "</text></description>",
         "elements are nested deeper than 512 levels"},
        {"groupings that double",
         "<grouping name=\"g0\"><leaf name=\"x\">" + string + "</leaf></grouping>" +
             Repeat(40,
                    [](int i) {
                        std::string use = "<uses name=\"g" + Number(i) + "\"/></container>";
                        return "<grouping name=\"g" + Number(i + 1) + "\"><container name=\"a\">" + use +
                               "<container name=\"b\">" + use + "</grouping>";
                    }),
         "the load needs more than 4194304 schema nodes"},
        {"containers in groupings in containers",
         Repeat(100,
                [](int i) {
                    return "<grouping name=\"g" + Number(i) + "\">" +
                           Repeat(9, [](int) { return std::string("<container name=\"c\">"); }) + "<uses name=\"g" +
                           Number(i + 1) + "\"/>" + Repeat(9, [](int) { return std::string("</container>"); }) +
                           "</grouping>";
                }) +
             "<grouping name=\"g100\"/>",
         "schema nodes are nested deeper than 512 levels"},
        {"parentheses",
         "<feature name=\"f\"/><leaf name=\"l\">" + string + "<if-feature name=\"" + std::string(65, '(') + "f" +
             std::string(65, ')') + "\"/></leaf>",
         "it is nested deeper than 64 levels"},
        {"steps upwards",
         "<leaf name=\"l\"><type name=\"leafref\"><path value=\"" +
             Repeat(100000, [](int) { return std::string("../"); }) + "x\"/></type></leaf>",
         "it has more than 512 steps"},
        {"steps of an augment",
         "<augment target-node=\"" + Repeat(100000, [](int) { return std::string("/x"); }) + "\"/>",
         "more than 512 steps"},
        {"attributes", "<container name=\"c\" " + Repeat(1000, [](int i) { return " a" + Number(i) + "=\"\""; }) + "/>",
         "an element has more than 32 attributes"},
        {"name of an element", "<m:" + std::string(100000, 'x') + "/>",
         "...' is longer, with its namespace, than 1024 bytes"},
        {"name of a node", "<container name=\"" + std::string(100000, 'x') + "\"/>", "expected an identifier"},
        {"keys",
         "<list name=\"l\"><key value=\"" + Repeat(256, [](int i) { return " k" + Number(i); }) + "\"/>" +
             Repeat(256, [&](int i) { return "<leaf name=\"k" + Number(i) + "\">" + string + "</leaf>"; }) + "</list>",
         "key 'k255' of list 'l' is more than the 255 that a list can have"},
        {"nodes of one name", Repeat(100000, [&](int) { return "<leaf name=\"x\">" + string + "</leaf>"; }),
         "second node 'x' in module 'm'"},
    };
}

TEST(Limits, HostileModelsFailSoon)
{
    for (const HostileModel &model : HostileModels()) {
        Schema schema;
        schema.Module("m", "<extension name=\"x\"/>" + model.body);
        auto start = std::chrono::steady_clock::now();
        std::string failures = schema.Failures("m");
        std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::string first = failures.substr(0, failures.find('\n'));
        EXPECT_TRUE(first.ends_with(model.failure)) << model.what << ": " << first;
        EXPECT_TRUE(first.starts_with("m.yin:2:")) << model.what << ": " << first;
        EXPECT_LT(seconds.count(), 30) << model.what;
    }
}

/* A chain of references: one of `length` definitions of which each refers to the one below it. */
struct Chain {
    const char *what;
    std::string (*definition)(int index, const std::string &below); /* below: the name below, or "" */
    const char *use;                                                /* of the topmost definition, its name for '@' */
    const char *ascending;  /* how the failure ends when each definition stands before the one below it */
    const char *descending; /* likewise, behind it; null: no limit is needed */
};

std::string DefinitionName(int index)
{
    return "d" + Number(index);
}

/* A typedef over the one below, or over what stands at the bottom. */
std::string TypedefOf(int index, const std::string &below, const std::string &bottom, const std::string &restriction)
{
    std::string type = below.empty() ? bottom : "<type name=\"" + below + "\">" + restriction + "</type>";
    return "<typedef name=\"" + DefinitionName(index) + "\">" + type + "</typedef>";
}

const std::string STRING = "<type name=\"string\"/>";

constexpr const char *LEAF = "<leaf name=\"x\"><type name=\"@\"/></leaf>";
constexpr const char *LEAF_WITH_DEFAULT = "<leaf name=\"x\"><type name=\"@\"/><default value=\"9\"/></leaf>";
constexpr const char *TYPEDEFS = "typedef 'd128' is at the end of a chain of more than 128 typedefs";
constexpr const char *TYPES = "type is derived from a chain of more than 128 types";
constexpr const char *UNIONS = "union contains a chain of more than 128 types";

const Chain CHAINS[] = {
    {"typedefs", [](int i, const std::string &below) { return TypedefOf(i, below, STRING, ""); }, LEAF, TYPEDEFS,
     TYPES},
    {"typedefs that restrict",
     [](int i, const std::string &below) { return TypedefOf(i, below, STRING, "<length value=\"1..9\"/>"); }, LEAF,
     TYPEDEFS, TYPES},
    {"typedefs of an enumeration",
     [](int i, const std::string &below) {
         return TypedefOf(i, below, "<type name=\"enumeration\"><enum name=\"9\"/></type>", "");
     },
     LEAF_WITH_DEFAULT, TYPEDEFS, TYPES},
    {"typedefs of a leafref",
     [](int i, const std::string &below) {
         return TypedefOf(i, below, "<type name=\"leafref\"><path value=\"/t\"/></type>", "");
     },
     LEAF, TYPEDEFS, TYPES},
    {"unions in unions",
     [](int i, const std::string &below) {
         std::string member = below.empty() ? "<type name=\"uint8\"/>" : "<type name=\"" + below + "\"/>";
         return "<typedef name=\"" + DefinitionName(i) + "\"><type name=\"union\">" + member +
                "<type name=\"boolean\"/></type></typedef>";
     },
     LEAF_WITH_DEFAULT, TYPEDEFS, UNIONS},
    {"groupings",
     [](int i, const std::string &below) {
         std::string body = below.empty() ? "<leaf name=\"x\">" + STRING + "</leaf>" : "<uses name=\"" + below + "\"/>";
         return "<grouping name=\"" + DefinitionName(i) + "\">" + body + "</grouping>";
     },
     "<uses name=\"@\"/>", "grouping 'd128' is at the end of a chain of more than 128 groupings", nullptr},
    {"features",
     [](int i, const std::string &below) {
         std::string condition = below.empty() ? "" : "<if-feature name=\"" + below + "\"/>";
         return "<feature name=\"" + DefinitionName(i) + "\">" + condition + "</feature>";
     },
     "<leaf name=\"x\"><if-feature name=\"@\"/><type name=\"string\"/></leaf>",
     "feature 'd128' depends on a chain of more than 128 features",
     "feature 'd128' depends on a chain of more than 128 features"},
    {"identities",
     [](int i, const std::string &below) {
         std::string base = below.empty() ? "" : "<base name=\"" + below + "\"/>";
         return "<identity name=\"" + DefinitionName(i) + "\">" + base + "</identity>";
     },
     "<leaf name=\"x\"><type name=\"identityref\"><base name=\"@\"/></type></leaf>",
     "identity 'd128' is derived from a chain of more than 128 identities",
     "identity 'd128' is derived from a chain of more than 128 identities"},
};

std::string BodyOf(const Chain &chain, int length, bool ascending)
{
    std::string body = "<leaf name=\"t\">" + STRING + "</leaf>";
    for (int i = 0; i < length; ++i) {
        int below = ascending ? i + 1 : i - 1;
        bool isBottom = below < 0 || below == length;
        body += chain.definition(i, isBottom ? "" : DefinitionName(below));
    }
    std::string use = chain.use;
    use.replace(use.find('@'), 1, DefinitionName(ascending ? 0 : length - 1));
    return body + use;
}

uint32_t CountType(void *, void *, QY_TYPE *, void *cookie)
{
    ++*static_cast<int *>(cookie);
    return 0;
}

void ExpectChain(const Chain &chain, int length, bool ascending)
{
    SCOPED_TRACE(std::string(chain.what) + ", " + Number(length) + (ascending ? " ascending" : " descending"));
    constexpr int LIMIT = 128;
    const char *failure = ascending ? chain.ascending : chain.descending;
    Schema schema;
    if (length > LIMIT && failure != nullptr) {
        schema.Module("m", BodyOf(chain, length, ascending));
        std::string failures = schema.Failures("m");
        EXPECT_TRUE(failures.ends_with(std::string(failure) + "\n")) << failures;
        return;
    }
    schema.LoadText("m", BodyOf(chain, length, ascending));
    QY_NODE *leaf = schema.Node("m", "x");
    EXPECT_EQ(QY_NODE_IsEnabled(leaf), 0u + (chain.what == std::string("features") ? 0 : 1));
    QY_MOD_EnableFeature(schema.Mod("m"), QY_FEATURE_ALL);
    EXPECT_EQ(QY_NODE_IsEnabled(leaf), 1u);
    int types = 0;
    EXPECT_EQ(QY_NODE_ScanDerivedType(leaf, CountType, &types), 0u);
    if (std::string(chain.what).starts_with("typedefs")) {
        EXPECT_EQ(types, length + 1) << "the built-in type and every typedef";
    }
}

/* Each kind of chain up to its limit, one beyond, and ten times as long. */
TEST(Limits, ChainsAreLimitedInEitherDirection)
{
    for (const Chain &chain : CHAINS)
        for (bool ascending : {true, false})
            for (int length : {126, 127, 128, 129, 130, 135, 1280})
                ExpectChain(chain, length, ascending);
}

/* A limit is no way around by way of imports. */
TEST(Limits, ChainsAreLimitedAcrossModules)
{
    for (const Chain &chain : CHAINS) {
        if (chain.descending == nullptr)
            continue;
        Schema schema;
        schema.LoadText("lib", BodyOf(chain, 127, false));
        schema.LoadText("m1", chain.definition(1, "lib:d126"), "lib");
        schema.Module("m2", chain.definition(2, "m1:d1"), "m1");
        std::string failures = schema.Failures("m2");
        EXPECT_NE(failures.find("a chain of more than 128 "), std::string::npos) << chain.what << ": " << failures;
    }
}

/* Imports of 128 modules in a chain load, with includes of as many submodules at the end of it; no more. */
TEST(Limits, ChainsOfFilesAreLimited)
{
    for (int length : {128, 129, 1280}) {
        Schema schema;
        for (int i = 0; i < length; ++i)
            schema.Module("m" + Number(i), "", i + 1 < length ? "m" + Number(i + 1) : "");
        if (length == 128) {
            schema.Load("m0");
            continue;
        }
        std::string failures = schema.Failures("m0");
        EXPECT_EQ(failures.substr(0, failures.find('\n')),
                  "m127.yin:1:183: cannot import module 'm128': the chain of imports is longer than 128 modules");
    }
    for (int length : {127, 128, 1280}) {
        Schema schema;
        auto include = [length](int i) {
            return i < length ? "<include module=\"s" + Number(i) + "\"/>" : std::string();
        };
        schema.Module("m", include(0));
        for (int i = 0; i < length; ++i)
            schema.File("s" + Number(i) + ".yin",
                        "<submodule name=\"s" + Number(i) +
                            "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"><yang-version value=\"1.1\"/>"
                            "<belongs-to module=\"m\"><prefix value=\"m\"/></belongs-to>" +
                            include(i + 1) + "</submodule>");
        if (length == 127) {
            schema.Load("m");
            continue;
        }
        std::string failures = schema.Failures("m");
        EXPECT_NE(failures.find("cannot include submodule 's127': the chain of includes is longer than 128"),
                  std::string::npos)
            << failures.substr(0, failures.find('\n'));
    }
}

/* What comes when no more failures are recorded is not read at all, and nobody uses what is not there. */
TEST(Limits, FilesAfterTheLastRecordedFailure)
{
    for (int wrong : {62, 63, 64, 65, 640}) {
        auto wrongTypes =
            Repeat(wrong, [](int i) { return "<leaf name=\"l" + Number(i) + "\"><type name=\"none\"/></leaf>\n"; });
        const std::string submodule =
            "<submodule name=\"sub\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"><yang-version value=\"1.1\"/>"
            "<belongs-to module=\"a\"><prefix value=\"a\"/></belongs-to></submodule>";
        Schema schema;
        schema.Module("b", wrongTypes);
        schema.Module("c", "");
        schema.Module("bad", "<leaf/>");
        schema.File("sub.yin", submodule);
        schema.Module("a", "<include module=\"sub\"/>", "b c bad");
        schema.Module("missing", "", Repeat(wrong, [](int i) { return "none" + Number(i) + " "; }) + "c bad");
        for (const char *module : {"a", "missing"}) {
            std::string failures = schema.Failures(module);
            EXPECT_EQ(std::count(failures.begin(), failures.end(), '\n'), 64) << module << wrong;
        }
        schema.Load("c");
    }
}

/* What costs one node each costs no more when there are many. */
TEST(Limits, LargeFlatModelsLoad)
{
    Schema schema;
    schema.Module("lib", R"(<grouping name="g"><leaf name="l"><type name="string"/></leaf></grouping>)");
    schema.LoadText(
        "m",
        "<container name=\"c\">" +
            Repeat(20000,
                   [](int i) { return "<container name=\"n" + Number(i) + "\"><uses name=\"lib:g\"/></container>"; }) +
            "</container>",
        "lib");
    schema.LoadText("aug",
                    Repeat(20000,
                           [](int i) {
                               return "<augment target-node=\"/m:c\"><leaf name=\"a" + Number(i) +
                                      "\"><type name=\"leafref\"><path value=\"/m:c/m:n" + Number(19999 - i) +
                                      "/m:l\"/></type></leaf></augment>";
                           }),
                    "m");
    EXPECT_EQ(test::Path(QY_NODE_GetLeafrefTargetNode(schema.Node("m", "c/a0"), 0)), "/c/n19999/l");
    EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "aug"), 0u);
}

} // namespace
