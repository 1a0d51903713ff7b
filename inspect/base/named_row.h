/* A row of a table, by its name. */
#pragma once

#include <string_view>
#include <type_traits>

namespace inspect {

/* A row of one of these tables. A name that no row has does not compile. */
template <const auto &TABLES>
class NamedRow {
  public:
    using Row = std::remove_cvref_t<decltype(TABLES[0][0])>;

    consteval NamedRow(const char *name) : row_(Find(name)) {}

    const Row *operator->() const { return row_; }
    const Row &operator*() const { return *row_; }
    bool operator==(const NamedRow &other) const = default;

    /* The order of the rows, which have to be of one table. */
    bool operator<(const NamedRow &other) const { return row_ < other.row_; }

  private:
    static consteval const Row *Find(std::string_view name)
    {
        for (const auto &table : TABLES)
            for (const Row &row : table)
                if (row.name == name)
                    return &row;
        throw "no row has this name";
    }

    const Row *row_;
};

} // namespace inspect
