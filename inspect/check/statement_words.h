/* The extension statements, by what they belong to. */
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace inspect {

inline constexpr const char *EXTENSION_MODULE_NAME = "quelvo-mim-extensions";
inline constexpr const char *ANCESTOR_KEY = "ancestor-key-fid";
inline constexpr std::string_view TASK_ID = "aaa-task-id";

inline constexpr std::array<std::string_view, 2> CLASS_NUMBERS = {"class-id", "tlmt-sample-id"};
inline constexpr std::array<std::string_view, 4> CLASS_STATEMENTS = {"class-id", "tlmt-sample-id", ANCESTOR_KEY,
                                                                     "class-type"};
inline constexpr std::array<std::string_view, 4> LEAF_STATEMENTS = {"field-id", "datatype-id", "ref-id-key-fid",
                                                                    "name2id-key-fid"};

/* "a leaf", "an augment", "a uses" */
inline std::string WithArticle(std::string_view keyword)
{
    bool isVowel = std::string_view("aeio").find(keyword.front()) != std::string_view::npos;
    return (isVowel ? "an " : "a ") + std::string(keyword);
}

template <size_t N>
bool IsOneOf(const std::array<std::string_view, N> &keywords, std::string_view keyword)
{
    return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

} // namespace inspect
