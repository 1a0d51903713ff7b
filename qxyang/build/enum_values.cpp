#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "build/if_feature.h"
#include "build/types.h"

namespace qxyang {

namespace {

/* Values of an enumeration or positions of bits, in the order of their statements: RFC 7950, 9.6.4 and 9.7.4. */
class ValueList {
  public:
    ValueList(Build &build, Unit &unit, const Statement *type, const QY_TYPE &base)
        : build_(build), unit_(unit), type_(type), isBits_(base.builtin == QY_TYPE_BITS), base_(base.values)
    {
    }

    const EnumSet *Compile()
    {
        size_t count = 0;
        for (const Statement *child = type_->first; child != nullptr; child = child->next)
            count += IsValue(child) ? 1 : 0;
        auto *values = build_.module.records.MakeArray<EnumValue>(count);
        uint32_t made = 0;
        for (const Statement *child = type_->first; child != nullptr; child = child->next)
            if (IsValue(child) && !Add(values[made++], child))
                return nullptr;
        if (!CheckUnique(values, made))
            return nullptr;
        return build_.module.records.Make<EnumSet>(made, values);
    }

  private:
    bool IsValue(const Statement *statement) const { return statement->keyword == (isBits_ ? Kw::Bit : Kw::Enum); }

    bool Add(EnumValue &value, const Statement *statement)
    {
        value.name = statement->argument;
        if (names_.Insert(&value) != nullptr)
            return Reject(statement, "second " + What() + " " + Quoted(value.name));
        bool isGiven = false;
        if (const Statement *given = FindChild(statement, isBits_ ? Kw::Position : Kw::Value)) {
            std::string_view text = given->argument;
            std::from_chars(text.data(), text.data() + text.size(), value.value);
            isGiven = true;
        }
        value.condition = ConditionsOf(build_, unit_, statement);
        return base_ != nullptr ? TakeOver(value, isGiven, statement) : Assign(value, isGiven, statement);
    }

    /* One without a value gets the highest so far plus one: RFC 7950, 9.6.4.2 and 9.7.4.2. */
    bool Assign(EnumValue &value, bool isGiven, const Statement *statement)
    {
        if (!isGiven) {
            if (next_ > Limit())
                return Reject(statement, What() + " " + Quoted(value.name) + " needs a " + ValueWord() +
                                             ": the highest possible one is in use");
            value.value = next_;
        }
        next_ = names_.Size() == 1 ? value.value + 1 : std::max(next_, value.value + 1);
        return true;
    }

    /* A type that restricts another has some of its names, with the same values: RFC 7950, 9.6.4 and 9.7.4.2. */
    bool TakeOver(EnumValue &value, bool isGiven, const Statement *statement)
    {
        const EnumValue *base = build_.load.enumNames.Find(*base_, value.name);
        if (base == nullptr) {
            build_.Fail(unit_, statement, What() + " " + Quoted(value.name) + " is not in the type that is restricted",
                        {{}, value.name}, [this](auto &&offer) {
                            for (uint32_t i = 0; i < base_->count; ++i)
                                offer(base_->values[i].name);
                        });
            return false;
        }
        if (isGiven && value.value != base->value)
            return Reject(statement, What() + " " + Quoted(value.name) + " has the " + ValueWord() + " " +
                                         std::to_string(base->value) + " in the type that is restricted");
        value.value = base->value;
        return true;
    }

    /* RFC 7950, 9.6.4.2 and 9.7.4.2. */
    bool CheckUnique(const EnumValue *values, uint32_t count)
    {
        std::vector<int64_t> sorted;
        sorted.reserve(count);
        for (uint32_t i = 0; i < count; ++i)
            sorted.push_back(values[i].value);
        std::sort(sorted.begin(), sorted.end());
        auto twice = std::adjacent_find(sorted.begin(), sorted.end());
        if (twice == sorted.end())
            return true;
        bool seen = false;
        const EnumValue *value = values;
        for (const Statement *child = type_->first; child != nullptr; child = child->next) {
            if (!IsValue(child) || (value++)->value != *twice)
                continue;
            if (seen)
                return Reject(child, What() + " " + Quoted(child->argument) + " has the " + ValueWord() + " " +
                                         std::to_string(*twice) + " of another");
            seen = true;
        }
        return false;
    }

    bool Reject(const Statement *statement, std::string_view sentence)
    {
        build_.Fail(unit_, statement, sentence);
        return false;
    }

    std::string What() const { return isBits_ ? "bit" : "enum"; }
    std::string ValueWord() const { return isBits_ ? "position" : "value"; }
    int64_t Limit() const
    {
        return isBits_ ? int64_t{std::numeric_limits<uint32_t>::max()} : int64_t{std::numeric_limits<int32_t>::max()};
    }

    Build &build_;
    Unit &unit_;
    const Statement *type_;
    bool isBits_;
    const EnumSet *base_; /* of the type that is restricted; null: none */
    NameTable<EnumValue> names_;
    int64_t next_ = 0;
};

} // namespace

const EnumSet *CompileValues(Build &build, Unit &unit, const Statement *type, const QY_TYPE &base)
{
    return ValueList(build, unit, type, base).Compile();
}

} // namespace qxyang
