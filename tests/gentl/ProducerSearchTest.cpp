// SPDX-License-Identifier: MIT
// The search for producers, over real directories.
#include "ProducerSearch.h"

#include "Environment.h"
#include "System.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>

using namespace GenICam_Interfaces;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ProducerSearchTest : public ::testing::Test
{
protected:
    /// The directories that the variable names when it reads \p value.
    static std::vector<std::string> paths(const std::optional<std::string> &value)
    {
        const Environment variable("GENICAM_GENTL64_PATH", value);
        return getGenTLPaths();
    }

    void addFile(const std::string &name) const { std::ofstream{path + "/" + name}; }

    static std::string join(const std::string &directory, const std::string &name)
    {
        return directory + static_cast<char>(std::filesystem::path::preferred_separator) + name;
    }

    const TemporaryFolder folder{};
    const std::string path = folder.path().string();
};

TEST_F(ProducerSearchTest, FilesOfTheLowerCaseSuffixAreProducersAndNamesAreNotNormalised)
{
    for (const char *name : {"name.cti", "NAME.CTI", "name.cti.bak", ".cti", "cti", "namecti"})
        addFile(name);
    std::filesystem::current_path(path);
    testsystem::makeIrregularFiles();
    std::vector<std::string> names = testsystem::makeLinks("name.cti");
    names.insert(names.end(), {"name.cti", ".cti"});
    for (const std::string &folder : {path, path + "/", std::string(".")}) {
        std::vector<std::string> files;
        for (const std::string &name : names)
            files.push_back(join(folder, name));
        EXPECT_THAT(findCtiFiles(folder), testing::UnorderedElementsAreArray(files));
    }
}

TEST_F(ProducerSearchTest, TheOrderIsThatOfTheDirectory)
{
    for (int number = 0; number < 50; ++number)
        addFile(std::to_string(number * 37 % 50) + ".cti");
    std::vector<std::string> order;
    for (const auto &entry : std::filesystem::directory_iterator(path))
        order.push_back(entry.path().filename().string());
    EXPECT_EQ(getFilesInDirectory(path), order);
    if (std::is_sorted(order.begin(), order.end()))
        GTEST_SKIP() << "This file system sorts, and so would hide the fault.";
}

TEST_F(ProducerSearchTest, ADirectoryOf257BytesIsTheLongest)
{
    std::string longest = path + "/" + std::string(100, 'a') + "/";
    longest += std::string(257 - longest.size(), 'b');
    std::filesystem::create_directories(longest);
    const std::ofstream file(longest + "/name.cti");
    EXPECT_THAT(findCtiFiles(longest), ElementsAre(join(longest, "name.cti")));
    EXPECT_THAT(findCtiFiles(longest + "/"), IsEmpty()); // the same directory in 258 bytes
}

TEST_F(ProducerSearchTest, SeparatorsAreNoPartOfADirectoryButBlanksAre)
{
    EXPECT_THAT(paths({}), IsEmpty());
    EXPECT_THAT(paths(";;"), IsEmpty());
    for (const char separator : testsystem::listSeparators) {
        const std::string other(1, separator);
        EXPECT_THAT(paths("/a" + other + "/b;" + other + "/c" + other), ElementsAre("/a", "/b", "/c"));
    }
    EXPECT_THAT(paths("/a; /b;\"/c\""), ElementsAre("/a", " /b", "\"/c\""));
}

TEST_F(ProducerSearchTest, DirectoriesAreSearchedInTheOrderOfTheVariable)
{
    const TemporaryFolder otherFolder;
    const std::string other = otherFolder.path().string();
    addFile("one.cti");
    std::ofstream{other + "/two.cti"};
    const Environment variable("GENICAM_GENTL64_PATH",
                               other + ";/nowhere;" + path + "/one.cti;" + std::string(258, 'a') +
                                   testsystem::listSeparators.back() + path + ";" + other);
    EXPECT_THAT(findCtiFilesInGenTLPaths(),
                ElementsAre(join(other, "two.cti"), join(path, "one.cti"), join(other, "two.cti")));
}

} // namespace
