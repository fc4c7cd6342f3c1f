// SPDX-License-Identifier: MIT
// Stands for a program of another processor where one is started by its path: it becomes the emulator with that program,
// in the same process, so that signals and statuses are those of the program. A shell in its place would have a word to
// say about a current folder that is gone. EMULATOR and PROGRAM come from the build.
#include <unistd.h>

#include <cstdio>
#include <vector>

int main(int count, char **arguments)
{
    std::vector<const char *> words{EMULATOR, "-0", arguments[0], PROGRAM};
    words.insert(words.end(), arguments + 1, arguments + count);
    words.push_back(nullptr);
    execvp(words[0], const_cast<char **>(words.data()));
    std::perror(words[0]);
    return 127;
}
