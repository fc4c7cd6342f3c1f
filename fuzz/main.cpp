// SPDX-License-Identifier: MIT
// Runs a fuzz target over files without libFuzzer, so that every compiler builds the targets and the tests keep
// what fuzzing has found: fuzz_NAME FILE-OR-FOLDER...
#include "FuzzTarget.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::size_t filesRun = 0;

void runFile(const std::filesystem::path &path)
{
    std::cerr << path.string() << std::endl; // the last one is that of a crash
    std::ifstream file{path, std::ios::binary};
    const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
    require(file.good() || file.eof(), "it can't be read");
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    ++filesRun;
}

void run(const std::filesystem::path &path)
{
    if (!std::filesystem::is_directory(path))
        return runFile(path);
    for (const auto &entry : std::filesystem::directory_iterator{path})
        run(entry.path());
}

} // namespace

int main(int argc, char **argv)
{
    for (int argument = 1; argument < argc; ++argument)
        run(argv[argument]);
    require(filesRun > 0, "no file to run");
    std::cerr << filesRun << " files run" << std::endl;
    return EXIT_SUCCESS;
}
