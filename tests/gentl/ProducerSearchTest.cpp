// SPDX-License-Identifier: MIT
// The search for producers, over real directories.
#include "ProducerSearch.h"

#include "TemporaryFolder.h"

#include <dirent.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

using namespace GenICam_Interfaces;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

class ProducerSearchTest : public ::testing::Test
{
protected:
    void SetUp() override { unsetenv("GENICAM_GENTL64_PATH"); }
    void TearDown() override { unsetenv("GENICAM_GENTL64_PATH"); }

    /// The directories that the variable names when it reads \p value.
    static std::vector<std::string> paths(const std::string &value)
    {
        setenv("GENICAM_GENTL64_PATH", value.c_str(), 1);
        return getGenTLPaths();
    }

    TemporaryFolder folder;
};

TEST_F(ProducerSearchTest, OnlyTheLowerCaseSuffixMakesAProducer)
{
    for (const char *name : {"name.cti", "NAME.CTI", "name.cti.bak", ".cti", "cti", "namecti"})
        folder.addFile(name);
    EXPECT_THAT(findCtiFiles(folder.path()),
                UnorderedElementsAre(folder.path() + "/name.cti", folder.path() + "/.cti"));
}

TEST_F(ProducerSearchTest, LinksAreFollowed)
{
    folder.addFile("real.cti");
    std::filesystem::create_directory(folder.path() + "/folder.cti");
    std::filesystem::create_directory_symlink(folder.path() + "/folder.cti", folder.path() + "/tofolder.cti");
    std::filesystem::create_symlink(folder.path() + "/real.cti", folder.path() + "/tofile.cti");
    std::filesystem::create_symlink("/nowhere", folder.path() + "/tonowhere.cti");
    EXPECT_THAT(getFilesInDirectory(folder.path()),
                UnorderedElementsAre("real.cti", "tofile.cti", "tonowhere.cti"));
}

TEST_F(ProducerSearchTest, NamesAreNotNormalised)
{
    folder.addFile("name.cti");
    EXPECT_THAT(findCtiFiles(folder.path() + "/"), ElementsAre(folder.path() + "//name.cti"));
    std::filesystem::current_path(folder.path());
    EXPECT_THAT(findCtiFiles("."), ElementsAre("./name.cti"));
    std::filesystem::current_path("/");
}

TEST_F(ProducerSearchTest, TheOrderIsThatOfTheDirectory)
{
    for (int number = 0; number < 50; ++number)
        folder.addFile(std::to_string(number * 37 % 50) + ".cti");
    std::vector<std::string> order;
    DIR *directory = opendir(folder.path().c_str());
    while (const dirent *entry = readdir(directory)) {
        if (endsWith(entry->d_name, ".cti"))
            order.emplace_back(entry->d_name);
    }
    closedir(directory);
    ASSERT_EQ(order.size(), 50U);
    ASSERT_FALSE(std::is_sorted(order.begin(), order.end())) << "this file system hides the fault";
    EXPECT_EQ(getFilesInDirectory(folder.path()), order);
}

TEST_F(ProducerSearchTest, ADirectoryOf257BytesIsTheLongest)
{
    std::string longest = folder.path() + "/" + std::string(100, 'a') + "/";
    longest += std::string(257 - longest.size(), 'b');
    std::filesystem::create_directories(longest);
    const std::ofstream file(longest + "/name.cti");
    EXPECT_THAT(findCtiFiles(longest), ElementsAre(longest + "/name.cti"));
    EXPECT_THAT(findCtiFiles(longest + "/"), IsEmpty()); // the same directory in 258 bytes
}

TEST_F(ProducerSearchTest, SeparatorsAreNoPartOfADirectoryButBlanksAre)
{
    EXPECT_THAT(getGenTLPaths(), IsEmpty());
    EXPECT_THAT(paths(""), IsEmpty());
    EXPECT_THAT(paths(";;/a;;"), ElementsAre("/a"));
    EXPECT_THAT(paths("/a:/b;:/c:"), ElementsAre("/a", "/b", "/c"));
    EXPECT_THAT(paths("/a; /b;\"/c\""), ElementsAre("/a", " /b", "\"/c\""));
}

TEST_F(ProducerSearchTest, DirectoriesAreSearchedInTheOrderOfTheVariable)
{
    const TemporaryFolder other;
    folder.addFile("one.cti");
    other.addFile("two.cti");
    const std::string one = folder.path() + "/one.cti";
    const std::string two = other.path() + "/two.cti";
    paths(other.path() + ";/nowhere;" + one + ";" + std::string(258, 'a') + ":" + folder.path() + ";" +
          other.path());
    EXPECT_THAT(findCtiFilesInGenTLPaths(), ElementsAre(two, one, two));
}

TEST_F(ProducerSearchTest, EmptyPiecesCountOnRequest)
{
    EXPECT_THAT(splitString("", ';', true), ElementsAre(""));
    EXPECT_THAT(splitString("", ';', false), IsEmpty());
    EXPECT_THAT(splitString(";a;;b;", ';', true), ElementsAre("", "a", "", "b", ""));
    EXPECT_THAT(splitString(";a;;b;", ';', false), ElementsAre("a", "b"));
}

} // namespace
