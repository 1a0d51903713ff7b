/* Threads of devices have small stacks: whatever the limits of the schema layer allow runs on 128 KiB. */
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>

#include "support/host.h"

using namespace test;

namespace {

/* Sanitizers make frames several times as large. */
#if defined(__SANITIZE_ADDRESS__) || !defined(__OPTIMIZE__)
constexpr size_t FACTOR = 16;
#elif defined(__s390x__) /* each frame has 160 bytes for the registers of what is called */
constexpr size_t FACTOR = 3;
#else
constexpr size_t FACTOR = 1;
#endif

constexpr size_t STACK_SIZE = 128 * 1024 * FACTOR;

/* What docs/host-guide.md promises for each operation. */
const std::map<std::string, size_t> PROMISED = {
    {"load", 96 * 1024}, {"failing load", 96 * 1024}, {"lookup", 48 * 1024},   {"travel", 16 * 1024},
    {"dump", 16 * 1024}, {"print", 16 * 1024},        {"enums", 16 * 1024},    {"unload", 16 * 1024},
    {"end", 16 * 1024},  {"ids", 16 * 1024},          {"failures", 96 * 1024},
};

/* A thread's stack that remembers how far it was used, with a page below it that nobody may touch. */
class PaintedStack {
  public:
    PaintedStack()
        : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))),
          memory_(static_cast<uint8_t *>(
              mmap(nullptr, page_ + STACK_SIZE, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
        (void)mprotect(memory_, page_, PROT_NONE);
        std::memset(memory_ + page_, PAINT, STACK_SIZE);
    }
    PaintedStack(const PaintedStack &) = delete;
    PaintedStack &operator=(const PaintedStack &) = delete;
    ~PaintedStack() { (void)munmap(memory_, page_ + STACK_SIZE); }

    /* Runs the work in a thread of its own; the bytes of stack that it needed. */
    size_t Run(const std::function<void()> &work)
    {
        Job job = {&work, nullptr};
        pthread_attr_t attributes;
        (void)pthread_attr_init(&attributes);
        EXPECT_EQ(pthread_attr_setstack(&attributes, memory_ + page_, STACK_SIZE), 0);
        pthread_t thread;
        EXPECT_EQ(pthread_create(&thread, &attributes, Start, &job), 0);
        EXPECT_EQ(pthread_join(thread, nullptr), 0);
        (void)pthread_attr_destroy(&attributes);
        const uint8_t *begin = memory_ + page_;
        const uint8_t *used = std::find_if(begin, begin + STACK_SIZE, [](uint8_t byte) { return byte != PAINT; });
        return static_cast<size_t>(job.start - used);
    }

  private:
    struct Job {
        const std::function<void()> *work;
        const uint8_t *start; /* the stack's pointer before the work */
    };

    static void *Start(void *job)
    {
        auto &own = *static_cast<Job *>(job);
        own.start = static_cast<const uint8_t *>(__builtin_frame_address(0));
        (*own.work)();
        return nullptr;
    }

    static constexpr uint8_t PAINT = 0xA5;

    size_t page_;
    uint8_t *memory_;
};

std::string Number(int number)
{
    return std::to_string(number);
}

std::string Repeat(int count, const std::function<std::string(int)> &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text(i);
    return all;
}

/* `open(i)` of each level, the innermost text, and the ends of all levels. */
std::string Nest(int depth, const std::function<std::string(int)> &open, const std::vector<std::string> &close,
                 const std::string &innermost)
{
    std::string text = Repeat(depth, open) + innermost;
    for (int i = depth; i-- > 0;)
        text += "</" + close[static_cast<size_t>(i) % close.size()] + ">";
    return text;
}

const std::string ENUM_LEAF = Leaf("x", "<type name=\"enumeration\"><enum name=\"a\"/></type>", Ext("field-id", "1"));

/* Containers and lists by turns. */
std::string DeepNodes(int depth, const std::string &innermost)
{
    return Nest(
        depth,
        [](int i) {
            return (i % 2 == 0 ? "<container name=\"c\">" : "<list name=\"c\"><config value=\"false\"/>") +
                   Ext("class-id", Number(i + 1));
        },
        {"container", "list"}, innermost);
}

/* Choices and cases by turns, each choice with a leaf in its case. */
std::string DeepCases(int depth, const std::string &innermost)
{
    return "<container name=\"c\">" +
           Nest(
               depth,
               [](int i) {
                   return i % 2 == 0 ? "<choice name=\"h" + Number(i) + "\">"
                                     : "<case name=\"k\">" + Leaf("l" + Number(i), "string");
               },
               {"choice", "case"}, innermost) +
           "</container>";
}

/* Choices directly in choices: each has a case of its own that is not written. */
std::string DeepChoices(int depth, const std::string &innermost)
{
    return "<container name=\"c\">" +
           Nest(
               depth, [](int i) { return "<choice name=\"h" + Number(i) + "\">"; }, {"choice"}, innermost) +
           "</container>";
}

/* Containers, choices without cases and lists by turns. */
std::string DeepMixture(int depth, const std::string &innermost)
{
    return Nest(
        depth,
        [](int i) {
            const char *open[] = {"<container name=\"c\">", "<choice name=\"h\">",
                                  "<list name=\"c\"><config value=\"false\"/>"};
            return std::string(open[i % 3]);
        },
        {"container", "choice", "list"}, innermost);
}

/* Groupings, features, typedefs, unions and identities, each chain as long as it may be. */
std::string Chains(bool ascending, const std::string &leafOfUnions)
{
    constexpr int LENGTH = 128;
    auto below = [ascending](const char *name, int i) {
        const int number = ascending ? i + 1 : i - 1;
        return number < 0 || number == LENGTH ? std::string() : name + Number(number);
    };
    const std::string top = Number(ascending ? 0 : LENGTH - 1);
    std::string text = Repeat(LENGTH, [&](int i) {
        const std::string feature = below("f", i).empty() ? "" : "<if-feature name=\"" + below("f", i) + "\"/>";
        const std::string member = below("u", i).empty() ? "int8" : below("u", i);
        const std::string type = below("t", i).empty() ? "string" : below("t", i);
        const std::string use = below("g", i).empty() ? ENUM_LEAF : "<uses name=\"" + below("g", i) + "\"/>";
        const std::string base = below("i", i).empty() ? "" : "<base name=\"" + below("i", i) + "\"/>";
        const std::string number = Number(i) + "\">";
        return "<feature name=\"f" + number + feature + "</feature>" + "<typedef name=\"t" + number + "<type name=\"" +
               type + "\"/></typedef>" + "<typedef name=\"u" + number + "<type name=\"union\"><type name=\"" + member +
               "\"/><type name=\"boolean\"/></type></typedef>" + "<identity name=\"i" + number + base + "</identity>" +
               "<grouping name=\"g" + number + "<container name=\"a\"><list name=\"c\">" + use +
               "</list></container></grouping>";
    });
    return text + Container("c", "<uses name=\"g" + top + "\"><if-feature name=\"f" + top + "\"/></uses>" +
                                     Leaf("t", "t" + top) + "<leaf name=\"u\"><type name=\"u" + top + "\"/>" +
                                     leafOfUnions + "</leaf>");
}

std::string Path(int depth, const std::string &step)
{
    return Repeat(depth, [&](int) { return "/" + step; });
}

struct StackModel {
    std::string name;
    std::string body;
    std::string imports = {};
    int depth = 1;        /* nodes named "c" above the leaf "x" */
    std::string why = {}; /* of one that does not load: in a text of the schema layer, or of the library */
};

/* Each of them loads. */
std::vector<StackModel> GoodModels()
{
    const std::string brackets = std::string(63, '(') + "f" + std::string(63, ')');
    return {
        {"nodes", DeepNodes(508, ENUM_LEAF), {}, 508},
        {"cases", DeepCases(506, ENUM_LEAF)},
        {"choices", DeepChoices(254, ENUM_LEAF)},
        {"mixture", DeepMixture(384, ENUM_LEAF), {}, 256},
        {"ascending", Chains(true, "<default value=\"true\"/>"), {}, 0},
        {"descending", Chains(false, "<default value=\"true\"/>"), {}, 0},
        {"copied",
         "<grouping name=\"g\">" + DeepNodes(500, ENUM_LEAF) + "</grouping><uses name=\"g\"><refine target-node=\"" +
             Path(499, "c").substr(1) + "/c\">" + Ext("class-id", "7") + "</refine></uses>",
         {},
         500},
        {"scopes", "<grouping name=\"g\">" +
                       Nest(
                           120, [](int i) { return "<grouping name=\"n" + Number(i) + "\">"; }, {"grouping"}, "") +
                       "</grouping>" + Container("c", ENUM_LEAF)},
        {"statements",
         Container("c", ENUM_LEAF + Nest(
                                        505, [](int) { return std::string("<mimext:aaa-task value=\"x\">"); },
                                        {"mimext:aaa-task"}, ""))},
        {"conditions", "<feature name=\"f\"/>" +
                           Container("c", ENUM_LEAF + Leaf("y", "string", "<if-feature name=\"" + brackets + "\"/>"))},
        {"leafrefs", Container("c", ENUM_LEAF + Repeat(65,
                                                       [](int i) {
                                                           return Leaf(
                                                               "y" + Number(i),
                                                               i == 64 ? std::string("string")
                                                                       : "<type name=\"leafref\"><path value=\"../y" +
                                                                             Number(i + 1) + "\"/></type>");
                                                       }))},
        {"augments",
         "<augment target-node=\"" + Path(500, "nodes:c") + "\">" + DeepNodes(12, Leaf("y", "string")) +
             "</augment><deviation target-node=\"" + Path(508, "nodes:c") +
             "/nodes:x\"><deviate value=\"not-supported\"/></deviation>" + Container("c", ENUM_LEAF),
         "nodes"},
        {"import0", Container("c", ENUM_LEAF), "import1"},
        {"include", "<include module=\"include0\"/>" + Container("c", ENUM_LEAF)},
    };
}

/* None of them loads. */
std::vector<StackModel> WrongModels()
{
    const std::string wrongLeafref = Leaf("y", "<type name=\"leafref\"><path value=\"../xyzzz\"/></type>");
    std::vector<StackModel> models = {
        {"wrong-type", DeepNodes(508, Leaf("y", "none")), {}, 1, "unknown type 'none'"},
        {"wrong-class", DeepNodes(508, Leaf("y", "string", Ext("field-id", "-1"))), {}, 1, "not a good number string"},
        {"wrong-name", DeepCases(506, Leaf("l1", "string")), {}, 1, "second node 'l1'"},
        {"wrong-default", Chains(true, "<default value=\"none\"/>"), {}, 1, "no type of the union has this value"},
        {"wrong-default-too", Chains(false, "<default value=\"none\"/>"), {}, 1, "no type of the union has this value"},
        {"wrong-leafref", DeepCases(500, wrongLeafref + ENUM_LEAF), {}, 1, "has no 'xyzzz'"},
        {"wrong-path", "<augment target-node=\"" + Path(508, "nodes:c") + "/nodes:none\"/>", "nodes", 1,
         "has no node 'none'"},
        {"wrong-depth", DeepNodes(100000, ""), {}, 1, "elements are nested deeper than 512"},
        {"wrong-copies",
         "<grouping name=\"g\">" + DeepNodes(500, ENUM_LEAF) + "</grouping>" +
             Container("a", Container("b", DeepNodes(20, "<uses name=\"g\"/>"))),
         {},
         1,
         "schema nodes are nested deeper than 512"},
        {"wrong-unions",
         Container("c", "<leaf name=\"u\">" +
                            Nest(
                                400, [](int) { return std::string("<type name=\"union\">"); }, {"type"},
                                "<type name=\"int8\"/>") +
                            "</leaf>"),
         {},
         1,
         "types are nested in a chain of more than 128 types"},
        {"wrong-import", "", "missing0", 1, "no file 'missing126.yin'"},
        {"wrong-text", DeepNodes(508, "text"), {}, 1, "text is not allowed in"},
    };
    for (const char *kind : {"typedef", "feature", "identity", "grouping"}) {
        const std::string keyword = kind;
        models.push_back({"wrong-" + keyword,
                          Repeat(127,
                                 [&keyword](int i) {
                                     const std::string next = "name=\"d" + Number((i + 1) % 127) + "\"/>";
                                     const std::string refer = keyword == "typedef"    ? "<type "
                                                               : keyword == "feature"  ? "<if-feature "
                                                               : keyword == "identity" ? "<base "
                                                                                       : "<uses ";
                                     return "<" + keyword + " name=\"d" + Number(i) + "\">" + refer + next + "</" +
                                            keyword + ">";
                                 }),
                          {},
                          1,
                          keyword + " cycle: d0 -> d1 -> "});
    }
    return models;
}

class SmallStack : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        log.open = {};
        assertionsExpected = true; /* paths that are longer than the records' buffers are told of */
        for (const StackModel &model : GoodModels())
            dir.Add(model.name, model.body, model.imports);
        for (const StackModel &model : WrongModels())
            dir.Add(model.name, model.body, model.imports);
        for (int i = 1; i < 127; ++i)
            dir.Add("import" + Number(i), "", i < 126 ? "import" + Number(i + 1) : "");
        for (int i = 0; i < 126; ++i)
            dir.Add("missing" + Number(i), "", "missing" + Number(i + 1));
        for (int i = 0; i < 127; ++i)
            dir.AddFile("include" + Number(i) + ".yin",
                        "<submodule name=\"include" + Number(i) +
                            "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"><yang-version value=\"1.1\"/>"
                            "<belongs-to module=\"include\"><prefix value=\"p\"/></belongs-to>" +
                            (i < 126 ? "<include module=\"include" + Number(i + 1) + "\"/>" : "") + "</submodule>");
    }

    void Measure(const std::string &operation, const std::string &model, const std::function<void()> &work)
    {
        PaintedStack stack;
        const size_t bytes = stack.Run(work);
        auto &most = used_[operation];
        most = std::max(most, {bytes, model});
    }

    void Use(const StackModel &model);

    /* What level 0 said, a line each. */
    std::string Errors() const
    {
        std::string all;
        for (const std::string &text : log.Errors())
            all += text + "\n";
        return all;
    }

    /* The most that each operation needed, and of which model. */
    std::map<std::string, std::pair<size_t, std::string>> used_;
};

uint32_t Visit(void *count, KorvTreeNode *)
{
    ++*static_cast<int *>(count);
    return 0;
}

uint32_t CountFailure(const YANGLIB_LOAD_FAILURE_S *, void *count)
{
    ++*static_cast<uint32_t *>(count);
    return 0;
}

uint32_t TakeName(const char *, int32_t, void *count)
{
    ++*static_cast<int *>(count);
    return 0;
}

/* Everything that a host does with a module that is loaded. */
void SmallStack::Use(const StackModel &model)
{
    const char *name = model.name.c_str();
    const std::string path = Path(std::max(model.depth, 1), "c");
    const std::string prefixed = "p:" + path.substr(1);
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    int visited = 0;
    KorvTreeNode *node = nullptr;
    Measure("lookup", model.name, [&] {
        const YangXpathLookup lookup = {Local(), name, nullptr, path.c_str(), prefixed.c_str(), 0, 0};
        node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
        const YangXpathLookup missing = {Local(), name, nullptr, "/c/none", "p:c/none", 0, 0};
        EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&missing), nullptr);
        EXPECT_EQ(TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), name, nullptr, "/c/none/x", "p:c/none/x"), nullptr);
    });
    ASSERT_NE(node, nullptr) << model.name;
    Measure("travel", model.name, [&] {
        const YangPathRequest request = {name, nullptr, "/c", "p:c"};
        EXPECT_EQ(YANGLIB_TravelYangModuleSubTree(Local(), File(model.name)->pstOriginTree, &visited, Visit, Visit),
                  0u);
        EXPECT_EQ(YANGLIB_TravelYangModule(Local(), &request, &visited, nullptr, Visit), 0u);
    });
    EXPECT_GE(visited, 2 * model.depth) << model.name;
    Measure("ids", model.name, [&] {
        YANGLIB_TEXT_S text = {nullptr, 0, 0};
        EXPECT_EQ(YANGLIB_FindAttribute(Local(), ~0u, 1, nullptr, nullptr), KORV_NOT_FOUND);
        EXPECT_EQ(YANGLIB_GetNodePath(Local(), node, YANGLIB_PATH_PREFIXED, &text), KORV_BUFFER_TOO_SMALL);
    });
    Measure("dump", model.name, [&] {
        const YangDumpRequest request = {Local(), name, nullptr, nullptr, 0};
        EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&request, &records, &count), 0u);
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, __FILE__, __LINE__);
    });
    log.open = {true, true, true, true};
    Measure("print", model.name, [&] { YANGLIB_PrintYangModuleData(Local(), name, nullptr); });
    log.open = {};
    log.Clear();
    const KorvTreeLeaf *leaf = LeafOf(node, "x");
    leaf = leaf != nullptr ? leaf : LeafOf(node, "x", true);
    if (leaf == nullptr)
        return;
    visited = 0;
    Measure("enums", model.name, [&] { EXPECT_EQ(YANGLIB_ScanNameValuePair(leaf, TakeName, &visited), 0u); });
    EXPECT_EQ(visited, 1) << model.name;
}

TEST_F(SmallStack, HoldsWhateverTheLimitsAllow)
{
    ASSERT_NE(Local(), nullptr);
    uint32_t result = 0;
    log.open[0] = true;
    for (const StackModel &model : WrongModels()) {
        Measure("failing load", model.name,
                [&] { result = YANGLIB_LoadYangModule(Local(), model.name.c_str(), nullptr); });
        EXPECT_NE(result, 0u) << model.name;
        EXPECT_NE(Errors().find(model.why), std::string::npos) << model.name << ": " << Errors().substr(0, 500);
        uint32_t failures = 0;
        Measure("failures", model.name, [&] {
            EXPECT_EQ(YANGLIB_ScanLoadFailures(Local(), model.name.c_str(), nullptr, CountFailure, &failures), 0u);
        });
        EXPECT_NE(failures, 0u) << model.name;
        log.Clear();
    }
    log.open = {};
    const std::vector<StackModel> models = GoodModels();
    for (int round = 0; round < 2; ++round) {
        for (const StackModel &model : models) {
            Measure("load", model.name, [&] { result = YANGLIB_LoadYangModule(Local(), model.name.c_str(), nullptr); });
            ASSERT_EQ(result, 0u) << model.name;
            Use(model);
        }
        for (auto model = models.rbegin(); round == 0 && model != models.rend(); ++model)
            Measure("unload", model->name,
                    [&] { EXPECT_EQ(YANGLIB_UnloadYangModule(Local(), model->name.c_str(), nullptr), 0u); });
    }
    Measure("end", "all", [this] { Stop(); });
    for (const auto &[operation, most] : used_) {
        RecordProperty(operation, std::to_string(most.first));
        EXPECT_LE(most.first, PROMISED.at(operation) * FACTOR) << operation << " of " << most.second;
    }
    if (std::getenv("KORV_SHOW_STACK") != nullptr)
        for (const auto &[operation, most] : used_)
            std::printf("%-12s %7zu bytes (%s)\n", operation.c_str(), most.first, most.second.c_str());
}

} // namespace
