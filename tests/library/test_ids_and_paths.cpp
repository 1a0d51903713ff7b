/* Modules, nodes by their ids, and paths. */
#include <cstring>
#include <map>

#include "support/host.h"
#include "telem_yang/file_list.h"

namespace test {
namespace {

using Places = std::vector<YANGLIB_PLACE_S>;

const char *const EXAMPLES[] = {"example-interface-qos", "example-interfaces", "example-qos", "example-optics",
                                "example-interface-shaping"};

std::string TextOf(const YANGLIB_PLACE_S &place)
{
    return std::string(place.pstFile->pcModuleName) + " " + std::to_string(place.uiTree) +
           std::to_string(place.uiAugment) + std::to_string(place.uiIsOwn) + " " + place.pstNode->pcName;
}

std::vector<std::string> Texts(const Places &places)
{
    std::vector<std::string> texts;
    for (const YANGLIB_PLACE_S &place : places)
        texts.push_back(TextOf(place));
    return texts;
}

uint32_t AddPlace(const YANGLIB_PLACE_S *place, void *places)
{
    static_cast<Places *>(places)->push_back(*place);
    return 0;
}

uint32_t AddModule(const YANGLIB_MODULE_S *module, void *modules)
{
    static_cast<std::vector<YANGLIB_MODULE_S> *>(modules)->push_back(*module);
    return 0;
}

uint32_t AddLeaf(KorvTreeLeaf *leaf, void *leaves)
{
    static_cast<std::vector<KorvTreeLeaf *> *>(leaves)->push_back(leaf);
    return 0;
}

/* Everything below the place's node, parents first. */
void AddBelow(YANGLIB_PLACE_S place, Places *places)
{
    places->push_back(place);
    std::vector<KorvTreeNode *> children;
    YANGLIB_ScanNodes(
        place.pstNode,
        [](KorvTreeNode *node, void *all) {
            static_cast<std::vector<KorvTreeNode *> *>(all)->push_back(node);
            return 0u;
        },
        &children);
    for (KorvTreeNode *child : children) {
        place.pstNode = child;
        place.uiIsOwn = std::string(child->pcModuleName) == place.pstFile->pcModuleName ? 1 : 0;
        AddBelow(place, places);
    }
}

class IdsAndPaths : public HostTest {
  protected:
    std::vector<YANGLIB_MODULE_S> Modules()
    {
        std::vector<YANGLIB_MODULE_S> modules;
        EXPECT_EQ(YANGLIB_ScanModules(Local(), AddModule, &modules), 0u);
        return modules;
    }

    /* Every node of every tree in the order of YANGLIB_FindClass. */
    Places All()
    {
        Places tops;
        for (const YANGLIB_MODULE_S &module : Modules())
            EXPECT_EQ(YANGLIB_ScanTopNodes(module.pstFile, AddPlace, &tops), 0u);
        Places all;
        for (const YANGLIB_PLACE_S &top : tops)
            AddBelow(top, &all);
        return all;
    }

    Places Find(uint32_t classId)
    {
        Places places;
        const uint32_t result = YANGLIB_FindClass(Local(), classId, AddPlace, &places);
        EXPECT_EQ(result, places.empty() ? KORV_NOT_FOUND : KORV_OK);
        return places;
    }

    static std::vector<KorvTreeLeaf *> LeavesOf(const KorvTreeNode *node)
    {
        std::vector<KorvTreeLeaf *> leaves;
        EXPECT_EQ(YANGLIB_ScanLeaves(node, YANGLIB_LEAVES_DIRECT | YANGLIB_LEAVES_CASES, AddLeaf, &leaves), 0u);
        return leaves;
    }

    std::string PathOf(const KorvTreeNode *node, uint32_t form, const KorvTreeLeaf *leaf = nullptr)
    {
        char text[512];
        YANGLIB_TEXT_S out = {text, sizeof(text), 0};
        EXPECT_EQ(leaf != nullptr ? YANGLIB_GetLeafPath(Local(), node, leaf, form, &out)
                                  : YANGLIB_GetNodePath(Local(), node, form, &out),
                  0u);
        EXPECT_EQ(out.uiNeeded, std::strlen(text) + 1);
        return text;
    }

    KorvTreeNode *LookUp(const std::string &module, const KorvTreeNode *node)
    {
        const std::string names = PathOf(node, YANGLIB_PATH_NAMES);
        const std::string prefixed = PathOf(node, YANGLIB_PATH_PREFIXED);
        const YangXpathLookup lookup = {Local(), module.c_str(), nullptr, names.c_str(), prefixed.c_str(), 0, 0};
        return TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    }

    /* What the ids lead to is what a walk over all trees finds. */
    void ExpectAllFound()
    {
        std::map<uint32_t, Places> classes;
        std::map<std::pair<uint32_t, uint32_t>, std::pair<KorvTreeNode *, KorvTreeLeaf *>> attributes;
        for (const YANGLIB_PLACE_S &place : All()) {
            const uint32_t id = place.pstNode->uiClassId;
            if (id != 0)
                classes[id].push_back(place);
            for (KorvTreeLeaf *leaf : LeavesOf(place.pstNode))
                if (id != 0 && leaf->uiFieldId != 0)
                    attributes.try_emplace({id, leaf->uiFieldId}, place.pstNode, leaf);
        }
        for (const auto &[id, places] : classes) {
            const Places found = Find(id);
            EXPECT_EQ(Texts(found), Texts(places));
            ASSERT_EQ(found.size(), places.size());
            for (size_t i = 0; i < found.size(); ++i)
                EXPECT_EQ(found[i].pstNode, places[i].pstNode);
            EXPECT_EQ(Find(id + 0x10000000).size(), 0u);
        }
        for (const auto &[ids, expected] : attributes) {
            std::pair<KorvTreeNode *, KorvTreeLeaf *> found;
            EXPECT_EQ(YANGLIB_FindAttribute(Local(), ids.first, ids.second, &found.first, &found.second), 0u);
            EXPECT_EQ(found, expected) << ids.first << " " << ids.second;
            EXPECT_EQ(YANGLIB_FindAttribute(Local(), ids.first, ids.second + 300, &found.first, nullptr),
                      KORV_NOT_FOUND);
            EXPECT_EQ(found.first, nullptr);
        }
    }
};

TEST_F(IdsAndPaths, EveryIdAndPathOfTheExamplesLeadsBack)
{
    dir.AddExamples();
    for (const char *name : EXAMPLES)
        ASSERT_EQ(Load(name), 0u);
    ASSERT_GT(All().size(), 50u);
    ExpectAllFound();
    log.open = {false, false, false, false};
    for (const YANGLIB_PLACE_S &place : All()) {
        const KorvTreeNode *node = place.pstNode;
        if (node->ucNodeType != KORV_NODE_ORDINARY || place.uiTree == YANGLIB_TREE_SELF)
            continue;
        const KorvTreeNode *found = LookUp(node->pcModuleName, node);
        ASSERT_NE(found, nullptr) << TextOf(place);
        EXPECT_STREQ(found->pcName, node->pcName);
        EXPECT_EQ(found->uiClassId, node->uiClassId);
        if (place.uiIsOwn != 0 && place.uiAugment == 0) {
            EXPECT_EQ(found, node) << TextOf(place);
        }
        for (KorvTreeLeaf *leaf : LeavesOf(node)) {
            const std::string names = PathOf(node, YANGLIB_PATH_NAMES, leaf);
            EXPECT_EQ(names, PathOf(node, YANGLIB_PATH_NAMES) + "/" + leaf->pcName);
            const bool direct = LeafOf(node, leaf->pcName) == leaf;
            if (direct && std::string(leaf->pcModuleName) == node->pcModuleName) {
                EXPECT_EQ(TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), node->pcModuleName, nullptr, names.c_str(),
                                                               PathOf(node, YANGLIB_PATH_PREFIXED, leaf).c_str()),
                          found)
                    << names;
            }
        }
    }
}

TEST_F(IdsAndPaths, PathsInBothForms)
{
    dir.Add("m", Container("c", Leaf("own", "int8") + "<choice name=\"o\"><case name=\"p\">" +
                                    Container("q", Leaf("r", "int8")) + "</case></choice>"));
    dir.Add("x",
            "<augment target-node=\"/m:c/m:o\"><case name=\"s\">" + Container("t", Container("u", Leaf("v", "int8"))) +
                Leaf("w", "int8") + "</case></augment><augment target-node=\"/m:c\">" + Leaf("y", "int8") +
                "</augment>",
            "m");
    dir.Add("m2", "<augment target-node=\"/m:c\">" + Container("z", "") + "</augment>", "m");
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(Load("x"), 0u);
    const KorvTreeNode *c = File("x")->astAugment[0].pstTargetTree;
    const struct {
        const char *node;
        const char *leaf;
        const char *names;
        const char *prefixed;
    } cases[] = {
        {"c", "", "/c", "m:c"},
        {"c", "own", "/c/own", "m:c/m:own"},
        {"c/o", "", "/c", "m:c"},
        {"c/o/p/q", "", "/c/q", "m:c/m:q"},
        {"c/o/p/q", "r", "/c/q/r", "m:c/m:q/m:r"},
        {"c/o/s/t", "", "/c/t", "m:c/m:o/x:t"},
        {"c/o/s/t/u", "", "/c/t/u", "m:c/m:o/x:t/u"},
        {"c/o/s/t/u", "v", "/c/t/u/v", "m:c/m:o/x:t/u/v"},
        {"c/o/s", "w", "/c/w", "m:c/m:o/x:w"},
        {"c", "y", "/c/y", "m:c/x:y"},
    };
    for (const auto &each : cases) {
        const KorvTreeNode *node = NodeBelow(const_cast<KorvTreeNode *>(c), each.node);
        ASSERT_NE(node, nullptr) << each.node;
        const KorvTreeLeaf *leaf = *each.leaf != '\0' ? LeafOf(node, each.leaf) : nullptr;
        EXPECT_EQ(PathOf(node, YANGLIB_PATH_NAMES, leaf), each.names);
        EXPECT_EQ(PathOf(node, YANGLIB_PATH_PREFIXED, leaf), each.prefixed);
    }
    /* x is there by import alone: its nodes stand in the tree of m. */
    ASSERT_EQ(Unload("m"), 0u);
    ASSERT_EQ(Unload("x"), 0u);
    dir.Add("both", "", "m x");
    ASSERT_EQ(Load("both"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    const KorvTreeNode *u = Node("m", "c/o/s/t/u");
    ASSERT_NE(u, nullptr);
    EXPECT_EQ(PathOf(u, YANGLIB_PATH_PREFIXED), "m:c/m:t/m:u");
    EXPECT_EQ(LookUp("m", u), u);

    char text[9] = "????????";
    for (uint32_t size = 0; size <= 8; ++size) {
        YANGLIB_TEXT_S out = {size != 0 ? text : nullptr, size, 0};
        EXPECT_EQ(YANGLIB_GetNodePath(Local(), u, YANGLIB_PATH_NAMES, &out),
                  size >= 7 ? KORV_OK : KORV_BUFFER_TOO_SMALL);
        EXPECT_EQ(out.uiNeeded, 7u);
        EXPECT_STREQ(text, size == 0 ? "????????" : size >= 7 ? "/c/t/u" : "");
    }
}

/* A module's name that begins the path as a prefix, and one that is longer than a prefix may be. */
TEST_F(IdsAndPaths, PrefixesThatLookupsTake)
{
    const std::string longName(100, 'n');
    dir.Add("m", Container("c", Container("d", "")));
    for (const std::string &name : {std::string("q"), longName})
        dir.AddFile(
            name + ".yin",
            "<module name=\"" + name +
                "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" xmlns:q=\"urn:m\"><namespace uri=\"urn:" + name +
                "\"/><prefix value=\"own\"/><import module=\"m\"><prefix value=\"q\"/></import>"
                "<augment target-node=\"/q:c/q:d\">" +
                Container("e", "") + "</augment></module>");
    for (const std::string &name : {std::string("q"), longName}) {
        ASSERT_EQ(Load(name), 0u);
        const KorvTreeNode *e = NodeBelow(File(name)->astAugment[0].pstTargetTree, "c/d/e");
        ASSERT_NE(e, nullptr);
        EXPECT_EQ(LookUp(name, e), e) << PathOf(e, YANGLIB_PATH_PREFIXED);
        ASSERT_EQ(Unload(name), 0u);
    }
}

TEST_F(IdsAndPaths, ModulesAndTheirClasses)
{
    const auto twice = [](const std::string &target) {
        return "<augment target-node=\"" + target + "\">" + Container("of" + target.substr(3), ClassId("7")) +
               "</augment>";
    };
    const std::string revision = "<revision date=\"2026-02-03\"/>";
    dir.Add("m", revision +
                     Container("a", ClassId("1") + Container("same", ClassId("1")) + "<choice name=\"o\">" +
                                        Container("b", ClassId("2")) + "</choice>") +
                     Container("b", "") + Container("z", ClassId("3")));
    dir.Add("x", twice("/m:b") + twice("/m:a") + twice("/m:z") + Container("own", ClassId("1")), "m");
    ASSERT_EQ(Load("m", "some"), 0u);
    ASSERT_EQ(Load("x"), 0u);
    const std::vector<YANGLIB_MODULE_S> modules = Modules();
    ASSERT_EQ(modules.size(), 2u);
    EXPECT_STREQ(modules[0].pcModuleName, "m");
    EXPECT_STREQ(modules[0].pcRevision, "some");
    EXPECT_STREQ(modules[0].pcLoadedRevision, "2026-02-03");
    EXPECT_EQ(modules[0].uiClassNum, 3u);
    EXPECT_EQ(modules[1].pcRevision, nullptr);
    EXPECT_EQ(modules[1].pcLoadedRevision, nullptr);
    EXPECT_EQ(modules[1].uiClassNum, 4u) << "each once, though three target trees show it";
    EXPECT_EQ(modules[1].pstFile, File("x"));
    EXPECT_EQ(Texts(Find(1)), (std::vector<std::string>{"m 001 a", "m 001 same", "m 001 o", "m 001 b", "x 001 own",
                                                        "x 110 a", "x 110 same", "x 110 o", "x 110 b"}));
    EXPECT_EQ(Texts(Find(7)).size(), 9u);
}

TEST_F(IdsAndPaths, FollowWhatIsLoaded)
{
    dir.AddExamples();
    dir.Add("m", Container("c", ClassId("0x1001") + Leaf("l", "int8", Id("1"))));
    ExpectAllFound();
    for (const char *name : EXAMPLES) {
        ASSERT_EQ(Load(name), 0u);
        ExpectAllFound();
    }
    const uint64_t made = Services().allocations;
    ExpectAllFound();
    EXPECT_EQ(Services().allocations, made) << "the index is there";
    ASSERT_EQ(Unload(EXAMPLES[0]), 0u);
    ExpectAllFound();
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    ExpectAllFound();
    Faults().unloadResult = 1;
    EXPECT_EQ(Unload("m", "1"), 1u);
    Faults().unloadResult = 0;
    ExpectAllFound();
    ASSERT_EQ(Unload(EXAMPLES[1]), 0u) << "the first record of the registry";
    ExpectAllFound();
    EXPECT_EQ(TELMYANG_FreeYangtreeAllAugmentNodes(Local(), File("example-interface-shaping")), 0u);
    ExpectAllFound();
    KorvTreeNode *tree = File("m", "2")->pstOriginTree;
    File("m", "2")->pstOriginTree = nullptr;
    EXPECT_EQ(TELMYANG_FreeYangtreeAllNodes(Local(), tree), 0u);
    ExpectAllFound();

    /* A record that no load has registered: it may change at any time. */
    TELMYANG_YANG_FILE_INFO_S own = {};
    char name[] = "hand";
    KorvTreeNode node = {};
    node.pcModuleName = name;
    node.pcName = name;
    node.uiClassId = 0x1001;
    own.pcModuleName = name;
    own.pstOriginTree = &node;
    korv::LinkAtEnd(Local()->pstYangCtx, &own);
    ExpectAllFound();
    EXPECT_EQ(Find(0x1001).back().pstNode, &node);
    korv::Unlink(Local()->pstYangCtx, &own);
    ExpectAllFound();
}

/* The host's memory functions ask while trees come and go: what they find is there. */
TEST_F(IdsAndPaths, HoldWhileTreesGo)
{
    dir.AddExamples();
    for (const char *name : EXAMPLES)
        ASSERT_EQ(Load(name), 0u);
    bool asking = false;
    uint64_t found = 0;
    Services().watcher = [&] {
        if (std::exchange(asking, true))
            return;
        const auto read = [](const YANGLIB_PLACE_S *place, void *sum) {
            *static_cast<uint64_t *>(sum) += XUR_StrLen(place->pstNode->pcName);
            return 0u;
        };
        for (const uint32_t id : {0x1001u, 0x3001u})
            (void)YANGLIB_FindClass(Local(), id, read, &found);
        asking = false;
    };
    for (const char *name : EXAMPLES)
        EXPECT_EQ(YANGLIB_UnloadYangModule(Local(), name, nullptr), 0u);
    Services().watcher = nullptr;
    EXPECT_GT(found, 0u);
}

TEST_F(IdsAndPaths, NullAndZero)
{
    const auto place = [](const YANGLIB_PLACE_S *, void *) { return 5u; };
    const auto node = [](KorvTreeNode *, void *) { return 6u; };
    const auto leaf = [](KorvTreeLeaf *, void *) { return 7u; };
    const auto module = [](const YANGLIB_MODULE_S *, void *) { return 8u; };
    dir.Add("m", Container("c", ClassId("1") + Leaf("l", "int8", Id("1")) + Container("d", "")));
    ASSERT_EQ(Load("m"), 0u);
    TELMYANG_LOCAL_DATA_S without = {};
    KorvTreeNode *c = Node("m", "c");
    char text[4];
    YANGLIB_TEXT_S out = {text, sizeof(text), 0};
    YANGLIB_TEXT_S none = {nullptr, 1, 0};
    const std::pair<uint32_t, uint32_t> results[] = {
        {YANGLIB_FindClass(Local(), 1, place, nullptr), 5},
        {YANGLIB_FindClass(Local(), 0, place, nullptr), KORV_NOT_FOUND},
        {YANGLIB_FindClass(nullptr, 1, place, nullptr), KORV_INVALID},
        {YANGLIB_FindClass(&without, 1, place, nullptr), KORV_INVALID},
        {YANGLIB_FindClass(Local(), 1, nullptr, nullptr), KORV_INVALID},
        {YANGLIB_FindAttribute(Local(), 1, 1, nullptr, nullptr), KORV_OK},
        {YANGLIB_FindAttribute(Local(), 1, 0, nullptr, nullptr), KORV_NOT_FOUND},
        {YANGLIB_FindAttribute(&without, 1, 1, nullptr, nullptr), KORV_INVALID},
        {YANGLIB_ScanModules(Local(), module, nullptr), 8},
        {YANGLIB_ScanModules(&without, module, nullptr), KORV_INVALID},
        {YANGLIB_ScanTopNodes(File("m"), place, nullptr), 5},
        {YANGLIB_ScanTopNodes(nullptr, place, nullptr), KORV_INVALID},
        {YANGLIB_ScanNodes(c, node, nullptr), 6},
        {YANGLIB_ScanNodes(nullptr, node, nullptr), KORV_INVALID},
        {YANGLIB_ScanLeaves(c, YANGLIB_LEAVES_DIRECT, leaf, nullptr), 7},
        {YANGLIB_ScanLeaves(c, YANGLIB_LEAVES_CASES, leaf, nullptr), 0},
        {YANGLIB_ScanLeaves(c, YANGLIB_LEAVES_DIRECT, nullptr, nullptr), KORV_INVALID},
        {YANGLIB_GetNodePath(Local(), c, 2, &out), KORV_INVALID},
        {YANGLIB_GetNodePath(Local(), c, YANGLIB_PATH_NAMES, &none), KORV_INVALID},
        {YANGLIB_GetNodePath(Local(), nullptr, YANGLIB_PATH_NAMES, &out), KORV_INVALID},
        {YANGLIB_GetLeafPath(Local(), c, nullptr, YANGLIB_PATH_NAMES, &out), KORV_INVALID},
    };
    for (size_t i = 0; i < std::size(results); ++i)
        EXPECT_EQ(results[i].first, results[i].second) << "row " << i;
}

} // namespace
} // namespace test
