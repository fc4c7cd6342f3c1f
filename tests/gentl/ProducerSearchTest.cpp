// SPDX-License-Identifier: MIT
// The search for producers, over real directories.
#include "ProducerSearch.h"

#include "Environment.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>

using namespace GenICam_Interfaces;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

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

    const TemporaryFolder folder;
    const std::string path = folder.path();
};

TEST_F(ProducerSearchTest, FilesOfTheLowerCaseSuffixAreProducersAndNamesAreNotNormalised)
{
    for (const char *name : {"name.cti", "NAME.CTI", "name.cti.bak", ".cti", "cti", "namecti"})
        addFile(name);
    ASSERT_EQ(mkfifo((path + "/pipe.cti").c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe.cti", path + "/topipe.cti");
    std::filesystem::create_symlink("/dev/zero", path + "/todevice.cti");
    std::filesystem::create_directory(path + "/folder.cti");
    std::filesystem::create_directory_symlink(path + "/folder.cti", path + "/tofolder.cti");
    std::filesystem::create_symlink(path + "/name.cti", path + "/tofile.cti");
    std::filesystem::create_symlink("/nowhere", path + "/tonowhere.cti");
    for (const std::string &folder : {path, path + "/", std::string(".")}) {
        std::filesystem::current_path(path);
        EXPECT_THAT(findCtiFiles(folder),
                    UnorderedElementsAre(folder + "/name.cti", folder + "/.cti", folder + "/tofile.cti",
                                         folder + "/tonowhere.cti"));
    }
}

TEST_F(ProducerSearchTest, TheOrderIsThatOfTheDirectory)
{
    for (int number = 0; number < 50; ++number)
        addFile(std::to_string(number * 37 % 50) + ".cti");
    std::vector<std::string> order;
    for (const auto &entry : std::filesystem::directory_iterator(path))
        order.push_back(entry.path().filename());
    ASSERT_FALSE(std::is_sorted(order.begin(), order.end())) << "this file system hides the fault";
    EXPECT_EQ(getFilesInDirectory(path), order);
}

TEST_F(ProducerSearchTest, ADirectoryOf257BytesIsTheLongest)
{
    std::string longest = path + "/" + std::string(100, 'a') + "/";
    longest += std::string(257 - longest.size(), 'b');
    std::filesystem::create_directories(longest);
    const std::ofstream file(longest + "/name.cti");
    EXPECT_THAT(findCtiFiles(longest), ElementsAre(longest + "/name.cti"));
    EXPECT_THAT(findCtiFiles(longest + "/"), IsEmpty()); // the same directory in 258 bytes
}

TEST_F(ProducerSearchTest, SeparatorsAreNoPartOfADirectoryButBlanksAre)
{
    EXPECT_THAT(paths({}), IsEmpty());
    EXPECT_THAT(paths(";;"), IsEmpty());
    EXPECT_THAT(paths("/a:/b;:/c:"), ElementsAre("/a", "/b", "/c"));
    EXPECT_THAT(paths("/a; /b;\"/c\""), ElementsAre("/a", " /b", "\"/c\""));
}

TEST_F(ProducerSearchTest, DirectoriesAreSearchedInTheOrderOfTheVariable)
{
    const TemporaryFolder otherFolder;
    const std::string other = otherFolder.path();
    addFile("one.cti");
    std::ofstream{other + "/two.cti"};
    const Environment variable("GENICAM_GENTL64_PATH", other + ";/nowhere;" + path + "/one.cti;" +
                                                           std::string(258, 'a') + ":" + path + ";" + other);
    EXPECT_THAT(findCtiFilesInGenTLPaths(),
                ElementsAre(other + "/two.cti", path + "/one.cti", other + "/two.cti"));
}

} // namespace
