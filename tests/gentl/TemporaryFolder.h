// SPDX-License-Identifier: MIT
// A fresh folder that goes with its owner.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "torvane-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::string &path() const { return path_; }

    /// Makes an empty file.
    void addFile(const std::string &name) const { std::ofstream{path_ + "/" + name}; }

private:
    std::string path_;
};
