// SPDX-License-Identifier: MIT
// Cameras of a journal that wait for an outcome. A year's rotations of thousands of cameras are read at each start, so that
// none is searched for among all.
#pragma once

#include "Journal.h"

#include <QMultiHash>
#include <optional>
#include <vector>

namespace fleet {

class CameraKeys
{
public:
    void add(const CameraKey &key);
    /// Takes all out that are the same camera as \p settled.
    void settle(const CameraKey &settled);
    /// Whether one that is left is the same camera as \p key.
    bool holds(const CameraKey &key) const;
    /// Those that are left, in the order in which they came.
    std::vector<CameraKey> left() const;

private:
    std::vector<std::optional<CameraKey>> keys;
    QMultiHash<QString, std::size_t> byMac;  // places in keys
    QMultiHash<QString, std::size_t> byName; // of all, since one of two may not know its MAC address
};

} // namespace fleet
