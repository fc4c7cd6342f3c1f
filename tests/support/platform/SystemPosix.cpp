// SPDX-License-Identifier: MIT
#include "System.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

namespace testsystem {

const char *const nullDevice = "/dev/null";
const std::string_view listSeparators = ":;";
const std::string_view listSeparatorWords = R"(":" or ";")";

void setVariable(const std::string &name, const std::optional<std::string> &value)
{
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
}

fs::path makeFreshFolder()
{
    std::string name = (fs::temp_directory_path() / "torvane-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder");
    return name;
}

std::size_t blockSize(void *block)
{
    return malloc_usable_size(block);
}

int divertOutput(std::FILE *file)
{
    const int before = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
    return before;
}

void restoreOutput(int before)
{
    dup2(before, STDOUT_FILENO);
    close(before);
}

int emptyInput()
{
    const int before = dup(STDIN_FILENO);
    const int nothing = open(nullDevice, O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
    return before;
}

void restoreInput(int before)
{
    dup2(before, STDIN_FILENO);
    close(before);
}

std::vector<std::string> makeIrregularFiles()
{
    if (mkfifo("pipe.cti", S_IRUSR | S_IWUSR) != 0)
        throw std::runtime_error("no pipe");
    fs::create_symlink("pipe.cti", "topipe.cti");
    fs::create_symlink("/dev/zero", "device.cti");
    fs::create_directory("folder.cti");
    fs::create_directory_symlink("folder.cti", "tofolder.cti");
    return {"pipe.cti", "topipe.cti", "device.cti", "folder.cti", "tofolder.cti"};
}

void takeProducerAway(const std::string &file)
{
    fs::remove(file);
}

std::int64_t changeTime(const fs::path &file)
{
    return fs::last_write_time(file).time_since_epoch().count();
}

std::string missingFileWords()
{
    return "No such file or directory";
}

std::string readFolderWords()
{
    return "Is a directory";
}

std::vector<std::string> makeLinks(const std::string &file)
{
    fs::create_symlink(file, "tofile.cti");
    fs::create_symlink("/nowhere", "tonowhere.cti");
    return {"tofile.cti", "tonowhere.cti"};
}

bool isPrivate(const fs::path &file)
{
    return fs::status(file).permissions() == (fs::perms::owner_read | fs::perms::owner_write);
}

} // namespace testsystem
