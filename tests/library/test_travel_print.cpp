/* Walking a tree with callbacks, printing it, and the small questions. */
#include "support/host.h"

namespace test {
namespace {

struct Walk {
    std::vector<std::string> calls; /* "^name" for an ancestor */
    size_t stopAt = 0;              /* number of the call that ends the walk, from 1 */
    uint32_t result = 5;
};

uint32_t Parent(void *user, KorvTreeNode *node)
{
    auto *walk = static_cast<Walk *>(user);
    walk->calls.push_back(std::string("^") + node->pcName);
    return walk->calls.size() == walk->stopAt ? walk->result : 0;
}

uint32_t Visit(void *user, KorvTreeNode *node)
{
    auto *walk = static_cast<Walk *>(user);
    walk->calls.emplace_back(node->pcName);
    return walk->calls.size() == walk->stopAt ? walk->result : 0;
}

class Queries : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", "<revision date=\"2026-02-01\"/><revision date=\"2026-09-01\"/>" +
                         Container("sys", Ext("class-id", "0x1a2") + Leaf("hostname", "string", Ext("field-id", "1")) +
                                              Container("ports", Container("port", "")) +
                                              "<choice name=\"mode\"><case name=\"auto\">" + Container("timer", "") +
                                              "</case></choice>") +
                         Container("behind", ""));
        dir.Add("x",
                "<augment target-node=\"/m:sys\">" + Container("a", "") +
                    "</augment><augment target-node=\"/m:behind\">" + Leaf("b", "int8") + "</augment>",
                "m");
    }

    uint32_t Travel(const char *path, const char *main, Walk *walk, bool parents = true)
    {
        const YangPathRequest request = {"m", nullptr, path, main};
        log.Clear();
        return YANGLIB_TravelYangModule(Local(), &request, walk, parents ? Parent : nullptr, Visit);
    }
};

TEST_F(Queries, TravelOrder)
{
    ASSERT_EQ(Load("m"), 0u);
    const struct {
        const char *path;
        const char *main;
        std::vector<std::string> calls;
    } cases[] = {
        {"/sys/ports", "m:sys/m:ports", {"^sys", "ports", "port"}},
        {"/sys", "m:sys", {"sys", "ports", "port", "mode", "auto", "timer"}},
        {"/sys/timer", "m:sys/m:timer", {"^auto", "^mode", "^sys", "timer"}},
        {"/sys/hostname", "m:sys/m:hostname", {"sys", "ports", "port", "mode", "auto", "timer"}},
        {"/behind", "m:behind", {"behind"}},
    };
    for (const auto &c : cases) {
        Walk walk;
        EXPECT_EQ(Travel(c.path, c.main, &walk), 0u);
        EXPECT_EQ(walk.calls, c.calls) << c.path;
    }
    Walk walk;
    EXPECT_EQ(Travel("/sys/ports/port", "m:sys/m:ports/m:port", &walk, false), 0u);
    EXPECT_EQ(walk.calls, std::vector<std::string>{"port"});
    Services().FailAllocation(0, true);
    EXPECT_EQ(YANGLIB_TravelYangModuleSubTree(Local(), Node("m", "sys"), &walk, Parent, Visit), 0u)
        << "the walk itself needs no memory";
    Services().FailAllocation(NEVER, false);
}

TEST_F(Queries, TravelStopsWithTheCallbacksResult)
{
    ASSERT_EQ(Load("m"), 0u);
    const struct {
        size_t stopAt;
        const char *error;
    } cases[] = {
        {1, "Parent node error, return(5) name(ports)!"},
        {3, "Self node error, return(5) name(port)!"},
    };
    for (const auto &c : cases) {
        Walk walk;
        walk.stopAt = c.stopAt;
        EXPECT_EQ(Travel("/sys/ports/port", "m:sys/m:ports/m:port", &walk), 5u);
        EXPECT_EQ(walk.calls.size(), c.stopAt);
        EXPECT_EQ(log.Errors(), std::vector<std::string>{c.error});
    }
    Walk walk;
    walk.stopAt = 3;
    EXPECT_EQ(Travel("/sys", "m:sys", &walk), 5u);
    EXPECT_EQ(walk.calls.size(), 3u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"Son node error, return(5) name(port)!"});
}

TEST_F(Queries, TravelWithoutStartNode)
{
    ASSERT_EQ(Load("m"), 0u);
    Walk walk;
    EXPECT_EQ(Travel("/nosuch", "m:nosuch", &walk), 3u);
    EXPECT_TRUE(log.Has("Find Tree Node By Xpath failed, name(m) pcPath(/nosuch)pcXpathMain(m:nosuch)!"));
    log.Clear();
    EXPECT_EQ(Travel(nullptr, "m:sys", &walk), 3u);
    EXPECT_EQ(Travel("/sys", nullptr, &walk), 3u);
    const YangPathRequest request = {"m", nullptr, "/sys", "m:sys"};
    EXPECT_EQ(YANGLIB_TravelYangModule(Local(), &request, &walk, Parent, nullptr), 3u);
    EXPECT_EQ(YANGLIB_TravelYangModule(Local(), nullptr, &walk, Parent, Visit), 3u);
    EXPECT_EQ(YANGLIB_TravelYangModuleSubTree(Local(), nullptr, &walk, Parent, Visit), 1u);
    EXPECT_EQ(YANGLIB_TravelYangModuleSubTree(Local(), Node("m", "sys"), &walk, Parent, nullptr), 1u);
    EXPECT_TRUE(walk.calls.empty());
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(Queries, PrintWithTwoAugments)
{
    ASSERT_EQ(Load("x"), 0u);
    const std::string keys = " SelfNodeKey(0 0 0 0 0 0 0 0)AncestorKey(0 0 0 0 0 0 0 0)";
    log.Clear();
    YANGLIB_PrintYangModuleData(Local(), "x", "");
    const auto node = [&](const std::string &name, const std::string &path, const std::string &classId = "0x0") {
        return LogLine{2, "Name:" + name + ", xpath:" + path + ", Class:" + classId + keys};
    };
    const LogLine hostname = {
        2, " Leaf:hostname, mask:0x2, Field:1, DataType:0, indexmap:0, range(0, 0), path:/sys/hostname"};
    const LogLine b = {2, " Leaf:b, mask:0x0, Field:0, DataType:0, indexmap:0, range(0, 0), path:/behind/b"};
    const std::vector<LogLine> below = {node("ports", "/sys/ports"),
                                        node("mode", "/sys/mode", "0x1a2"),
                                        node("a", "/sys/a"),
                                        node("port", "/sys/ports/port"),
                                        node("auto", "/sys/mode/auto", "0x1a2"),
                                        node("timer", "/sys/mode/auto/timer")};
    std::vector<LogLine> expected = {{2, "PrintYangModuleOriginData:"},
                                     {0, "can not findYangModuleTree(x)!"},
                                     {0, "Dump yang model data return 0x1!"},
                                     {2, "PrintYangModuleAugmentData:"},
                                     {2, "Augment dump self Data:i=0"},
                                     node("a", "/a"),
                                     {2, "Augment dump self Data:i=1"},
                                     {0, "ret err orTree node zero!"},
                                     {2, "Augment dump target Data:i=0"},
                                     node("sys", "/sys", "0x1a2"),
                                     hostname,
                                     node("behind", "/behind"),
                                     b};
    expected.insert(expected.end(), below.begin(), below.end());
    expected.push_back({2, "Augment dump target Data:i=1"});
    expected.push_back(node("behind", "/behind"));
    expected.push_back(b);
    EXPECT_EQ(log.lines, expected);
}

TEST_F(Queries, PrintOfKeysAndRangesAfterALoadWithARevision)
{
    std::string names;
    std::string leaves;
    for (const char *number : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        names += std::string(names.empty() ? "k" : " k") + number;
        leaves += Leaf(std::string("k") + number,
                       "<type name=\"uint16\"><range value=\"5..2" + std::string(number) + "\"/></type>",
                       Ext("field-id", number) + Ext("datatype-id", "4" + std::string(number)) +
                           Ext("name2id-key-fid", "3" + std::string(number)));
    }
    dir.Add("k", Container(
                     "c", List("l", names,
                               Ext("class-id", "2") + Ext("ancestor-key-fid", "11 12 13 14 15 16 17 18 19") + leaves)));
    ASSERT_EQ(Load("k", "2026-01-01"), 0u);
    EXPECT_TRUE(
        log.Has("Name:l, xpath:/c/l, Class:0x2 SelfNodeKey(1 2 3 4 5 6 7 8)AncestorKey(11 12 13 14 15 16 17 18)"));
    EXPECT_TRUE(log.Has(" Leaf:k9, mask:0x2a, Field:9, DataType:49, indexmap:39, range(5, 29), path:/c/l/k9"));
}

TEST_F(Queries, PrintAsksTheLevelsAndCostsNothingWhenAllAreClosed)
{
    ASSERT_EQ(Load("m"), 0u);
    log.open = {false, false, false, false};
    log.Clear();
    const uint64_t before = Services().allocations;
    YANGLIB_PrintYangModuleData(Local(), "m", nullptr);
    EXPECT_EQ(log.asked, (std::array<uint64_t, 4>{1, 1, 1, 1}));
    EXPECT_EQ(Services().allocations, before);
    log.open = {false, true, false, true};
    log.Clear();
    YANGLIB_PrintYangModuleData(Local(), "m", nullptr);
    EXPECT_EQ(log.asked[3], 0u) << "the first open level decides";
    EXPECT_GT(Services().allocations, before) << "dumped, though no level takes the lines";
    EXPECT_TRUE(log.lines.empty());
    log.open = {false, false, true, false};
    log.Clear();
    YANGLIB_PrintYangModuleData(Local(), "nowhere", nullptr);
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{2, "PrintYangModuleOriginData:"}, {2, "PrintYangModuleAugmentData:"}}));
}

TEST_F(Queries, PrintOfLongLines)
{
    const std::string name(64, 'n');
    std::string body;
    for (int i = 0; i < 5; ++i)
        body = Container(name, body);
    dir.Add("n", Container(std::string(300, 'l'), Leaf(std::string(300, 'k'), "int8")) + body);
    assertionsExpected = true;
    ASSERT_EQ(Load("n"), 0u);
    EXPECT_TRUE(log.Has("")) << "a node line of more than 511 characters";
    EXPECT_FALSE(Services().assertions.empty());
    for (const std::string &text : log.Texts(2)) {
        if (text.rfind(" Leaf:", 0) == 0) {
            EXPECT_EQ(text.size(), 511u);
        }
    }
}

uint32_t Remember(const char *name, int32_t value, void *cookie)
{
    static_cast<std::vector<std::string> *>(cookie)->push_back(name + std::string("=") + std::to_string(value));
    return 7;
}

TEST_F(Queries, SmallQuestions)
{
    dir.Add("e",
            "<typedef name=\"s\"><type name=\"enumeration\"><enum name=\"down\"/><enum name=\"up\"><value value=\"5\"/>"
            "</enum><enum name=\"off\"/></type></typedef>" +
                Container("c", Leaf("s", "<type name=\"s\"/>") + Leaf("i", "int8") +
                                   Leaf("r", "<type name=\"leafref\"><path value=\"../s\"/></type>")));
    EXPECT_EQ(YANGLIB_GetYangRevision(Local(), "m"), nullptr);
    ASSERT_EQ(Load("m", "as-the-host-says"), 0u);
    EXPECT_STREQ(YANGLIB_GetYangRevision(Local(), "m"), "2026-09-01");
    ASSERT_EQ(Load("e"), 0u);
    EXPECT_EQ(YANGLIB_GetYangRevision(Local(), "e"), nullptr);
    const KorvTreeNode *c = Node("e", "c");
    EXPECT_EQ(YANGLIB_IsEnumLeaf(LeafOf(c, "s")), 1u);
    EXPECT_EQ(YANGLIB_IsEnumLeaf(LeafOf(c, "r")), 1u);
    EXPECT_EQ(YANGLIB_IsEnumLeaf(LeafOf(c, "i")), 0u);
    EXPECT_EQ(YANGLIB_IsEnumLeaf(nullptr), 0u);
    for (const char *name : {"s", "r"}) {
        std::vector<std::string> pairs;
        EXPECT_EQ(YANGLIB_ScanNameValuePair(LeafOf(c, name), Remember, &pairs), 0u);
        EXPECT_EQ(pairs, (std::vector<std::string>{"down=0", "up=5", "off=6"}));
    }
}

} // namespace
} // namespace test
