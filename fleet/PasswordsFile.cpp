// SPDX-License-Identifier: MIT
#include "PasswordsFile.h"

#include "SecretLine.h"
#include "UsageError.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>
#include <utility>

namespace fleet {

namespace {

/// Bytes of one line; a serial number and two passwords need a fraction of it.
constexpr std::size_t longestLine = 65536;

class LineFault : public std::exception
{
public:
    explicit LineFault(std::string words) : words(std::move(words)) {}
    const char *what() const noexcept override { return words.c_str(); }

private:
    std::string words;
};

/// What is wrong with a file, in one sentence: a file made by a wrong script is wrong in each line.
class LineFaults
{
public:
    void add(std::size_t number, const std::string &words)
    {
        if (++count <= mostTold)
            told += (told.empty() ? "line " : "; line ") + std::to_string(number) + ": " + words;
    }
    bool areNone() const { return count == 0; }
    std::string text() const
    {
        return told + (count > mostTold ? "; and " + std::to_string(count - mostTold) + " more." : ".");
    }

private:
    static constexpr std::size_t mostTold = 20;

    std::size_t count = 0;
    std::string told;
};

std::optional<Secret> secretOf(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined())
        return std::nullopt;
    if (!value.isString() || value.toString().isEmpty())
        throw LineFault('"' + key.toStdString() + "\" is not a text, or is empty");
    return Secret(value.toString().toStdString());
}

std::pair<std::string, PasswordsFile::Entry> parseLine(const std::string &line, bool needsNew)
{
    QJsonParseError fault;
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(line.data(), static_cast<int>(line.size())), &fault);
    if (!document.isObject())
        throw LineFault("no JSON object");
    const QJsonObject object = document.object();
    const QStringList known{QStringLiteral("serial"), QStringLiteral("current"), QStringLiteral("new")};
    for (const QString &key : object.keys()) {
        if (!known.contains(key))
            throw LineFault(R"(a key other than "serial", "current" and "new")");
    }
    const QString serial = object.value(known[0]).toString();
    if (serial.isEmpty())
        throw LineFault(R"("serial" is missing, or is no text, or is empty)");
    PasswordsFile::Entry entry{secretOf(object, known[1]), secretOf(object, known[2])};
    if (needsNew && !entry.next)
        throw LineFault(R"("new" is missing)");
    return {serial.toStdString(), std::move(entry)};
}

bool isBlank(const std::string &line)
{
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

} // namespace

PasswordsFile PasswordsFile::read(std::istream &input, const std::string &name, bool needsNew)
{
    PasswordsFile file;
    LineFaults faults;
    std::string line;
    const WipeAtEnd wiped(line);
    for (std::size_t number = 1; readSecretLine(input, line, longestLine, number == 1); ++number) {
        if (number > mostLines || line.size() > longestLine) { // where the next line begins is not known then
            faults.add(number, number > mostLines ? "more than 100,000 lines" : "longer than 64 KiB");
            break;
        }
        try {
            if (!isBlank(line) && !file.entries.insert(parseLine(line, needsNew)).second)
                throw LineFault("a serial number that an earlier line has");
        } catch (const LineFault &fault) {
            faults.add(number, fault.what());
        }
    }
    if (input.bad())
        throw UsageError(name + " can't be read.");
    if (!faults.areNone())
        throw UsageError(name + ", " + faults.text());
    return file;
}

const PasswordsFile::Entry *PasswordsFile::find(const std::string &serial) const
{
    const auto found = entries.find(serial);
    return found == entries.end() ? nullptr : &found->second;
}

} // namespace fleet
