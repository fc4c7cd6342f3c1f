// SPDX-License-Identifier: MIT
#include "Completion.h"

#include <CLI/CLI.hpp>

#include <sstream>
#include <vector>

namespace fleet {

namespace {

/// "--serial --id ...": the long options of \p command.
std::string longOptions(const CLI::App &command)
{
    std::string names;
    for (const CLI::Option *const option : command.get_options()) {
        for (const std::string &name : option->get_lnames())
            names += (names.empty() ? "--" : " --") + name;
    }
    return names;
}

std::vector<const CLI::App *> commandsOf(const CLI::App &app)
{
    return app.get_subcommands([](const CLI::App *) { return true; });
}

std::string commandNames(const CLI::App &app)
{
    std::string names;
    for (const CLI::App *const command : commandsOf(app))
        names += (names.empty() ? "" : " ") + command->get_name();
    return names;
}

// Options that take a file let the shell complete file names, which is what it does where nothing is offered.
std::string bashScript(const CLI::App &app)
{
    std::ostringstream script;
    script << "# Completions of torvane for bash.\n"
              "_torvane()\n{\n"
              "    local word=${COMP_WORDS[COMP_CWORD]} options\n"
              "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
              "        mapfile -t COMPREPLY < <(compgen -W '"
           << commandNames(app) << ' ' << longOptions(app)
           << "' -- \"$word\")\n"
              "        return\n"
              "    fi\n"
              "    case ${COMP_WORDS[1]} in\n";
    for (const CLI::App *const command : commandsOf(app))
        script << "    " << command->get_name() << ") options='" << longOptions(*command) << "' ;;\n";
    script << "    *) options= ;;\n"
              "    esac\n"
              "    [[ $word == -* ]] && mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
              "}\n"
              "complete -o default -F _torvane torvane\n";
    return script.str();
}

/// For a place between single quotes inside of brackets.
std::string zshQuoted(const std::string &text)
{
    std::string quoted;
    for (const char character : text) {
        if (character == '[' || character == ']' || character == ':')
            quoted += '\\';
        if (character == '\'')
            quoted += "'\\'";
        quoted += character;
    }
    return quoted;
}

void writeZshCommand(std::ostream &script, const CLI::App &command)
{
    script << "    " << command.get_name() << ")\n        _arguments";
    for (const CLI::Option *const option : command.get_options()) {
        for (const std::string &name : option->get_lnames()) {
            script << " \\\n            '" << (option->get_items_expected_max() > 0 ? "*--" : "--") << name
                   << '[' << zshQuoted(option->get_description()) << ']';
            if (option->get_items_expected_max() > 0)
                script << ':' << zshQuoted(option->get_type_name()) << ":_files";
            script << '\'';
        }
    }
    script << "\n        ;;\n";
}

std::string zshScript(const CLI::App &app)
{
    std::ostringstream script;
    script << "#compdef torvane\n"
              "# Completions of torvane for zsh.\n"
              "if (( CURRENT == 2 )); then\n"
              "    _values 'command'";
    for (const CLI::App *const command : commandsOf(app))
        script << " '" << command->get_name() << '[' << zshQuoted(command->get_description()) << "]'";
    script << "\n    return\nfi\n"
              "local command=${words[2]}\n"
              "shift words\n(( CURRENT-- ))\n"
              "case $command in\n";
    for (const CLI::App *const command : commandsOf(app))
        writeZshCommand(script, *command);
    script << "esac\n";
    return script.str();
}

} // namespace

std::string completionScript(const CLI::App &app, const std::string &shell)
{
    return shell == "zsh" ? zshScript(app) : bashScript(app);
}

} // namespace fleet
