#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "if_feature.h"
#include "types.h"

namespace qxyang {

namespace {

/* Values of an enumeration or positions of bits, in the order of their statements. */
class ValueList {
  public:
    ValueList(Build &build, Unit &unit, const Statement *type, const QY_TYPE &base)
        : build_(build), unit_(unit), type_(type), isBits_(base.builtin == QY_TYPE_BITS), base_(base.values)
    {
        if (base_ == nullptr)
            return;
        for (uint32_t i = 0; i < base_->count; ++i)
            baseNames_.insert(const_cast<EnumValue *>(&base_->values[i]));
    }

    const EnumSet *compile()
    {
        size_t count = 0;
        for (const Statement *child = type_->first; child != nullptr; child = child->next)
            count += isValue(child) ? 1 : 0;
        auto *values = build_.module.records.makeArray<EnumValue>(count);
        uint32_t made = 0;
        for (const Statement *child = type_->first; child != nullptr; child = child->next)
            if (isValue(child) && !add(values[made++], child))
                return nullptr;
        if (!checkUnique(values, made))
            return nullptr;
        return build_.module.records.make<EnumSet>(made, values);
    }

  private:
    bool isValue(const Statement *statement) const { return statement->keyword == (isBits_ ? Kw::kBit : Kw::kEnum); }

    bool add(EnumValue &value, const Statement *statement)
    {
        value.name = statement->argument;
        if (names_.insert(&value) != nullptr)
            return reject(statement, "second " + what() + " " + quoted(value.name));
        bool isGiven = false;
        if (const Statement *given = findChild(statement, isBits_ ? Kw::kPosition : Kw::kValue)) {
            std::string_view text = given->argument;
            std::from_chars(text.data(), text.data() + text.size(), value.value);
            isGiven = true;
        }
        value.condition = conditionsOf(build_, unit_, statement);
        return base_ != nullptr ? takeOver(value, isGiven, statement) : assign(value, isGiven, statement);
    }

    /* Without a value of its own, one more than the highest so far. */
    bool assign(EnumValue &value, bool isGiven, const Statement *statement)
    {
        if (!isGiven) {
            if (next_ > limit())
                return reject(statement, what() + " " + quoted(value.name) + " needs a " + valueWord() +
                                             ": the highest possible one is in use");
            value.value = next_;
        }
        next_ = names_.size() == 1 ? value.value + 1 : std::max(next_, value.value + 1);
        return true;
    }

    /* A type that restricts another keeps the values of the names that it keeps. */
    bool takeOver(EnumValue &value, bool isGiven, const Statement *statement)
    {
        const EnumValue *base = baseNames_.find(value.name);
        if (base == nullptr) {
            NearestName nearest(value.name);
            forEachNameIn(baseNames_, [&nearest](std::string_view name) { nearest.offer(name); });
            return reject(statement, what() + " " + quoted(value.name) + " is not in the type that is restricted" +
                                         nearest.hint());
        }
        if (isGiven && value.value != base->value)
            return reject(statement, what() + " " + quoted(value.name) + " has the " + valueWord() + " " +
                                         std::to_string(base->value) + " in the type that is restricted");
        value.value = base->value;
        return true;
    }

    bool checkUnique(const EnumValue *values, uint32_t count)
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
            if (!isValue(child) || (value++)->value != *twice)
                continue;
            if (seen)
                return reject(child, what() + " " + quoted(child->argument) + " has the " + valueWord() + " " +
                                         std::to_string(*twice) + " of another");
            seen = true;
        }
        return false;
    }

    bool reject(const Statement *statement, std::string_view sentence)
    {
        build_.fail(unit_, statement, sentence);
        return false;
    }

    std::string what() const { return isBits_ ? "bit" : "enum"; }
    std::string valueWord() const { return isBits_ ? "position" : "value"; }
    int64_t limit() const
    {
        return isBits_ ? int64_t{std::numeric_limits<uint32_t>::max()} : int64_t{std::numeric_limits<int32_t>::max()};
    }

    Build &build_;
    Unit &unit_;
    const Statement *type_;
    bool isBits_;
    const EnumSet *base_; /* of the type that is restricted; null: none */
    NameTable<EnumValue> baseNames_;
    NameTable<EnumValue> names_;
    int64_t next_ = 0;
};

}  // namespace

const EnumSet *compileValues(Build &build, Unit &unit, const Statement *type, const QY_TYPE &base)
{
    return ValueList(build, unit, type, base).compile();
}

}  // namespace qxyang
