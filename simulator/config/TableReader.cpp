// SPDX-License-Identifier: MIT
#include "TableReader.h"

#include "GenTLError.h"
#include "InfoValue.h"

#include <algorithm>
#include <sstream>

namespace simulator {

TableReader::TableReader(const toml::table &table, std::string file, std::string where)
    : table(table), file(std::move(file)), where(std::move(where))
{}

std::string TableReader::text(const char *key, std::string_view fallback)
{
    const toml::node *node = find(key);
    if (!node)
        return std::string(fallback);
    if (!node->is_string())
        reject(key, "a text in quotes is expected");
    std::string value = **node->as_string();
    if (value.find('\0') != std::string::npos)
        reject(key, "a text without zero bytes is expected");
    return value;
}

std::string TableReader::requiredText(const char *key)
{
    if (!table.contains(key))
        fail(table.source(), std::string(key) + " is missing");
    std::string value = text(key, "");
    if (value.empty())
        reject(key, "a text that is not empty is expected");
    return value;
}

std::int64_t TableReader::integer(const char *key, std::int64_t fallback, std::int64_t least,
                                  std::int64_t most)
{
    const toml::node *node = find(key);
    if (!node)
        return fallback;
    const auto *value = node->as_integer();
    if (!value || **value < least || **value > most)
        reject(key, "a whole number from " + std::to_string(least) + " to " + std::to_string(most) +
                        " is expected");
    return **value;
}

std::vector<const toml::table *> TableReader::tables(const char *key)
{
    const toml::node *node = find(key);
    if (!node)
        return {};
    const toml::array *array = node->as_array();
    if (!array || !array->is_homogeneous<toml::table>())
        fail(node->source(), std::string(key) + " is not a list of tables; write [[" + key + "]]");

    std::vector<const toml::table *> result;
    for (const toml::node &element : *array)
        result.push_back(element.as_table());
    return result;
}

void TableReader::rejectUnknownKeys() const
{
    for (const auto &[key, node] : table)
        if (std::find(known.begin(), known.end(), key.str()) == known.end())
            fail(key.source(), "unknown key \"" + std::string(key.str()) + "\"");
}

void TableReader::reject(const char *key, std::string_view wayOut) const
{
    const toml::node &node = *table.get(key);
    std::ostringstream fact;
    fact << key << " = ";
    if (node.is_string())
        fact << quoted(**node.as_string());
    else if (node.is_value())
        fact << toml::node_view<const toml::node>(node);
    else
        fact << node.type();
    fact << "; " << wayOut;
    fail(node.source(), fact.str());
}

const toml::node *TableReader::find(const char *key)
{
    known.emplace_back(key);
    return table.get(key);
}

void TableReader::fail(const toml::source_region &region, std::string_view fact) const
{
    throw GenTLError(GC_ERR_INVALID_VALUE, place(file, region) + where + ": " + std::string(fact));
}

std::string place(std::string_view file, const toml::source_region &region)
{
    return std::string(file) + ':' + std::to_string(region.begin.line) + ": ";
}

} // namespace simulator
