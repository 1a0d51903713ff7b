/* Each count that the library keeps in few bits, or in an array of fixed length: at its limit, one beyond, ten times. */
#include <functional>

#include "support/host.h"

using namespace test;

namespace {

struct Limit {
    const char *what;
    int most;
    std::string (*body)(int count);
    const char *text; /* logged beyond the limit */
    bool loads;       /* beyond the limit, too */
};

std::string Repeat(int count, const std::function<std::string(int)> &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text(i);
    return all;
}

std::string Name(const char *prefix, int i)
{
    return prefix + std::to_string(i);
}

std::string Numbers(int count)
{
    return Repeat(count, [](int i) { return (i == 0 ? "" : " ") + std::to_string(i % 250 + 1); });
}

const Limit LIMITS[] = {
    {"attribute leaves of a class", 255,
     [](int count) {
         return Container("c", Ext("class-id", "1") + Repeat(count, [](int i) {
                                   return Leaf(Name("l", i), "uint8", Ext("field-id", std::to_string(i % 250 + 1)));
                               }));
     },
     "attribute leaves, more than 255!", false},
    {"leaf-list children of a class", 255,
     [](int count) {
         return Container("c",
                          Ext("class-id", "1") + Leaf("x", "uint8", Ext("field-id", "1")) + Repeat(count, [](int i) {
                              return "<leaf-list name=\"" + Name("l", i) + "\"><type name=\"int8\"/></leaf-list>";
                          }));
     },
     "", true},
    {"own keys of a class", 16,
     [](int count) {
         const std::string leaves = Repeat(
             count, [](int i) { return Leaf(Name("k", i), "uint8", Ext("field-id", std::to_string(i % 250 + 1))); });
         const std::string keys = Repeat(count, [](int i) { return Name(" k", i); });
         return Container("c", List("l", keys.substr(1), Ext("class-id", "1") + leaves));
     },
     "NODE_KEY_LIST_NUM error!", false},
    {"ancestor keys of a node", 16,
     [](int count) {
         return Container("c", Container("d", Ext("class-id", "1") + Ext("ancestor-key-fid", Numbers(count))));
     },
     "NODE_KEY_LIST_NUM error!", false},
    {"leaves in the choices of a node", 255,
     [](int count) {
         return Container("c", "<choice name=\"h\">" +
                                   Repeat(count, [](int i) { return Leaf(Name("l", i), "uint8"); }) + "</choice>");
     },
     "node(c) has more than 255 case leaves, the others are left out!", true},
    {"augments of a module", 20,
     [](int count) {
         return Container("c", Container("d", "")) + Repeat(count, [](int i) {
                    return "<augment target-node=\"/p:c/p:d\">" + Container(Name("a", i), "") + "</augment>";
                });
     },
     "augment cnt over max, ModName(m)", false},
};

class Limits : public HostTest {};

TEST_F(Limits, HoldOneBeyondAndTenTimesAsWell)
{
    for (const Limit &limit : LIMITS) {
        for (const int count : {limit.most, limit.most + 1, limit.most * 10}) {
            SCOPED_TRACE(std::string(limit.what) + ": " + std::to_string(count));
            dir.Add("m", limit.body(count));
            log.Clear();
            const bool isBeyond = count > limit.most;
            EXPECT_EQ(Load("m") == 0, !isBeyond || limit.loads);
            bool isTold = false;
            for (const std::string &text : log.Errors())
                isTold = isTold || (*limit.text != '\0' && text.find(limit.text) != std::string::npos);
            EXPECT_EQ(isTold, isBeyond && *limit.text != '\0');
            Stop();
        }
    }
}

/* 64 leafrefs lead to a type, and none beyond: a leaf has none then. */
TEST_F(Limits, OfLeafrefsToATarget)
{
    for (const int count : {64, 65, 640}) {
        dir.Add("m", Container("c", Repeat(count + 1, [count](int i) {
                                   const std::string path = "<path value=\"../" + Name("l", i + 1) + "\"/>";
                                   return Leaf(Name("l", i),
                                               i == count ? "uint8" : "<type name=\"leafref\">" + path + "</type>");
                               })));
        ASSERT_EQ(Load("m"), 0u);
        EXPECT_EQ(LeafOf(Node("m", "c"), "l0")->ucBaseType, count == 64 ? QY_TYPE_UINT8 : 0) << count;
        Stop();
    }
}

} // namespace
