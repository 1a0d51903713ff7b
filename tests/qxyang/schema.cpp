#include "schema.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace test {

namespace {

constexpr const char *TYPE_NAMES[] = {
    "?",      "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union"};

constexpr const char *NODE_NAMES[] = {"?",      "container", "leaf",   "leaf-list",    "list",
                                      "choice", "case",      "anyxml", "anydata",      "?",
                                      "rpc",    "input",     "output", "notification", "augment"};

uint32_t KeepLast(void *, void *, QY_TYPE *type, void *cookie)
{
    *static_cast<QY_TYPE **>(cookie) = type;
    return 0;
}

uint32_t AddRange(const int64_t *start, const int64_t *end, void *cookie)
{
    auto &text = *static_cast<std::string *>(cookie);
    text += " " + std::to_string(*start) + ".." + std::to_string(*end);
    return 0;
}

uint32_t AddEnum(const char *name, int32_t value, void *, void *cookie)
{
    *static_cast<std::string *>(cookie) += std::string(" ") + name + "=" + std::to_string(value);
    return 0;
}

uint32_t AddType(void *, void *, QY_TYPE *type, void *cookie)
{
    auto &text = *static_cast<std::string *>(cookie);
    text += std::string(text.empty() ? "" : " | ") + TYPE_NAMES[QY_TYPE_GetBuiltInBaseType(type)];
    QY_TYPE_ScanStartEndPair(type, AddRange, cookie);
    return QY_TYPE_ScanNameValuePair(type, AddEnum, cookie);
}

uint32_t AddExtension(QY_EXT *extension, const char *module, const char *keyword, const char *argument, void *cookie)
{
    auto &text = *static_cast<std::string *>(cookie);
    text += std::string(text.empty() || text.back() == '{' ? "" : " ") + module + ":" + keyword + "(" +
            (argument != nullptr ? argument : "-") + ")";
    std::string nested;
    QY_EXT_ScanAllChildExtInsts(extension, AddExtension, &nested);
    if (!nested.empty())
        text += "{" + nested + "}";
    return 0;
}

struct Dump {
    std::string text;
    std::string module;
    size_t depth = 0;
};

std::string Describe(QY_NODE *node, const std::string &module)
{
    std::string owner = QY_MOD_GetModuleName(QY_NODE_GetModule(node));
    std::string text = NODE_NAMES[QY_NODE_GetNodeType(node)];
    text += " " + (owner == module ? "" : owner + ":") + QY_NODE_GetNodeName(node);
    QY_TYPE *type = nullptr;
    QY_NODE_ScanDerivedType(node, KeepLast, &type);
    if (type != nullptr)
        text += std::string(" ") + TYPE_NAMES[QY_TYPE_GetBuiltInBaseType(type)];
    if (QY_NODE *target = QY_NODE_GetLeafrefTargetNode(node, 0))
        text += " -> " + Path(target);
    if (uint32_t keys = QY_NODE_GetNodeKeyNum(node))
        text += " [" + std::to_string(keys) + "]";
    text += (QY_NODE_IsKey(node) & 1) != 0 ? " key" : "";
    text += (QY_NODE_IsEnabled(node) & 1) != 0 ? "" : " off";
    std::string extensions = Extensions(node);
    return text + (extensions.empty() ? "" : " " + extensions) + "\n";
}

uint32_t AddNode(QY_NODE *node, void *, void *cookie)
{
    auto &dump = *static_cast<Dump *>(cookie);
    dump.text += std::string(dump.depth * 2, ' ') + Describe(node, dump.module);
    ++dump.depth;
    QY_NODE_IterScanChildrenNode(node, AddNode, cookie);
    --dump.depth;
    return 0;
}

struct Search {
    std::string name;
    size_t skip = 0;
    QY_NODE *found = nullptr;
};

uint32_t FindByName(QY_NODE *node, void *, void *cookie)
{
    auto &search = *static_cast<Search *>(cookie);
    if (!search.name.empty() && search.name != QY_NODE_GetNodeName(node))
        return 0;
    search.found = node;
    return search.skip-- == 0 ? 1 : 0;
}

uint32_t AddFailure(const char *, const char *, uint32_t, const char *text, uint32_t, void *cookie)
{
    *static_cast<std::string *>(cookie) += std::string(text) + "\n";
    return 0;
}

std::string Without(std::string text, const std::string &part)
{
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part))
        text.erase(at, part.size());
    return text;
}

} // namespace

std::string ModuleText(const std::string &name, const std::string &body, const std::string &imports,
                       const std::string &version)
{
    std::string bindings = " xmlns:" + name + "=\"urn:" + name + "\"";
    std::string statements;
    std::istringstream words(imports);
    for (std::string import; words >> import;) {
        std::string module = import.substr(0, import.find('@'));
        bindings += " xmlns:" + module + "=\"urn:" + module + "\"";
        statements += "<import module=\"" + module + "\"><prefix value=\"" + module + "\"/>";
        if (import.size() > module.size())
            statements += "<revision-date date=\"" + import.substr(module.size() + 1) + "\"/>";
        statements += "</import>";
    }
    return "<module name=\"" + name + "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"" + bindings +
           "><yang-version value=\"" + version + "\"/><namespace uri=\"urn:" + name + "\"/><prefix value=\"" + name +
           "\"/>" + statements + "\n" + body + "\n</module>\n";
}

Schema::Schema() : context_(QY_CTX_Create(QY_CTX_OPTION_KORV))
{
    dir_ = (std::filesystem::temp_directory_path() / "qxyang-test-XXXXXX").string();
    ::mkdtemp(dir_.data());
    QY_CTX_SetSearchDir(context_, dir_.c_str());
}

Schema::~Schema()
{
    QY_CTX_Delete(context_);
    std::filesystem::remove_all(dir_);
}

void Schema::File(const std::string &name, const std::string &text)
{
    std::filesystem::remove(dir_ + "/" + name); // some file systems write truncated files to disk at once
    std::ofstream(dir_ + "/" + name, std::ios::binary) << text;
}

void Schema::Module(const std::string &name, const std::string &body, const std::string &imports)
{
    File(name + ".yin", ModuleText(name, body, imports));
}

void Schema::Load(const std::string &name, const char *revision)
{
    std::string failures;
    if (QY_CTX_LoadModule(context_, name.c_str(), revision) != 0)
        QY_CTX_ScanAllSchemaLoadFail(context_, AddFailure, &failures);
    if (Mod(name) == nullptr)
        throw std::runtime_error(name + " does not load:\n" + failures);
}

std::string Schema::Failures(const std::string &name, const char *revision)
{
    std::string failures;
    EXPECT_NE(QY_CTX_LoadModule(context_, name.c_str(), revision), 0u);
    QY_CTX_ScanAllSchemaLoadFail(context_, AddFailure, &failures);
    return Without(failures, dir_ + "/");
}

void Schema::LoadText(const std::string &name, const std::string &body, const std::string &imports)
{
    Module(name, body, imports);
    Load(name);
}

QY_MOD *Schema::Mod(const std::string &name)
{
    return QY_CTX_GetModuleByModName(context_, name.c_str());
}

QY_NODE *Schema::Node(const std::string &module, const std::string &path)
{
    std::istringstream names(path);
    QY_NODE *node = nullptr;
    for (std::string name; std::getline(names, name, '/');) {
        Search search{name};
        if (node == nullptr)
            QY_MOD_IterScanTopmostNode(Mod(module), FindByName, &search);
        else
            QY_NODE_IterScanChildrenNode(node, FindByName, &search);
        node = search.found;
        if (node == nullptr)
            throw std::runtime_error("no node " + name + " of " + module + ":" + path);
    }
    return node;
}

QY_NODE *Schema::Augment(const std::string &module, size_t index)
{
    Search search{"", index};
    QY_MOD_IterScanAugmentNode(Mod(module), FindByName, &search);
    return search.found;
}

std::string Schema::Tree(const std::string &module)
{
    Dump dump{"", module};
    QY_MOD_IterScanTopmostNode(Mod(module), AddNode, &dump);
    return dump.text;
}

std::string Schema::AugmentTree(const std::string &module, size_t index)
{
    Dump dump{"", module};
    AddNode(Augment(module, index), nullptr, &dump);
    return dump.text;
}

std::string Schema::Loaded(const std::vector<std::string> &names)
{
    std::string text;
    for (const std::string &name : names)
        if (Mod(name) != nullptr)
            text += (text.empty() ? "" : " ") + name;
    return text;
}

std::string TypeChain(QY_NODE *leaf)
{
    std::string text;
    QY_NODE_ScanDerivedType(leaf, AddType, &text);
    return text;
}

std::string Extensions(QY_NODE *node)
{
    std::string text;
    QY_NODE_ScanAllExtInsts(node, AddExtension, &text);
    return text;
}

std::string Extensions(QY_MOD *module)
{
    std::string text;
    QY_MOD_ScanAllExtInsts(module, AddExtension, &text);
    return text;
}

std::string Path(QY_NODE *node)
{
    QY_NODE *parent = QY_NODE_GetParentNode(node);
    return (parent != nullptr ? Path(parent) : "") + "/" + QY_NODE_GetNodeName(node);
}

std::vector<std::filesystem::path> YinFiles(const std::string &dir)
{
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(dir)) {
        if (entry.path().extension() == ".yin")
            files.push_back(entry.path());
    }
    return files;
}

} // namespace test
