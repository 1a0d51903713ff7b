/* Loads with every allocation failing in turn, and with files cut or changed at every byte. */
#include <gtest/gtest.h>
#include <korv_lib_yang.h>
#include <qxyang.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "schema.h"
#include "support/compact_twin.h"
#include "support/operator_new.h"

namespace {

/* Allocations of this program until one fails; none fails while it is negative. */
long g_allocationsLeft = -1;
bool g_allFail = false; /* that one and all after it */
long g_liveBlocks = 0;

} // namespace

void *test::New(std::size_t size)
{
    if (g_allocationsLeft == 0) {
        if (!g_allFail)
            g_allocationsLeft = -1;
        return nullptr;
    }
    if (g_allocationsLeft > 0)
        --g_allocationsLeft;
    ++g_liveBlocks;
    return std::malloc(size != 0 ? size : 1);
}

void test::Delete(void *memory)
{
    g_liveBlocks -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

namespace {

using test::Schema;

/* How many failures the latest load recorded, how many of them name no place in a file, and how many no module. */
struct FailureCount {
    int all = 0;
    int unplaced = 0;
    int unnamed = 0;
};

FailureCount CountFailures(Schema &schema)
{
    FailureCount count;
    auto add = [](const char *module, const char *file, uint32_t line, const char *text, uint32_t column,
                  void *cookie) {
        auto &failures = *static_cast<FailureCount *>(cookie);
        ++failures.all;
        failures.unnamed += module == nullptr || *module == '\0' ? 1 : 0;
        std::string place =
            std::string(file != nullptr ? file : "") + ":" + std::to_string(line) + ":" + std::to_string(column) + ": ";
        failures.unplaced += line == 0 || std::string(text).find(place) != 0 ? 1 : 0;
        return 0u;
    };
    QY_CTX_ScanAllSchemaLoadFail(schema.Context(), add, &count);
    return count;
}

/* A module that passes through every stage of a load, and those that it needs. */
void WriteModels(Schema &schema)
{
    schema.Module("ext", R"(<extension name="id"><argument name="value"/></extension>
        <extension name="note"><argument name="text"><yin-element value="true"/></argument></extension>)");
    schema.Module("base",
                  R"(<revision date="2020-01-01"/><feature name="f"/><feature name="g"><if-feature name="f"/></feature>
        <identity name="i"/><container name="top"><leaf name="l"><type name="string"/><ext:id value="1"/></leaf>
        <choice name="ch"/><container name="far"><leaf name="f"><type name="string"/></leaf></container></container>
        <grouping name="gr"><leaf name="a"><type name="string"/><ext:id value="0"/></leaf><container name="in"/>
        </grouping>)",
                  "ext");
    for (const char *name : {"sub", "other"})
        schema.File(
            std::string(name) + ".yin", std::string("<submodule name=\"") + name +
                                            R"(" xmlns="urn:ietf:params:xml:ns:yang:yin:1"><belongs-to module="m">
        <prefix value="m"/></belongs-to><yang-version value="1.1"/><include module="sub"/><include module="other"/>
        <leaf name="in-)" + name + R"("><type name="string"/></leaf></submodule>)");
    schema.Module("m", R"(<include module="sub"/><ext:note><ext:text>words</ext:text></ext:note>
        <typedef name="t"><type name="enumeration"><enum name="x"/><enum name="y"/></type></typedef>
        <typedef name="n"><type name="int32"><range value="1..5|7"/></type></typedef>
        <container name="c"><if-feature name="base:f and not base:g"/><uses name="base:gr"><refine target-node="a">
          <ext:id value="2"/></refine><augment target-node="in"><leaf name="k"><type name="t"/></leaf></augment></uses>
          <list name="li"><key value="k"/><leaf name="k"><type name="n"/></leaf></list>
          <leaf name="r"><type name="leafref"><path value="../li/k"/></type></leaf>
          <leaf name="lost"><type name="leafref"><path value="/base:top/base:far/base:f"/></type></leaf>
          <leaf name="lost-too"><type name="union"><type name="leafref"><path value="/base:top/base:far/base:f"/></type></type>
          </leaf>
          <leaf name="u"><type name="union"><type name="t"/><type name="identityref"><base name="base:i"/></type></type>
          </leaf></container>
        <augment target-node="/base:top"><ext:id value="3"/><leaf name="added"><type name="bits"><bit name="b"/></type></leaf>
        </augment>
        <augment target-node="/base:top/base:ch"><leaf name="short"><type name="string"/></leaf></augment>
        <deviation target-node="/base:top/base:l"><deviate value="replace"><type name="leafref">
          <path value="/base:top/added"/></type><ext:id value="4"/></deviate>
          <deviate value="add"><units name="u"/></deviate></deviation>
        <deviation target-node="/base:top/base:far"><deviate value="not-supported"/></deviation>)",
                  "base ext");
}

std::string State(Schema &schema)
{
    std::string state = schema.Loaded({"ext", "base", "m"});
    for (const char *name : {"base", "m"})
        if (schema.Mod(name) != nullptr)
            state += "\n" + schema.Tree(name);
    return state;
}

/* Fails allocation 0, 1, 2, ... of the operation until it succeeds: alone, and together with all after it. */
template <class Operation>
void SweepAllocations(Schema &schema, const Operation &operation)
{
    const std::string before = State(schema);
    for (bool all : {false, true}) {
        for (long allowed = 0;; ++allowed) {
            g_allFail = all;
            g_allocationsLeft = allowed;
            uint32_t result = operation();
            g_allocationsLeft = -1;
            if (result == 0)
                break;
            ASSERT_EQ(State(schema), before) << "allocation " << allowed;
            ASSERT_LT(allowed, 100000);
        }
        if (!all) {
            ASSERT_NE(State(schema), before);
            ASSERT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
            ASSERT_EQ(State(schema), before);
        }
    }
}

TEST(AllocationSweep, LoadsWithNothingToBeginWith)
{
    Schema schema;
    WriteModels(schema);
    int unexplained = 0;
    SweepAllocations(schema, [&] {
        uint32_t result = QY_CTX_LoadModule(schema.Context(), "m", nullptr);
        g_allocationsLeft = -1;
        unexplained += (CountFailures(schema).all != 0) != (result != 0) ? 1 : 0;
        return result;
    });
    EXPECT_EQ(unexplained, 0);
}

/* The same models in compact syntax, but for the one whose extensions the others use. */
void WriteCompactModels(Schema &schema)
{
    WriteModels(schema);
    for (const char *name : {"base", "m", "sub", "other"}) {
        std::ifstream file(schema.Dir() + "/" + name + ".yin", std::ios::binary);
        schema.File(std::string(name) + ".yang",
                    test::CompactTwin(std::string(std::istreambuf_iterator<char>(file), {})));
        std::filesystem::remove(schema.Dir() + "/" + name + ".yin");
    }
}

TEST(AllocationSweep, LoadsOfCompactModels)
{
    Schema schema;
    WriteCompactModels(schema);
    SweepAllocations(schema, [&] { return QY_CTX_LoadModule(schema.Context(), "m", nullptr); });
    schema.File("bad.yang", "module bad { namespace urn:b; prefix b; description \"a\n  \\q\" + 'c'; unknown x; leaf");
    for (long allowed = 0; allowed < 100; ++allowed) {
        g_allFail = false;
        g_allocationsLeft = allowed;
        EXPECT_NE(QY_CTX_LoadModule(schema.Context(), "bad", nullptr), 0u);
        g_allocationsLeft = -1;
        EXPECT_NE(CountFailures(schema).all, 0);
    }
}

TEST(AllocationSweep, LoadsThatChangeOtherModules)
{
    Schema schema;
    WriteModels(schema);
    schema.Load("base");
    SweepAllocations(schema, [&] { return QY_CTX_LoadModule(schema.Context(), "m", nullptr); });
}

TEST(AllocationSweep, LoadsThatFailAnyway)
{
    Schema schema;
    WriteModels(schema);
    schema.Module("bad",
                  R"(<import module="none"><prefix value="x"/></import><leaf name="l"><type name="none"/></leaf>)");
    for (long allowed = 0; allowed < 300; ++allowed) {
        g_allFail = false;
        g_allocationsLeft = allowed;
        EXPECT_NE(QY_CTX_LoadModule(schema.Context(), "bad", nullptr), 0u);
        g_allocationsLeft = -1;
        EXPECT_NE(CountFailures(schema).all, 0);
        EXPECT_EQ(CountFailures(schema).unnamed, 0);
    }
}

TEST(AllocationSweep, OtherCalls)
{
    Schema schema;
    WriteModels(schema);
    schema.Module("d1", R"(<deviation target-node="/base:top/base:l"><deviate value="add"><ext:id value="d1"/></deviate>
        </deviation>)",
                  "base ext");
    schema.Module("d2", R"(<deviation target-node="/base:top/base:l"><deviate value="add"><ext:id value="d2"/></deviate>
        </deviation>)",
                  "base ext");
    for (const char *name : {"base", "d1", "d2"})
        schema.Load(name);
    QY_NODE *top = schema.Node("base", "top");
    QY_NODE *leaf = schema.Node("base", "top/l");
    // How often the operation fails before it succeeds.
    auto sweep = [](const auto &operation) {
        long allowed = 0;
        g_allFail = false;
        for (uint32_t result = 1; result != 0; ++allowed) {
            g_allocationsLeft = allowed;
            result = operation();
            g_allocationsLeft = -1;
        }
        return allowed - 1;
    };
    uint32_t lost = 0;
    EXPECT_GT(sweep([&] {
                  uint32_t result = QY_CTX_UnloadModule(schema.Context(), "d1");
                  lost += result != 0 && QY_CTX_GetModuleByModName(schema.Context(), "d1") == nullptr ? 1 : 0;
                  return result;
              }),
              1);
    EXPECT_EQ(lost, 0u);
    EXPECT_EQ(schema.Loaded({"d1", "d2"}), "d2");
    EXPECT_EQ(test::Extensions(leaf), "ext:id(1) ext:id(d2)");
    EXPECT_GT(sweep([&] { return QY_NODE_ReplaceDstExtInst(top, leaf); }), 1);
    EXPECT_EQ(test::Extensions(top), "ext:id(1) ext:id(d2)");
    EXPECT_GT(sweep([&] { return QY_CTX_SetSearchDir(schema.Context(), "/a/name/that/fits/into/no/small/string"); }),
              1);
    for (const char *name : {"m.yin", "m.yang"}) {
        const std::string text = name == std::string("m.yin") ? test::ModuleText("m", "<leaf name=\"l\"/>")
                                                              : "module m { prefix 'm' + \"\\n\"; } // end";
        EXPECT_GT(sweep([&] {
                      QXYANG_FILE *file =
                          QXYANG_ReadText(name, text.data(), text.size(), uint32_t{QXYANG_OPTION_COMMENTS});
                      QXYANG_CloseFile(file);
                      return file != nullptr ? 0u : 1u;
                  }),
                  3);
    }
    const char *dir = schema.Dir().c_str();
    QXYANG_LISTINGS *listings = QXYANG_OpenListings(&dir, 1);
    uint32_t files = 0; // a listing that failed half way is read again
    EXPECT_GT(sweep([&] {
                  auto count = [](uint32_t, const char *, int32_t, void *cookie) {
                      ++*static_cast<uint32_t *>(cookie);
                      return 0u;
                  };
                  return QXYANG_ScanListedFiles(listings, count, &files);
              }),
              3);
    EXPECT_EQ(files, 7u);
    QXYANG_CloseListings(listings);
    const long blocks = g_liveBlocks;
    EXPECT_GT(sweep([&schema] {
                  auto ask = [](QY_NODE *node, void *, void *) {
                      QXYANG_NODE_DETAILS_S details;
                      return QXYANG_GetNodeDetails(node, &details);
                  };
                  QY_CTX *context = QY_CTX_Create(QY_CTX_OPTION_KORV);
                  if (context == nullptr)
                      return 1u;
                  uint32_t result = QXYANG_KeepDetails(context);
                  if (result == 0)
                      result = QY_CTX_SetSearchDir(context, schema.Dir().c_str());
                  if (result == 0)
                      result = QY_CTX_LoadModule(context, "m", nullptr);
                  if (result == 0)
                      result = QXYANG_ScanLostTargets(
                          context, [](const QXYANG_LOST_TARGET_S *, void *) { return 0u; }, nullptr);
                  if (result == 0)
                      result = QY_MOD_IterScanTopmostNode(QY_CTX_GetModuleByModName(context, "m"), ask, nullptr);
                  QY_CTX_Delete(context);
                  return result;
              }),
              100);
    EXPECT_EQ(g_liveBlocks, blocks);
    EXPECT_GT(sweep([] {
                  QY_CTX *context = QY_CTX_Create(QY_CTX_OPTION_KORV);
                  QY_CTX_Delete(context);
                  return context != nullptr ? 0u : 1u;
              }),
              0);
}

/* What a host sees of a tree, a line a node. */
std::string TreeText(const KorvTreeNode *node, const std::string &indent = "")
{
    std::string text;
    for (; node != nullptr; node = node->pstNextSibling) {
        text += indent + node->pcName + " " + std::to_string(node->uiClassId) + " key " +
                std::to_string(node->aucSelfNodeKey[0]);
        for (uint32_t i = 0; node->pstLeafList != nullptr && i < VEC_VectorCount(node->pstLeafList); ++i) {
            const auto *leaf = static_cast<const KorvTreeLeaf *>(node->pstLeafList->ppvItem[i]);
            text += std::string(" ") + leaf->pcName + "=" + std::to_string(leaf->uiFieldId);
        }
        text += "\n" + TreeText(node->pstFirstChild, indent + " ");
    }
    return text;
}

/* A load of the library while memory is missing in the schema layer: a class whose statements are copied half-way must not
 * look like a whole one afterwards. */
TEST(AllocationSweep, LeafrefClassHasTheSameTreeAfterAFailure)
{
    Schema schema;
    std::string extensions;
    for (const char *name : {"class-id", "field-id", "class-type"})
        extensions += std::string("<extension name=\"") + name + "\"><argument name=\"value\"/></extension>";
    schema.Module("quelvo-mim-extensions", extensions);
    auto leaf = [](const std::string &name, const std::string &type) {
        return "<leaf name=\"" + name + "\">" + type + "</leaf>";
    };
    auto leafref = [&](const std::string &name) {
        return leaf(name, "<type name=\"leafref\"><path value=\"../set/" + name + "\"/></type>");
    };
    auto target = [&](const std::string &name, const std::string &id) {
        return leaf(name, "<quelvo-mim-extensions:field-id value=\"" + id + "\"/><type name=\"string\"/>");
    };
    schema.Module("m",
                  "<container name=\"top\"><list name=\"l\"><quelvo-mim-extensions:class-type value=\"leafref\"/>"
                  "<key value=\"a\"/>" +
                      leafref("a") + leafref("b") + leafref("c") +
                      "<container name=\"set\"><quelvo-mim-extensions:class-id value=\"9\"/>" + target("a", "1") +
                      target("b", "2") + target("c", "3") + "</container></list></container>",
                  "quelvo-mim-extensions");
    const std::string expected = "top 0 key 0\n l 9 key 1 a=1 b=2 c=3\n  set 9 key 1 a=1 b=2 c=3\n";
    long swept = 0;
    for (bool all : {false, true}) {
        bool met = true;
        for (long allowed = 0; met; ++allowed) {
            TELMYANG_LOCAL_DATA_S *instance = YANGLIB_Initial(0, 0, nullptr, schema.Dir().c_str(), nullptr);
            ASSERT_NE(instance, nullptr);
            g_allFail = all;
            g_allocationsLeft = allowed;
            (void)YANGLIB_LoadYangModule(instance, "m", nullptr);
            met = g_allocationsLeft <= 0;
            g_allocationsLeft = -1;
            EXPECT_EQ(YANGLIB_LoadYangModule(instance, "m", nullptr), 0u);
            const auto *file = TELMYANG_GetIfYangModuleExist(instance, instance->pstYangCtx, "m", nullptr);
            EXPECT_EQ(TreeText(file != nullptr ? file->pstOriginTree : nullptr), expected) << "allocation " << allowed;
            YANGLIB_Uninitial(instance);
            ++swept;
            ASSERT_LT(allowed, 100000);
        }
    }
    EXPECT_GT(swept, 100);
}

TEST(Rounds, LeaveNothingBehind)
{
    Schema schema;
    WriteModels(schema);
    schema.Module("bad", R"(<augment target-node="/base:top"><leaf name="x"><type name="none"/></leaf></augment>)",
                  "base");
    schema.Load("base");
    QY_NODE *leaf = schema.Node("base", "top/l");
    long before = 0;
    for (int round = 0; round < 100; ++round) {
        EXPECT_NE(QY_CTX_LoadModule(schema.Context(), "bad", nullptr), 0u);
        EXPECT_EQ(QY_CTX_LoadModule(schema.Context(), "m", nullptr), 0u);
        EXPECT_EQ(QY_NODE_ReplaceDstExtInst(leaf, schema.Node("m", "c/a")), 0u);
        EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), "m"), 0u);
        if (round == 1)
            before = g_liveBlocks;
    }
    EXPECT_EQ(g_liveBlocks, before);
}

/* A load or a located failure, and a context that goes on working. */
void ExpectLoadOrFailure(Schema &schema, const std::string &name, const std::string &text, size_t at,
                         const char *suffix = ".yin")
{
    schema.File(name + suffix, text);
    if (QY_CTX_LoadModule(schema.Context(), name.c_str(), nullptr) == 0) {
        ASSERT_EQ(QY_CTX_UnloadModule(schema.Context(), name.c_str()), 0u);
        return;
    }
    FailureCount failures = CountFailures(schema);
    ASSERT_GT(failures.all, 0) << name << " byte " << at;
    ASSERT_EQ(failures.unplaced, 0) << name << " byte " << at;
    ASSERT_EQ(schema.Loaded({name}), "");
}

std::string SweptText(Schema &schema)
{
    WriteModels(schema);
    schema.Load("base");
    schema.Load("ext");
    return test::ModuleText("m", R"y(<include module="sub"/>
<typedef name="t"><type name="int8"><range value="1..5"/></type></typedef>
<container name="c"><ext:id value="1"/><uses name="base:gr"/><leaf name="r"><type name="leafref"><path value="../a"/></type>
</leaf></container>
<augment target-node="/base:top"><leaf name="x"><type name="t"/><if-feature name="base:f or (base:g)"/></leaf></augment>
<deviation target-node="/base:top/base:l"><deviate value="delete"><ext:id value="1"/></deviate></deviation>)y",
                            "base ext");
}

TEST(FileSweep, CutAtEveryByte)
{
    Schema schema;
    const std::string text = SweptText(schema);
    const std::string before = State(schema);
    for (size_t size = 0; size <= text.size(); ++size)
        ExpectLoadOrFailure(schema, "m", text.substr(0, size), size);
    EXPECT_EQ(State(schema), before);
}

TEST(FileSweep, ExamplesCutAtEveryByte)
{
    Schema schema;
    for (const auto &path : test::YinFiles(KORV_SOURCE_DIR "/examples/yin"))
        std::filesystem::copy(path, schema.Dir());
    for (const auto &path : test::YinFiles(KORV_SOURCE_DIR "/examples/yin")) {
        std::ifstream file(path, std::ios::binary);
        const std::string yin(std::istreambuf_iterator<char>(file), {});
        ASSERT_FALSE(yin.empty());
        for (const char *suffix : {".yin", ".yang"}) {
            const std::string text = std::string(suffix) == ".yin" ? yin : test::CompactTwin(yin);
            for (size_t size = 0; size <= text.size() && !HasFatalFailure(); ++size)
                ExpectLoadOrFailure(schema, path.stem(), text.substr(0, size), size, suffix);
            schema.Load(path.stem());
            EXPECT_EQ(QY_CTX_UnloadModule(schema.Context(), path.stem().c_str()), 0u);
            std::filesystem::remove(schema.Dir() + "/" + path.stem().string() + suffix);
        }
        schema.File(path.filename(), yin);
    }
}

TEST(FileSweep, ChangedAtEveryByte)
{
    Schema schema;
    const std::string text = SweptText(schema);
    const std::string before = State(schema);
    for (size_t at = 0; at < text.size(); ++at) {
        for (char change : {'\0', ' ', '<', '"', '/', 'x', '\x80'}) {
            std::string changed = text;
            changed[at] = change;
            ExpectLoadOrFailure(schema, "m", changed, at);
        }
    }
    std::filesystem::remove(schema.Dir() + "/m.yin");
    const std::string compact = test::CompactTwin(text);
    for (size_t at = 0; at < compact.size(); ++at) {
        for (char change : {'\0', ' ', '"', '\'', '/', '*', '{', '}', ';', '\\', ':', '\n', 'x', '\x80'}) {
            std::string changed = compact;
            changed[at] = change;
            ExpectLoadOrFailure(schema, "m", changed, at, ".yang");
        }
    }
    EXPECT_EQ(State(schema), before);
}

} // namespace
