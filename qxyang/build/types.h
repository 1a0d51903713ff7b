/* Types: the built-in ones, typedefs, and those that type statements derive from them. */
#pragma once

#include "build/build.h"
#include "build/constraints.h"

namespace qxyang {

/* The built-in type of that number. All modules share it. */
const QY_TYPE *BuiltinType(uint8_t number);

class TypeCompiler {
  public:
    TypeCompiler(Build &build, ConstraintChecker &constraints) : build_(build), constraints_(constraints) {}

    /* The type that a type statement means. If the statement is wrong, the failure is recorded and another type
     * takes its place, so that the rest of the file can be checked. */
    const QY_TYPE *Compile(const Statement *statement, Scope *scope)
    {
        if (statement->builtinType != 0 && statement->first == nullptr && IsPlain(statement->builtinType))
            return BuiltinType(statement->builtinType);
        return CompileOther(statement, scope);
    }

    void Compile(Typedef &definition);

  private:
    static bool IsPlain(uint8_t builtin);

    [[gnu::noinline]] void FailChain(Typedef &definition, Unit &unit);
    [[noreturn]] void StopAtLimit(const Statement *statement, Unit &unit, std::string_view before,
                                  std::string_view behind);
    QY_TYPE DerivedFrom(const QY_TYPE *base, const Statement *statement, Unit &unit);
    const QY_TYPE *CompileOther(const Statement *statement, Scope *scope);
    const QY_TYPE *BaseOf(const Statement *statement, Scope *scope);
    bool CheckSubstatements(const Statement *statement, Unit &unit, const QY_TYPE &base);
    bool Restrict(QY_TYPE &type, const Statement *statement, Scope *scope);
    bool RestrictRange(QY_TYPE &type, const Statement *range, Unit &unit);
    bool CollectMembers(QY_TYPE &type, const Statement *statement, Scope *scope);
    bool CheckBases(const Statement *statement, Unit &unit);

    Build &build_;
    ConstraintChecker &constraints_;
    std::vector<Typedef *> chain_; /* typedefs being compiled, each referring to the next */
    size_t depth_ = 0;             /* of the type statements within one another that are being compiled */
};

/* The values of the enum or bit statements in a type statement. Null: the failure is recorded. */
const EnumSet *CompileValues(Build &build, Unit &unit, const Statement *type, const QY_TYPE &base);

} // namespace qxyang
