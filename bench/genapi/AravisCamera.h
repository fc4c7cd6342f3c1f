// SPDX-License-Identifier: MIT
// The Aravis library's side of the benchmarks: its node map over the generated camera's registers, cached.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

class AravisCamera
{
public:
    /// Ends the process if the library can't load the description, or read the value: there is nothing to compare.
    explicit AravisCamera(const std::string &description);
    ~AravisCamera();
    AravisCamera(const AravisCamera &) = delete;
    AravisCamera &operator=(const AravisCamera &) = delete;

    bool hasNode(const std::string &name) const;
    std::int64_t integer(const std::string &name) const;

private:
    struct Objects;
    std::unique_ptr<Objects> objects;
};
