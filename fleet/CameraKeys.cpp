// SPDX-License-Identifier: MIT
#include "CameraKeys.h"

#include <algorithm>

namespace fleet {

namespace {

/// What two keys of one camera have in common where not both know a MAC address. No shown text has a line end.
QString nameOf(const CameraKey &key)
{
    const QLatin1Char between('\n');
    return key.serial.isEmpty() ? between + key.id : key.serial + between + key.model;
}

} // namespace

void CameraKeys::add(const CameraKey &key)
{
    if (!key.mac.isEmpty())
        byMac.insert(key.mac, keys.size());
    byName.insert(nameOf(key), keys.size());
    keys.emplace_back(key);
}

void CameraKeys::settle(const CameraKey &settled)
{
    if (keys.empty())
        return;
    for (const std::size_t place : byMac.values(settled.mac) + byName.values(nameOf(settled))) {
        if (keys[place] && keys[place]->isSame(settled))
            keys[place].reset();
    }
}

bool CameraKeys::holds(const CameraKey &key) const
{
    const QList<std::size_t> places = byMac.values(key.mac) + byName.values(nameOf(key));
    return std::ranges::any_of(places,
                               [&](std::size_t place) { return keys[place] && keys[place]->isSame(key); });
}

std::vector<CameraKey> CameraKeys::left() const
{
    std::vector<CameraKey> left;
    for (const auto &key : keys) {
        if (key)
            left.push_back(*key);
    }
    return left;
}

} // namespace fleet
