// SPDX-License-Identifier: MIT
// Reads one table of a configuration key by key, with defaults and checks. Each fault is named by file, line,
// table, fact and way out, and keys that nobody asked for are faults too, so that a misspelt one doesn't pass
// unseen.
#pragma once

#include <toml++/toml.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

class TableReader
{
public:
    /// \param file   the path as the user gave it, for the texts
    /// \param where  what the table is, such as `camera "A1"`, for the texts
    TableReader(const toml::table &table, std::string file, std::string where);

    /// Names the table by what was read from it meanwhile.
    void rename(std::string newWhere) { where = std::move(newWhere); }
    const std::string &name() const { return where; }

    /// Counts \p key as known, since somebody else reads it.
    void accept(const char *key) { known.emplace_back(key); }

    // Each returns the fallback where the key is absent, and throws GenTLError GC_ERR_INVALID_VALUE on a
    // wrong value.
    std::string text(const char *key, std::string_view fallback);
    std::int64_t integer(const char *key, std::int64_t fallback, std::int64_t least, std::int64_t most);

    /// A text that must not be missing or empty.
    std::string requiredText(const char *key);

    /// One of several words, by its value.
    template <class Value>
    Value choice(const char *key, Value fallback,
                 std::initializer_list<std::pair<std::string_view, Value>> choices);

    /// The tables under \p key, none when it is absent. Its own key and each must be a table.
    std::vector<const toml::table *> tables(const char *key);

    bool has(const char *key) const { return table.contains(key); }

    /// \throws GenTLError  GC_ERR_INVALID_VALUE at a key that none of the above has asked for
    void rejectUnknownKeys() const;

    /// \throws GenTLError  always: GC_ERR_INVALID_VALUE, file, line of the key, table, its value and \p
    ///     wayOut
    [[noreturn]] void reject(const char *key, std::string_view wayOut) const;

private:
    const toml::node *find(const char *key);
    [[noreturn]] void fail(const toml::source_region &place, std::string_view fact) const;

    const toml::table &table;
    std::string file;
    std::string where;
    std::vector<std::string_view> known;
};

/// "cameras.toml:14: "
std::string place(std::string_view file, const toml::source_region &region);

template <class Value>
Value TableReader::choice(const char *key, Value fallback,
                          std::initializer_list<std::pair<std::string_view, Value>> choices)
{
    const toml::node *node = find(key);
    if (!node)
        return fallback;
    std::string wayOut = "one of";
    for (const auto &[word, value] : choices) {
        if (node->value<std::string_view>() == word)
            return value;
        wayOut += std::string(wayOut.ends_with("of") ? " \"" : ", \"").append(word) + '"';
    }
    reject(key, wayOut);
}

} // namespace simulator
