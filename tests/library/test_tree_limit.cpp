/* The limit of the records that the trees of one load may have. */
#include "support/host.h"
#include "telem_yang/tree_budget.h"

namespace test {
namespace {

/* Names that count as 16 records, so that the limit is reached with few. */
std::string LongName(char letter)
{
    return std::string(15 * korv::NAME_OF_A_RECORD, letter);
}

constexpr uint32_t AUGMENTS = 16;

class TreeLimit : public HostTest {
  protected:
    /* Module b has one tree of 2^18 - 1 records: 2^14 - 1 nodes with long names, most of them in groupings that double, and
     * 15 records with short ones, among them each kind. */
    void SetUp() override
    {
        HostTest::SetUp();
        const std::string pair[] = {LongName('a'), LongName('b')};
        std::string body = "<grouping name=\"g0\"/>";
        for (int level = 1; level <= 13; ++level) {
            const std::string uses = "<uses name=\"g" + std::to_string(level - 1) + "\"/>";
            body += "<grouping name=\"g" + std::to_string(level) + "\">" + Container(pair[0], uses) +
                    Container(pair[1], uses) + "</grouping>";
        }
        std::string top = "<uses name=\"g13\"/>" + Container(LongName('c'), "") + Leaf("l", "int8") +
                          "<choice name=\"ch\"><case name=\"ca\">" + Leaf("cl", "int8") + "</case></choice>";
        for (int i = 0; i < 6; ++i)
            top += Container("c" + std::to_string(i), "");
        dir.Add("b", body + Container("t", top));
    }

    /* Loads a module with 16 augments of b's tree. All but the first add a node that stands in no tree. */
    uint32_t LoadAugments(const std::string &name, const std::string &first, const std::string &own)
    {
        std::string body = own;
        for (uint32_t i = 0; i < AUGMENTS; ++i)
            body += "<augment target-node=\"/b:t\">" +
                    (i == 0 ? first : "<anydata name=\"a" + std::to_string(i) + "\"/>") + "</augment>";
        dir.Add(name, body, "b");
        log.Clear();
        return YANGLIB_LoadYangModule(Local(), name.c_str(), nullptr);
    }

    /* What a load says that meets the limit at this node. */
    std::vector<std::string> Refusal(const std::string &module, const std::string &node,
                                     const std::vector<std::string> &between)
    {
        std::vector<std::string> lines = {
            "the trees of one load have more than 4194304 nodes, leaf lists and leaves, node(" + node + ")!"};
        lines.insert(lines.end(), between.begin(), between.end());
        lines.insert(lines.end(),
                     {"GenerateAugmentTree failed,pcModuleName(" + module + ")!",
                      "-5. Generate Module (" + module + ") tree return 0x1", "Load Module (" + module + ") fail!"});
        return lines;
    }
};

/* Records of every kind and trees of every kind count, and one record too many fails the load, wherever it is met. */
TEST_F(TreeLimit, IsMetToTheRecord)
{
    const std::string nothing = "<anydata name=\"a0\"/>";
    const std::string own = Container(LongName('o'), "");
    ASSERT_NE(Local(), nullptr);
    log.open = {false, false, false, false};
    ASSERT_EQ(LoadAugments("full", nothing, own), 0u);
    EXPECT_NE(File("full")->astAugment[AUGMENTS - 1].pstTargetTree, nullptr);
    ASSERT_EQ(Unload("full"), 0u);

    log.open[0] = true;
    EXPECT_EQ(LoadAugments("target", nothing, own + Container("one", "")), 1u);
    EXPECT_EQ(log.Errors(), Refusal("target", "c5",
                                    {"Fill Data From Yang Node(t) return 0x1!", "DupYangtree child failed, node(t)!",
                                     "DupYangtree target failed,uiLoop(15) node(t)!", "DupYangtree target failed!"}));
    EXPECT_EQ(File("target"), nullptr);

    EXPECT_EQ(LoadAugments("self", Container("one", ""), ""), 1u);
    EXPECT_EQ(
        log.Errors(),
        Refusal("self", "one", {"Fill Data From Yang Node(one) return 0x1!", "DupYangtree child failed, node(one)!"}));
    EXPECT_EQ(File("self"), nullptr);
}

} // namespace
} // namespace test
