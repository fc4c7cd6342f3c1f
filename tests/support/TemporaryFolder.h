// SPDX-License-Identifier: MIT
// A fresh folder that goes with its owner.
#pragma once

#include "System.h"

#include <filesystem>
#include <system_error>

class TemporaryFolder
{
public:
    TemporaryFolder() = default;
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_ = testsystem::makeFreshFolder();
};
