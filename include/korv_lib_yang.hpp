/**
 * @file
 * The C++ face of the host's interface: a header only, for C++17, on top of korv_lib_yang.h.
 *
 * In short
 *
 *     korv::Options options;
 *     options.directory = "/models";
 *     options.print = [](korv::Level, std::string_view text) { std::cerr << text << '\n'; };
 *     auto lib = korv::Instance::start(std::move(options));
 *     if (!lib)
 *         return lib.code();
 *     auto module = lib->load("example-interfaces");
 *     if (!module)
 *         std::cerr << module.text() << '\n';
 *     for (korv::Node node : module->nodes())
 *         for (korv::Leaf leaf : node.leaves())
 *             std::cout << node.name() << ' ' << leaf.name() << ' ' << leaf.fieldId() << '\n';
 *
 * Conventions
 *
 *  - What a function does, which threads may call it and what hooks may do stands in korv_lib_yang.h and
 *    korv_lib_yang_query.h.
 *  - Instance and Dump own what they stand for and can be moved, not copied. All else are views of what the modules of an
 *    instance have: copied as a pointer or two, and valid until their module is unloaded or the instance ends. Moving the
 *    instance changes nothing for them. A default view shows nothing: it may be asked for that alone.
 *  - A function that can fail answers a Result: a value, or a code and a text. Nothing here throws, with two exceptions that a
 *    host asks for: value() of a failed Result, and a host's own function object, whose exception comes out of the
 *    forEach... function that called it. An exception that leaves a function of Options ends the program.
 *  - Text arguments end with a zero and are needed during the call only. Revisions may be null.
 *  - get(), record() and so on give what the functions of the C interface take.
 *
 * The header compiles without exceptions, too; value() is not there then.
 */
#ifndef KORV_LIB_YANG_HPP
#define KORV_LIB_YANG_HPP

#include "korv_lib_yang_cpp/modules.hpp"

#include <functional>

namespace korv {

/** A log level. The levels 1 and 3 are only asked whether they are open. */
enum class Level : uint32_t {
    Error = 0,   /**< failures */
    Progress = 2 /**< progress */
};

/** What an instance starts with. */
struct Options {
    const char *directory = nullptr;       /**< of module files, searched first; may be null */
    const char *secondDirectory = nullptr; /**< searched next; may be null */
    uint64_t memoryModuleId = 1;           /**< memory module id of every allocation of the library */

    /** Gets each message of an open level; none: nothing is logged. */
    std::function<void(Level, std::string_view)> print;
    /** Asked before each message; none: the errors are open. It answers from a variable and calls nothing. */
    std::function<bool(Level)> isOpen;
    /** Sees every leaf descriptor of a load before it is stored, and may change its numbers; none: they stay. */
    std::function<void(NewLeaf)> adapt;
};

/** Why a load failed. It and its texts are the callback's until that returns. */
class LoadFailure {
  public:
    /** The failure of a record. */
    explicit LoadFailure(const YANGLIB_LOAD_FAILURE_S &record) noexcept : record_(record) {}

    /** The record, which tells more of what the library itself refused. */
    const YANGLIB_LOAD_FAILURE_S &record() const noexcept { return record_; }
    /** True if the schema library refused the module, false if the library did. */
    bool bySchema() const noexcept { return record_.uiRefusedBy == YANGLIB_REFUSED_BY_SCHEMA; }
    /** "file:line:column: sentence", or the sentence alone. */
    std::string_view text() const noexcept { return detail::TextOf(record_.pcText); }
    /** The reason without its place. */
    std::string_view sentence() const noexcept { return detail::TextOf(record_.pcSentence); }
    /** Module or submodule that is wrong. */
    std::string_view module() const noexcept { return detail::TextOf(record_.pcModule); }
    /** Path of the file, or empty. */
    std::string_view file() const noexcept { return detail::TextOf(record_.pcFile); }
    /** Line, or 0. */
    uint32_t line() const noexcept { return record_.uiLine; }
    /** Column, or 0. */
    uint32_t column() const noexcept { return record_.uiColumn; }

  private:
    const YANGLIB_LOAD_FAILURE_S &record_;
};

/** Which tree of a module. */
enum class TreeKind : uint32_t {
    Own = YANGLIB_TREE_OWN,       /**< its own */
    Target = YANGLIB_TREE_TARGET, /**< the one that an augment extends */
    Self = YANGLIB_TREE_SELF      /**< the containers that an augment adds */
};

/** A node and where it stands. */
struct Place {
    Node node;                     /**< the node */
    Module module;                 /**< the module whose tree it stands in */
    TreeKind tree = TreeKind::Own; /**< which of its trees */
    uint32_t augment = 0;          /**< index of the augment, for the other two */
    bool isOwn = false;            /**< false: a target tree shows it, and it is another module's */
};

/** An instance of the library, which ends with this object. */
class Instance {
  public:
    /** None; start() makes one. */
    Instance() noexcept = default;
    ~Instance() = default;
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;
    /** Takes over the instance; the other object has none then. */
    Instance(Instance &&other) noexcept = default;
    /** The same; the instance of this object ends before. */
    Instance &operator=(Instance &&other) noexcept
    {
        local_ = std::move(other.local_);
        functions_ = std::move(other.functions_);
        return *this;
    }

    /** Starts an instance. It keeps the options' functions; the directories may go after the call. */
    static inline Result<Instance> start(Options options) noexcept;

    /** True for an instance, false for none. */
    explicit operator bool() const noexcept { return local_ != nullptr; }
    /** What the C interface takes. Its own value of the host (YANGLIB_GetKorvComponent) is this object's. */
    TELMYANG_LOCAL_DATA_S *get() const noexcept { return local_.get(); }

    /** Adds a search directory behind those that there are; one that does not exist is left out. */
    Result<void> addDirectory(const char *directory) noexcept
    {
        return detail::ResultOf(YANGLIB_PkgAddInstallPath(get(), directory), "the directory cannot be added");
    }
    /** Removes a search directory; null: all of them. */
    void removeDirectory(const char *directory) noexcept { (void)YANGLIB_PkgDelUnInstallPath(get(), directory); }

    /** Loads a module. The text of a failure is that of its first reason; finding it takes up to as long as the load. */
    inline Result<Module> load(const char *name, const char *revision = nullptr) noexcept;
    /** Calls function(const LoadFailure &) for each reason of the latest load, which failed. A function that returns bool is
     * not called again after false. */
    template <class Function>
    Result<void> forEachLoadFailure(const char *name, const char *revision, Function &&function);
    /** Unloads a module: all views of it end. */
    Result<void> unload(const char *name, const char *revision = nullptr) noexcept
    {
        return detail::ResultOf(YANGLIB_UnloadYangModule(get(), name, revision), "the module cannot be unloaded");
    }
    /** Unloads all modules. */
    void unloadAll() noexcept { (void)YANGLIB_UnloadYangModuleAll(get()); }

    /** A module that is loaded. */
    inline Result<Module> module(const char *name, const char *revision = nullptr) const noexcept;
    /** Number of loaded modules. */
    uint32_t moduleCount() const noexcept { return local_->uiModuleNum; }
    /** The loaded modules. */
    inline Modules modules() const noexcept;
    /** Calls function(Module, uint32_t classes) for each module with the number of its classes, which it counts. A function
     * that returns bool is not called again after false. */
    template <class Function>
    Result<void> forEachModule(Function &&function) const;

    /** Calls function(const Place &) for each node of a class, in all modules, in the order of YANGLIB_FindClass. A function
     * that returns bool is not called again after false. */
    template <class Function>
    Result<void> forEachOfClass(uint32_t classId, Function &&function) const;
    /** The first node of a class. */
    inline Result<Place> findClass(uint32_t classId) const noexcept;
    /** The leaf with these ids, and its node. */
    inline Result<Attribute> findAttribute(uint32_t classId, uint32_t fieldId) const noexcept;

  private:
    struct Functions {
        std::function<void(Level, std::string_view)> print;
        std::function<bool(Level)> isOpen;
        std::function<void(NewLeaf)> adapt;
    };

    struct Ender {
        void operator()(TELMYANG_LOCAL_DATA_S *local) const noexcept { YANGLIB_Uninitial(local); }
    };

    static Functions &functionsOf(uint64_t component) noexcept
    {
        return *reinterpret_cast<Functions *>(static_cast<uintptr_t>(component));
    }
    static inline void print(uint64_t component, uint32_t level, const char *unused, const char *text) noexcept;
    static inline uint32_t isOpen(uint64_t component, uint32_t level) noexcept;
    static inline uint32_t adapt(uint64_t component, KorvTreeLeaf *leaf) noexcept;

    std::unique_ptr<Functions> functions_; /* at an address of its own: the hooks get it; ends behind the instance */
    std::unique_ptr<TELMYANG_LOCAL_DATA_S, Ender> local_;
};

/* What is declared above. */
/** @cond INSIDE */
inline Result<Instance> Instance::start(Options options) noexcept
{
    Instance made;
    made.functions_.reset(new (std::nothrow)
                              Functions{std::move(options.print), std::move(options.isOpen), std::move(options.adapt)});
    if (!made.functions_)
        return Failure{KORV_NO_MEMORY, OwnedText("no memory for the host's functions")};
    TELMYANG_DEBUG_HOOK_S hooks[KORV_LOG_LEVEL_NUM] = {};
    for (uint32_t level = 0; level < KORV_LOG_LEVEL_NUM; ++level)
        hooks[level] = {level, print, isOpen};
    const auto component = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(made.functions_.get()));
    made.local_.reset(YANGLIB_Initial(options.memoryModuleId, component, made.functions_->print ? hooks : nullptr,
                                      options.directory, options.secondDirectory));
    if (!made.local_)
        return Failure{KORV_FAIL, OwnedText("the instance cannot be started: no memory, or a directory is too long")};
    if (made.functions_->adapt)
        YANGLIB_RegisterDatatypeAdaptFunc(made.get(), adapt);
    return made;
}

inline void Instance::print(uint64_t component, uint32_t level, const char *, const char *text) noexcept
{
    functionsOf(component).print(static_cast<Level>(level), detail::TextOf(text));
}

inline uint32_t Instance::isOpen(uint64_t component, uint32_t level) noexcept
{
    const auto &asked = functionsOf(component).isOpen;
    return asked ? asked(static_cast<Level>(level)) : level == static_cast<uint32_t>(Level::Error);
}

inline uint32_t Instance::adapt(uint64_t component, KorvTreeLeaf *leaf) noexcept
{
    functionsOf(component).adapt(NewLeaf(leaf));
    return KORV_OK;
}

inline Result<Module> Instance::load(const char *name, const char *revision) noexcept
{
    const uint32_t code = YANGLIB_LoadYangModule(get(), name, revision);
    if (code == KORV_OK)
        return module(name, revision);
    Failure failure{code, OwnedText()};
    (void)forEachLoadFailure(name, revision, [&failure](const LoadFailure &reason) noexcept {
        failure.text = OwnedText::copyOf(reason.text());
        return false;
    });
    if (failure.text.view().empty())
        failure.text = OwnedText("the module cannot be loaded");
    return failure;
}

template <class Function>
Result<void> Instance::forEachLoadFailure(const char *name, const char *revision, Function &&function)
{
    detail::Visitor<std::remove_reference_t<Function>> visitor(function);
    const auto report = [](const YANGLIB_LOAD_FAILURE_S *failure, void *cookie) {
        return static_cast<decltype(visitor) *>(cookie)->visit(LoadFailure(*failure));
    };
    const uint32_t code = YANGLIB_ScanLoadFailures(get(), name, revision, report, &visitor);
    return detail::ResultOf(visitor.finish(code), "the reasons cannot be found");
}

inline Result<Module> Instance::module(const char *name, const char *revision) const noexcept
{
    TELMYANG_YANG_FILE_INFO_S *record = TELMYANG_GetIfYangModuleExist(get(), local_->pstYangCtx, name, revision);
    if (record == nullptr)
        return Failure{KORV_NOT_FOUND, OwnedText("no such module is loaded")};
    return Module(get(), record);
}

inline Modules Instance::modules() const noexcept
{
    TELMYANG_YANG_FILE_LIST_S *list = &local_->pstYangCtx->stYangFileList;
    return {{list->pstNext, get()}, {reinterpret_cast<TELMYANG_YANG_FILE_INFO_S *>(list), get()}};
}

template <class Function>
Result<void> Instance::forEachModule(Function &&function) const
{
    detail::ViewVisitor<std::remove_reference_t<Function>> visitor(get(), function);
    const auto report = [](const YANGLIB_MODULE_S *module, void *cookie) {
        auto *self = static_cast<decltype(visitor) *>(cookie);
        auto *record = const_cast<TELMYANG_YANG_FILE_INFO_S *>(module->pstFile);
        return self->visit(Module(self->local, record), module->uiClassNum);
    };
    return detail::ResultOf(visitor.finish(YANGLIB_ScanModules(get(), report, &visitor)), "there is no instance");
}

template <class Function>
Result<void> Instance::forEachOfClass(uint32_t classId, Function &&function) const
{
    detail::ViewVisitor<std::remove_reference_t<Function>> visitor(get(), function);
    const auto report = [](const YANGLIB_PLACE_S *place, void *cookie) {
        auto *self = static_cast<decltype(visitor) *>(cookie);
        auto *record = const_cast<TELMYANG_YANG_FILE_INFO_S *>(place->pstFile);
        return self->visit(Place{Node(self->local, place->pstNode), Module(self->local, record),
                                 static_cast<TreeKind>(place->uiTree), place->uiAugment, place->uiIsOwn != 0});
    };
    const uint32_t code = visitor.finish(YANGLIB_FindClass(get(), classId, report, &visitor));
    return detail::ResultOf(code, code == KORV_NOT_FOUND ? "no node has that class id" : "the ids cannot be looked up");
}

inline Result<Place> Instance::findClass(uint32_t classId) const noexcept
{
    Place first;
    Result<void> found = forEachOfClass(classId, [&first](const Place &place) {
        first = place;
        return false;
    });
    if (!found)
        return Failure{found.code(), OwnedText(found.text())};
    return first;
}

inline Result<Attribute> Instance::findAttribute(uint32_t classId, uint32_t fieldId) const noexcept
{
    KorvTreeNode *node = nullptr;
    KorvTreeLeaf *leaf = nullptr;
    const uint32_t code = YANGLIB_FindAttribute(get(), classId, fieldId, &node, &leaf);
    if (code != KORV_OK)
        return Failure{code,
                       OwnedText(code == KORV_NOT_FOUND ? "no leaf has these ids" : "the ids cannot be looked up")};
    return Attribute{Node(get(), node), Leaf(leaf)};
}
/** @endcond */

} // namespace korv

#endif /* KORV_LIB_YANG_HPP */
