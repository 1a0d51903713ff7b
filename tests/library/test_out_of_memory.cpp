/* Every allocation of every operation fails once: that one alone, and that one with all that follow. Each time the
 * operation fails cleanly, with messages that out_of_memory_messages.txt lists, and the same call succeeds right
 * afterwards. UPDATE_MESSAGES=1 in the environment appends what an operation says to that file. */
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <ostream>

#include "support/host.h"
#include "telem_yang/telem_yang.h"

namespace test {
namespace {

const char *const BASES[] = {"example-interfaces", "example-qos"};
const char MODULE[] = "example-interface-qos";
const char MESSAGES[] = KORV_SOURCE_DIR "/tests/library/out_of_memory_messages.txt";

uint32_t CountPrivate(QY_NODE *node, uint32_t, void *cookie)
{
    *static_cast<uint32_t *>(cookie) += QY_NODE_GetPrivate(node) != nullptr ? 1 : 0;
    return 0;
}

uint32_t CountPrivateBelow(QY_NODE *node, void *, void *cookie)
{
    return QY_NODE_TreeScanAllNode(node, CountPrivate, cookie);
}

struct Mode {
    const char *name;
    bool forGood;
    bool silent; /* with every level closed */
};

std::ostream &operator<<(std::ostream &out, const Mode &mode)
{
    return out << mode.name;
}

class OutOfMemory : public HostTest, public ::testing::WithParamInterface<Mode> {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.AddExamples();
        log.open = {!GetParam().silent, false, false, false};
    }

    void LoadBases()
    {
        for (const char *name : BASES)
            ASSERT_EQ(Load(name), 0u);
    }

    uint32_t PrivateData()
    {
        uint32_t count = 0;
        for (const char *name : BASES)
            QY_MOD_IterScanTopmostNode(SchemaModule(name), CountPrivateBelow, &count);
        return count;
    }

    /* Lets each allocation of the operation fail, until it gets through without meeting the failing one. afterFailure looks
     * at what a failed run left, afterSuccess undoes one that got through. */
    void Sweep(const std::function<bool()> &run, const std::function<void()> &afterFailure,
               const std::function<void()> &afterSuccess)
    {
        for (uint64_t n = 0;; ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            log.Clear();
            const std::set<void *> before = Services().LiveAddresses();
            Services().FailAllocation(n, GetParam().forGood);
            const bool done = run();
            const bool met = Services().allocations > n;
            Services().FailAllocation(NEVER, false);
            if (!done) {
                EXPECT_NE(log.Errors().empty(), log.open[0] && !saysNothing);
                chains.insert(Chain());
                /* Without any memory a tree cannot be queued for its release, and is given up. */
                if (GetParam().forGood && TreeFailed())
                    ExpectTreesOnly(Services().ReleaseAllBut(before));
                EXPECT_EQ(Services().LiveAddresses(), before) << Services().Leaks();
                afterFailure();
                ASSERT_TRUE(run()) << "the same call again";
            }
            afterSuccess();
            if (HasFailure() || !met)
                return;
        }
    }

    /* The error lines of one failure, the last one first, with "*" for what names a node or a module. */
    std::vector<std::string> Chain() const
    {
        std::vector<std::string> chain;
        for (std::string text : log.Errors()) {
            for (size_t at = text.find('('); at != std::string::npos; at = text.find('(', at + 3))
                text.replace(at, text.find(')', at) - at + 1, "(*)");
            for (const char *before : {"odule ", "ode "}) {
                const size_t name = text.find(before) + std::string(before).size();
                const size_t end = text.find(' ', name);
                if (text.find(before) != std::string::npos && end != std::string::npos && std::islower(text[name]) != 0)
                    text.replace(name, end - name, "*");
            }
            text.resize(text.find_last_not_of('\n') + 1);
            chain.insert(chain.begin(), text);
        }
        return chain;
    }

    /* Every way in which the operation failed is listed under its name, and nothing else is: what is said last stands
     * first, what was said before it below, and what was said first has a star. */
    void ExpectMessages(const std::string &operation)
    {
        if (GetParam().silent || GetParam().forGood)
            return; /* nothing, or the same, with lines between about trees that cannot be queued for their release */
        std::string said = operation + "\n";
        std::vector<std::string> before;
        for (const std::vector<std::string> &chain : chains) {
            const auto fork = std::mismatch(chain.begin(), chain.end(), before.begin(), before.end()).first;
            for (auto line = fork; line != chain.end(); ++line)
                said += std::string(static_cast<size_t>(line - chain.begin()) + 1, ' ') +
                        (line + 1 == chain.end() ? "* " : "") + *line + "\n";
            before = chain;
        }
        if (std::getenv("UPDATE_MESSAGES") != nullptr)
            std::ofstream(MESSAGES, std::ios::app) << said;
        std::ifstream file(MESSAGES);
        const std::string listed(std::istreambuf_iterator<char>(file), {});
        const size_t start = listed.find(operation + "\n");
        ASSERT_NE(start, std::string::npos);
        EXPECT_EQ(listed.substr(start, said.size()), said);
        EXPECT_NE(listed[start + said.size()], ' ') << "listed, but not said";
    }

    std::set<std::vector<std::string>> chains;
    bool saysNothing = false; /* the operation's result is all that it answers */

    bool TreeFailed() const
    {
        const std::vector<std::string> errors = log.Errors();
        return std::any_of(errors.begin(), errors.end(),
                           [](const std::string &text) { return text.rfind("-5. Generate Module (", 0) == 0; });
    }

    /* What is left belongs to trees, and not to the queue of their release. */
    static void ExpectTreesOnly(const std::vector<Block> &blocks)
    {
        for (const Block &block : blocks)
            EXPECT_TRUE(block.place.starts_with("telem_yang") && block.size != sizeof(DumpQueueEntry))
                << block.size << " bytes from " << block.place;
    }
};

TEST_P(OutOfMemory, Start)
{
    const auto start = [&] { return Local() != nullptr; };
    for (uint64_t n = 0; n < 2; ++n) {
        Services().FailAllocation(n, GetParam().forGood);
        EXPECT_FALSE(start());
        EXPECT_EQ(Services().Leaks(), "");
        Services().FailAllocation(NEVER, false);
        EXPECT_TRUE(start());
        Stop();
    }
}

TEST_P(OutOfMemory, Load)
{
    LoadBases();
    Sweep([&] { return Load(MODULE) == 0; },
          [&] {
              EXPECT_EQ(PrivateData(), 0u);
              EXPECT_EQ(Local()->uiModuleNum, 2u);
              EXPECT_EQ(File(MODULE), nullptr);
          },
          [&] { ASSERT_EQ(Unload(MODULE), 0u); });
    ExpectMessages("load of augments");
}

TEST_P(OutOfMemory, LoadOfEveryKindOfClass)
{
    ASSERT_NE(Local(), nullptr);
    const std::string leaf = Leaf("k", "int8", Ext("field-id", "1"));
    dir.Add("same-class", Container("c", List("l", "k",
                                              Ext("class-id", "1") + leaf +
                                                  List("m", "k",
                                                       Ext("class-id", "2") + Ext("ancestor-key-fid", "2") + leaf +
                                                           Container("same", Ext("class-id", "2") + leaf)))));
    for (const char *name : {BASES[0], BASES[1], "same-class"}) {
        Sweep([&] { return Load(name) == 0; }, [&] { EXPECT_EQ(Local()->uiModuleNum, 0u); },
              [&] { ASSERT_EQ(Unload(name), 0u); });
    }
    ExpectMessages("load of classes");
}

TEST_P(OutOfMemory, Lookup)
{
    LoadBases();
    ASSERT_EQ(Load(MODULE), 0u);
    const YangXpathLookup lookup = {
        Local(), MODULE, nullptr, "/interfaces/interface/traffic", "if:interfaces/if:interface/ifq:traffic", 0, 0};
    Sweep([&] { return TELMYANG_KorvFindTreeNodeByXpath(&lookup) != nullptr; }, [] {}, [] {});
    ExpectMessages("lookup");
}

TEST_P(OutOfMemory, Dump)
{
    ASSERT_EQ(Load("example-interfaces"), 0u);
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    const YangDumpRequest request = {Local(), "example-interfaces", nullptr, nullptr, 0};
    Sweep(
        [&] {
            EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&request, &records, &count), 0u);
            return count != 0;
        },
        [&] { EXPECT_EQ(records, nullptr); },
        [&] {
            YANGLIB_FreeDumpDataEx(records, count);
            ZOR_Free_F(records, __FILE__, __LINE__);
            records = nullptr;
        });
    ExpectMessages("dump");
}

/* The index of ids is given back before each question, by a load or an unload. */
TEST_P(OutOfMemory, Ids)
{
    LoadBases();
    saysNothing = true;
    uint32_t places = 0;
    const auto count = [](const YANGLIB_PLACE_S *, void *number) {
        ++*static_cast<uint32_t *>(number);
        return 0u;
    };
    bool loaded = false;
    const auto change = [&] { ASSERT_EQ((loaded = !loaded) ? Load(MODULE) : Unload(MODULE), 0u); };
    Sweep([&] { return YANGLIB_FindClass(Local(), 0x1001, count, &places) == KORV_OK; }, [&] { EXPECT_EQ(places, 0u); },
          change);
    EXPECT_GT(places, 0u);
    KorvTreeLeaf *leaf = nullptr;
    Sweep([&] { return YANGLIB_FindAttribute(Local(), 0x1001, 1, nullptr, &leaf) == KORV_OK; },
          [&] { EXPECT_EQ(leaf, nullptr); }, change);
    EXPECT_NE(leaf, nullptr);
}

TEST_P(OutOfMemory, LoadFailures)
{
    LoadBases();
    dir.Add("refused",
            "<augment target-node=\"/example-interfaces:interfaces/example-interfaces:interface\">" +
                Container("c", Ext("class-id", "1") + Leaf("l", "int8", Ext("field-id", "-1"))) + "</augment>",
            "example-interfaces");
    dir.Add("too-many", Container("c", List("l", "k",
                                            Ext("class-id", "1") + Leaf("k", "int8", Ext("field-id", "1")) +
                                                Container("d", Ext("class-id", "2") +
                                                                   Ext("ancestor-key-fid",
                                                                       "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17")))));
    saysNothing = true;
    std::string sentence;
    const auto keep = [](const YANGLIB_LOAD_FAILURE_S *failure, void *text) {
        *static_cast<std::string *>(text) = failure->pcSentence;
        return 0u;
    };
    for (const char *name : {"refused", "too-many"}) {
        ASSERT_EQ(Load(name), 1u);
        Sweep(
            [&] {
                sentence.clear();
                const std::set<void *> before = Services().LiveAddresses();
                const uint32_t result = YANGLIB_ScanLoadFailures(Local(), name, nullptr, keep, &sentence);
                ExpectTreesOnly(Services().ReleaseAllBut(before));
                EXPECT_TRUE(result == KORV_OK || result == KORV_NO_MEMORY) << result;
                return result == KORV_OK;
            },
            [&] {
                EXPECT_EQ(sentence, "");
                EXPECT_EQ(PrivateData(), 0u);
            },
            [&] { EXPECT_EQ(sentence.rfind("nothing is wrong", 0), std::string::npos) << sentence; });
    }
}

TEST_P(OutOfMemory, Print)
{
    LoadBases();
    ASSERT_EQ(Load(MODULE), 0u);
    const auto print = [&] {
        log.Clear();
        YANGLIB_PrintYangModuleData(Local(), MODULE, nullptr);
        return log.Errors();
    };
    const std::vector<std::string> expected = print();
    if (GetParam().silent)
        return; /* allocates nothing */
    Sweep([&] { return print() == expected; }, [] {}, [] {});
}

TEST_P(OutOfMemory, UnloadAndShutdownGiveTreesUpButNothingElse)
{
    for (uint64_t n = 0; n < 40; ++n) {
        LoadBases();
        ASSERT_EQ(Load(MODULE), 0u);
        Services().FailAllocation(n, GetParam().forGood);
        EXPECT_EQ(Unload("example-qos"), 0u);
        EXPECT_EQ(File("example-qos"), nullptr);
        EXPECT_EQ(Local()->uiModuleNum, 2u);
        Stop();
        Services().FailAllocation(NEVER, false);
        ExpectTreesOnly(Services().ReleaseAllBut({}));
    }
}

INSTANTIATE_TEST_SUITE_P(Sweep, OutOfMemory,
                         ::testing::Values(Mode{"OneAlone", false, false}, Mode{"AllThatFollow", true, false},
                                           Mode{"Unheard", false, true}),
                         [](const auto &mode) { return mode.param.name; });

} // namespace
} // namespace test
