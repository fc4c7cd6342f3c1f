// SPDX-License-Identifier: MIT
// Two shapes of real cameras' descriptions, of which one call reached the same few registers over and over. A test
// counts how often the device is asked, and a benchmark shows it.
#pragma once

#include <string>

namespace readshapes {

inline std::string wholeDescription(const std::string &nodes)
{
    return "<RegisterDescription xmlns='http://www.genicam.org/GenApi/Version_1_1'><Port Name='Device'/>" +
           nodes + "</RegisterDescription>";
}

inline std::string wordAt(const std::string &kind, const std::string &name, int address,
                          const std::string &more)
{
    return "<" + kind + " Name='" + name + "'><Address>" + std::to_string(address) +
           "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>" + more + "</" +
           kind + ">";
}

inline std::string formula(const std::string &name, const std::string &variables, const std::string &text)
{
    return "<IntSwissKnife Name='" + name + "'>" + variables + "<Formula>" + text +
           "</Formula></IntSwissKnife>";
}

/// "Selector" is there when one of eight options is, and locked when all are. Each option is a register that names the
/// selector's as its invalidator, and counts with those before it only: nine words from 0 on.
inline std::string selector()
{
    std::string nodes = wordAt("IntReg", "Present", 0, "");
    std::string options = "<pVariable Name='P'>Present</pVariable>";
    std::string sum = "(P = 99)";
    std::string variables;
    std::string counts = "0";
    for (int option = 1; option <= 8; ++option) {
        const std::string number = std::to_string(option);
        nodes += wordAt("IntReg", "Option" + number, 4 * option, "<pInvalidator>Present</pInvalidator>");
        options += "<pVariable Name='O" + number + "'>Option" + number + "</pVariable>";
        sum += " + O" + number;
        nodes += formula("Count" + number, options, sum);
        variables += "<pVariable Name='C" + number + "'>Count" + number + "</pVariable>";
        counts += " + C" + number;
    }
    return wholeDescription(
        nodes + formula("Any", variables, counts) + formula("All", variables, "(" + counts + ") = 36") +
        "<Enumeration Name='Selector'><pIsAvailable>Any</pIsAvailable><pIsLocked>All</pIsLocked>"
        "<EnumEntry Name='First'><Value>0</Value></EnumEntry><pValue>Present</pValue></Enumeration>");
}

/// "Format", of which each of thirty entries is there when its bits in the words at 0, 4 and 8 say so, and the mode at
/// 12 is 0; its value lies at 16.
inline std::string format()
{
    std::string nodes = wordAt("IntReg", "Mode", 12, "") + wordAt("IntReg", "Raw", 16, "");
    std::string entries;
    for (int entry = 0; entry < 30; ++entry) {
        const std::string number = std::to_string(entry);
        const std::string bit = "<Bit>" + number + "</Bit>";
        nodes += wordAt("MaskedIntReg", "In" + number, 0, bit) +
                 wordAt("MaskedIntReg", "On" + number, 4, bit) +
                 wordAt("MaskedIntReg", "Fit" + number, 8, bit) +
                 formula("Is" + number,
                         "<pVariable Name='ON'>On" + number + "</pVariable><pVariable Name='FIT'>Fit" +
                             number + "</pVariable><pVariable Name='MODE'>Mode</pVariable>",
                         "ON &amp;&amp; FIT &amp;&amp; MODE = 0");
        entries += "<EnumEntry Name='F" + number + "'><pIsImplemented>In" + number +
                   "</pIsImplemented><pIsAvailable>Is" + number + "</pIsAvailable><Value>" + number +
                   "</Value></EnumEntry>";
    }
    return wholeDescription(nodes + "<Enumeration Name='Format'>" + entries +
                            "<pValue>Raw</pValue></Enumeration>");
}

} // namespace readshapes
