/* The reasons of a failed load as records. */
#include <sstream>

#include "support/host.h"

namespace test {
namespace {

std::string Shown(const char *text)
{
    return text != nullptr ? text : "-";
}

class LoadFailures : public HostTest {
  protected:
    /* A line a failure: its place, its parts and its sentence. */
    std::string Failures(const std::string &module, const char *revision = nullptr)
    {
        std::string all;
        log.Clear();
        const std::set<void *> before = Services().LiveAddresses();
        EXPECT_EQ(YANGLIB_ScanLoadFailures(
                      Local(), module.c_str(), revision,
                      [](const YANGLIB_LOAD_FAILURE_S *failure, void *text) {
                          *static_cast<std::string *>(text) += Line(*failure);
                          return 0u;
                      },
                      &all),
                  0u);
        EXPECT_EQ(Services().LiveAddresses(), before);
        EXPECT_TRUE(log.lines.empty());
        EXPECT_EQ(log.asked, decltype(log.asked)());
        return all;
    }

    static std::string Line(const YANGLIB_LOAD_FAILURE_S &failure)
    {
        const std::string text = failure.pcText;
        EXPECT_EQ(failure.uiSize, sizeof(failure));
        EXPECT_TRUE(text.ends_with(failure.pcSentence));
        std::ostringstream line;
        if (failure.uiRefusedBy == YANGLIB_REFUSED_BY_SCHEMA) {
            EXPECT_EQ(failure.pcClassPath, nullptr);
            if (failure.pcFile != nullptr) {
                line << failure.pcFile << ":" << failure.uiLine << ":" << failure.uiColumn << ": ";
                EXPECT_EQ(text, line.str() + failure.pcSentence);
            }
            line << failure.pcModule << " ";
        } else {
            EXPECT_TRUE(failure.pcFile == nullptr && failure.uiLine == 0 && text == failure.pcSentence);
            if (failure.pcClassPath != nullptr) {
                EXPECT_TRUE(std::string(failure.pcClassPath).ends_with(std::string("/") + failure.pcClass));
            }
            line << failure.pcModule << " " << Shown(failure.pcClassPath) << " " << Shown(failure.pcLeaf) << " "
                 << Shown(failure.pcStatement) << " " << Shown(failure.pcArgument) << " ";
        }
        line << failure.pcSentence << "\n";
        return line.str();
    }
};

std::string Numbers(int count, const char *prefix)
{
    std::string all;
    for (int i = 1; i <= count; ++i)
        all += (i == 1 ? "" : " ") + (prefix + std::to_string(i));
    return all;
}

std::string Leaves(int count)
{
    std::string all;
    for (int i = 1; i <= count; ++i)
        all += Leaf("k" + std::to_string(i), "int8", Id(std::to_string(i % 250 + 1)));
    return all;
}

const std::string MAPPED = Ext("ancestor-key-fid", "1", Id("9"));
const std::string KEY = Leaf("k", "int8", Id("1"));

/* A class below a list with one key. */
std::string Below(const std::string &body)
{
    return Container("c", List("l", "k", ClassId("1") + KEY + Container("d", ClassId("2") + body)));
}

TEST_F(LoadFailures, OfTheLibraryNameClassLeafAndStatement)
{
    const std::string leafref = Ext("class-type", "leafref");
    const struct {
        const char *module;
        std::string body;
        std::string expected;
    } cases[] = {
        {"task", Ext("aaa-task-id", "-1"), "task - - aaa-task-id -1 '-1' is no number that aaa-task-id can have"},
        {"number", Container("c", ClassId("1") + Leaf("l", "int8", Id("-1"))),
         "number /c l field-id -1 leaf 'l' of class 'c': '-1' is no number that field-id can have"},
        {"datatype", Container("c", Container("d", ClassId("1") + Leaf("l", "empty", Id("1")))),
         "datatype /c/d l - - leaf 'l' of class 'd' is of a type without default datatype: it needs a datatype-id"},
        {"list",
         Container("c", "<leaf-list name=\"l\"><type name=\"empty\"/>" + ClassId("1") + Id("1") + "</leaf-list>"),
         "list /c/l l - - leaf 'l' of class 'l' is of a type without default datatype: it needs a datatype-id"},
        {"choice",
         Container("c", "<choice name=\"o\"><case name=\"p\">" + Container("d", ClassId("1") + Leaves(256)) +
                            "</case></choice>"),
         "choice /c/o/p/d - - - class 'd' has more than 255 leafs: split it"},
        {"keys", Container("c", List("l", Numbers(17, "k"), ClassId("1") + Leaves(17))),
         "keys /c/l - key - class 'l' has more than 16 keys"},
        {"long",
         Container("c", List("l", std::string(65, 'k'), ClassId("1") + Leaf(std::string(65, 'k'), "int8", Id("1")))),
         "long /c/l - key - class 'l': a key is no leaf of the list itself, or its name has more than 64 characters"},
        {"auto",
         Container(
             "c", ClassId("1") + Ext("name2id-key-fid", "3") + Leaf("a", "int8", Id("1")) + Leaf("b", "int8", Id("2"))),
         "auto /c b name2id-key-fid - class 'c' has several leafs and a name2id-key-fid of its own: that belongs on a "
         "leaf"},
        {"empty", Below(Ext("ancestor-key-fid", "")),
         "empty /c/l/d - ancestor-key-fid - class 'd': ancestor-key-fid is empty: name the attribute ids, or leave it "
         "out"},
        {"words", Below(Ext("ancestor-key-fid", "1 -1")),
         "words /c/l/d - ancestor-key-fid 1 -1 class 'd': '1 -1' is no list of numbers that ancestor-key-fid can have"},
        {"many", Below(Ext("ancestor-key-fid", Numbers(256, ""))),
         "many /c/l/d - ancestor-key-fid - class 'd' has more than 255 ancestor keys"},
        {"ancestors", Below(Ext("ancestor-key-fid", Numbers(17, ""))),
         "ancestors /c/l/d - ancestor-key-fid - class 'd' has more than 16 ancestor keys"},
        {"inherited",
         Container("c",
                   List("l", "j k",
                        ClassId("1") + KEY + Leaf("j", "int8", Id("2")) +
                            Container("d", ClassId("2") + MAPPED + Ext("ancestor-key-fid", "2", Id("10")) +
                                               Container("e", ClassId("3") + Ext("ancestor-key-fid", "9", Id("5")))))),
         "inherited /c/l/d/e - ancestor-key-fid - class 'e' has too few ancestor-key-fid for the keys of the class "
         "above it"},
        {"few",
         Container("c", List("l", "j k",
                             ClassId("1") + KEY + Leaf("j", "int8", Id("2")) + Container("d", ClassId("2") + MAPPED))),
         "few /c/l/d - ancestor-key-fid - class 'd' has too few ancestor-key-fid for the keys of the class above it"},
        {"type", Container("c", Ext("class-type", "other")),
         "type /c - class-type other class 'c': class-type 'other' is neither 'leafref' nor 'leafref-target'"},
        {"alone", Container("c", leafref + ClassId("1")),
         "alone /c - class-type - class 'c' of class-type 'leafref' must not have other extension statements"},
        {"child", Container("c", leafref + Leaf("l", "int8")),
         "child /c - class-type - class 'c' of class-type 'leafref' must have a child class"},
        {"noref", Container("c", leafref + Container("d", ClassId("1")) + Leaf("l", "int8")),
         "noref /c l - - leaf 'l' of 'c', a class of class-type 'leafref', is no leafref"},
        {"statement",
         Container("c", leafref + Container("d", ClassId("1") + KEY) +
                            Leaf("l", "<type name=\"leafref\"><path value=\"../d/k\"/></type>", Id("1"))),
         "statement /c l - - leaf 'l' of 'c', a class of class-type 'leafref', must not have extension statements"},
    };
    for (const auto &c : cases) {
        dir.Add(c.module, c.body);
        EXPECT_EQ(Load(c.module), 1u) << c.module;
        EXPECT_EQ(Failures(c.module), c.expected + "\n");
        EXPECT_EQ(Failures(c.module), c.expected + "\n") << "again";
        EXPECT_EQ(Load(c.module), 1u) << "the question changes nothing";
    }
}

TEST_F(LoadFailures, InAugmentsAreOfTheModuleThatIsWrong)
{
    dir.Add("m", Container("c", ""));
    dir.Add(
        "x",
        "<augment target-node=\"/m:c\">" + Container("d", ClassId("1") + Leaf("l", "int8", Id("-1"))) + "</augment>",
        "m");
    dir.Add("y", "<augment target-node=\"/m:c\">" + Container("e", "") + "</augment>", "m x");
    std::string surplus;
    for (int i = 0; i < 21; ++i)
        surplus += "<augment target-node=\"/m:c\">" + Container("f" + std::to_string(i), "") + "</augment>";
    dir.Add("z", surplus, "m");
    for (const char *name : {"x", "y"}) {
        EXPECT_EQ(Load(name), 1u);
        EXPECT_EQ(Failures(name),
                  "x /c/d l field-id -1 leaf 'l' of class 'd': '-1' is no number that field-id can have\n");
    }
    Stop();
    EXPECT_EQ(Load("z"), 1u);
    EXPECT_EQ(Failures("z"), "z - - augment /m:c the module has more than 20 augments: put some into another module\n");
}

TEST_F(LoadFailures, OfTheSchemaLibraryHaveTheirPlaces)
{
    dir.AddFile("m.yin", Module("m", Container("c", Leaf("l", "nosuch") + Leaf("k", "other"))));
    EXPECT_EQ(Load("m"), 1u);
    const std::string file = dir.Path() + "/m.yin:";
    EXPECT_EQ(Failures("m"), file + "5:16: m unknown type 'nosuch'\n" + file + "6:16: m unknown type 'other'\n");
    uint32_t calls = 0;
    const auto stop = [](const YANGLIB_LOAD_FAILURE_S *, void *count) {
        ++*static_cast<uint32_t *>(count);
        return 77u;
    };
    EXPECT_EQ(YANGLIB_ScanLoadFailures(Local(), "m", "", stop, &calls), 77u);
    EXPECT_EQ(calls, 1u);

    EXPECT_EQ(Load("nowhere"), 1u);
    EXPECT_EQ(Failures("nowhere").rfind("nowhere ", 0), 0u) << Failures("nowhere");
    dir.Add("m", Container("c", ""));
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(Failures("m"), "");
}

TEST_F(LoadFailures, AreGoneWithWantOfMemory)
{
    dir.Add("m", Container("c", ""));
    ASSERT_EQ(Load("m"), 0u);
    Services().FailAllocation(3, false);
    ASSERT_EQ(Load("m", "2"), 1u);
    Services().FailAllocation(NEVER, false);
    EXPECT_EQ(Failures("m", "2"),
              "m - - - - nothing is wrong any more: the load lacked memory, or other modules have "
              "come or gone since\n");
    const auto none = [](const YANGLIB_LOAD_FAILURE_S *, void *) { return 0u; };
    EXPECT_EQ(YANGLIB_ScanLoadFailures(nullptr, "m", nullptr, none, nullptr), KORV_INVALID);
    EXPECT_EQ(YANGLIB_ScanLoadFailures(Local(), nullptr, nullptr, none, nullptr), KORV_INVALID);
    EXPECT_EQ(YANGLIB_ScanLoadFailures(Local(), "m", nullptr, nullptr, nullptr), KORV_INVALID);
}

} // namespace
} // namespace test
