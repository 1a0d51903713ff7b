#include "support/host.h"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace test {
namespace {

constexpr uint32_t DEBUG_TYPE = 100;

uint32_t IsOpen(uint64_t component, uint32_t debugType)
{
    auto *sink = reinterpret_cast<LogSink *>(component);
    if (debugType < DEBUG_TYPE || debugType >= DEBUG_TYPE + KORV_LOG_LEVEL_NUM)
        return 0;
    sink->asked[debugType - DEBUG_TYPE]++;
    if (Services().watcher)
        Services().watcher();
    return sink->open[debugType - DEBUG_TYPE] ? 1 : 0;
}

void Print(uint64_t component, uint32_t debugType, const char *reserved, const char *text)
{
    auto *sink = reinterpret_cast<LogSink *>(component);
    if (Services().watcher)
        Services().watcher();
    sink->otherArguments |= std::strcmp(reserved, "NULL") != 0;
    sink->lines.push_back({debugType - DEBUG_TYPE, text});
    if (sink->onPrint)
        sink->onPrint();
}

std::string FirstWord(std::string *path)
{
    const size_t slash = path->find('/');
    const std::string word = path->substr(0, slash);
    *path = slash == std::string::npos ? "" : path->substr(slash + 1);
    return word;
}

} // namespace

std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> LogSink::Hooks()
{
    std::array<TELMYANG_DEBUG_HOOK_S, KORV_LOG_LEVEL_NUM> hooks = {};
    for (uint32_t level = 0; level < KORV_LOG_LEVEL_NUM; ++level)
        hooks[level] = {DEBUG_TYPE + level, Print, IsOpen};
    return hooks;
}

std::vector<std::string> LogSink::Texts(uint32_t level) const
{
    std::vector<std::string> texts;
    for (const LogLine &line : lines) {
        if (line.level == level)
            texts.push_back(line.text);
    }
    return texts;
}

bool LogSink::Has(const std::string &text) const
{
    return std::any_of(lines.begin(), lines.end(), [&](const LogLine &line) { return line.text == text; });
}

void LogSink::Clear()
{
    lines.clear();
    asked = {};
}

void HostTest::SetUp()
{
    Services().Reset();
    Faults() = SchemaFaults();
}

void HostTest::TearDown()
{
    Services().watcher = nullptr;
    Stop();
    EXPECT_EQ(Services().Leaks(), "");
    EXPECT_EQ(LiveContexts(), 0u);
    (void)Services().ReleaseAllBut({}); /* the next test starts clean */
    EXPECT_FALSE(log.otherArguments);
    if (!assertionsExpected) {
        EXPECT_EQ(Services().assertions, std::vector<std::string>{});
    }
}

TELMYANG_LOCAL_DATA_S *HostTest::Local()
{
    if (local == nullptr)
        local =
            YANGLIB_Initial(MODULE_ID, log.Component(), log.Hooks().data(), dir.Path().c_str(), dir2.Path().c_str());
    return local;
}

void HostTest::Stop()
{
    YANGLIB_Uninitial(local);
    local = nullptr;
}

uint32_t HostTest::Unheard(const std::function<uint32_t()> &operation)
{
    LogSink heard;
    std::swap(heard, log);
    log.open = {};
    const uint32_t result = operation();
    EXPECT_TRUE(log.lines.empty());
    std::swap(heard, log);
    return result;
}

bool HostTest::MayRunTwice() const
{
    return !Faults().Any() && !Services().AnyFault() && log.open[0] && local->pfnDatatypeAdapt == nullptr;
}

uint32_t HostTest::Load(const std::string &name, const char *revision)
{
    const uint32_t before = Local()->uiModuleNum;
    const auto load = [&] { return YANGLIB_LoadYangModule(local, name.c_str(), revision); };
    if (!MayRunTwice())
        return load();
    const uint32_t unheard = Unheard(load);
    if (local->uiModuleNum != before) {
        EXPECT_EQ(Unheard([&] { return YANGLIB_UnloadYangModule(local, name.c_str(), revision); }), 0u);
    }
    const uint32_t result = load();
    EXPECT_EQ(unheard, result);
    return result;
}

uint32_t HostTest::Unload(const std::string &name, const char *revision)
{
    return YANGLIB_UnloadYangModule(Local(), name.c_str(), revision);
}

TELMYANG_YANG_FILE_INFO_S *HostTest::File(const std::string &name, const char *revision)
{
    return TELMYANG_GetIfYangModuleExist(Local(), Local()->pstYangCtx, name.c_str(), revision);
}

QY_MOD *HostTest::SchemaModule(const std::string &name)
{
    return QY_CTX_GetModuleByModName(Local()->pstYangCtx->pSchemaCtx, name.c_str());
}

KorvTreeNode *HostTest::NodeBelow(KorvTreeNode *top, const std::string &path)
{
    std::string rest = path;
    KorvTreeNode *node = nullptr;
    while (!rest.empty()) {
        const std::string name = FirstWord(&rest);
        for (node = top; node != nullptr && name != node->pcName; node = node->pstNextSibling) {
        }
        if (node == nullptr)
            return nullptr;
        top = node->pstFirstChild;
    }
    return node;
}

KorvTreeNode *HostTest::Node(const std::string &module, const std::string &path)
{
    const TELMYANG_YANG_FILE_INFO_S *file = File(module);
    return file != nullptr ? NodeBelow(file->pstOriginTree, path) : nullptr;
}

KorvTreeLeaf *HostTest::LeafOf(const KorvTreeNode *node, const std::string &name, bool caseLeaf)
{
    const VEC_VECTOR_S *leaves = caseLeaf ? node->pstCaseLeafList : node->pstLeafList;
    for (uint32_t i = 0; leaves != nullptr && i < leaves->uiCount; ++i) {
        auto *leaf = static_cast<KorvTreeLeaf *>(leaves->ppvItem[i]);
        if (name == leaf->pcName)
            return leaf;
    }
    return nullptr;
}

std::string Keys(const uint8_t (&keys)[NODE_KEY_LIST_NUM])
{
    size_t num = NODE_KEY_LIST_NUM;
    while (num > 0 && keys[num - 1] == 0)
        --num;
    std::ostringstream text;
    for (size_t i = 0; i < num; ++i)
        text << (i == 0 ? "" : " ") << unsigned{keys[i]};
    return text.str();
}

} // namespace test
