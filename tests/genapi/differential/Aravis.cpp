// SPDX-License-Identifier: MIT
// The oracle's side: each questionnaire goes through files to a process of the oracle.
#include "Sides.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

/// A folder for the files of one exchange.
class Folder
{
public:
    Folder()
        : path_{std::filesystem::temp_directory_path() / ("oracle-" + std::to_string(std::random_device{}()))}
    {
        std::filesystem::create_directory(path_);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string file(const char *name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

} // namespace

OracleAnswers answersOfAravis(const Questionnaire &questionnaire)
{
    const Folder folder;
    const std::string command = "'" TORVANE_ARAVIS_ORACLE "' < '" + folder.file("questions") + "' > '" +
                                folder.file("answers") + "' 2> '" + folder.file("log") + "'";
    OracleAnswers result;
    Questionnaire rest = questionnaire;
    for (;;) {
        std::ofstream questions{folder.file("questions"), std::ios::binary};
        write(questions, rest);
        questions.close();
        const bool isWell = std::system(command.c_str()) == EXIT_SUCCESS;
        std::ifstream answers{folder.file("answers")};
        std::size_t count = 0;
        for (std::string line; count < rest.questions.size() && std::getline(answers, line); ++count)
            result.answers.push_back(line);
        if (count == rest.questions.size())
            return result;
        if (isWell)
            throw std::runtime_error("the oracle left questions unanswered");
        ++result.crashes;
        result.answers.emplace_back();
        rest.questions.erase(rest.questions.begin(),
                             rest.questions.begin() + static_cast<std::ptrdiff_t>(count) + 1);
        if (rest.questions.empty())
            return result;
    }
}
