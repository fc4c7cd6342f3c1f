// SPDX-License-Identifier: MIT
// What the URL of a description tells by itself: scheme:name;address;length, the numbers hexadecimal, with an
// optional ?key=value behind the length. Nothing is read of what follows the question mark.
#include "GenTL_PortInterface.h"
#include "ProducerSearch.h"

#include <exception>

namespace GenICam_Interfaces {

namespace {

/// Takes leading blanks and a 0x, and stops at the first byte that is no digit; false without any digit or
/// with more than 64 bits.
bool parseHexadecimal(const std::string &text, std::uint64_t &number)
{
    try {
        number = std::stoull(text, nullptr, 16);
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace

// Only the lower-case names count, although the standard writes "Local:": a producer that answers the query
// for the scheme does not come here.
bool GenTL_PortInterface::getSchemeFromURL(const std::string &url, std::int32_t &scheme)
{
    const std::vector<std::string> pieces = splitByChar(url, ':');
    if (pieces.size() < 2)
        return false;
    if (pieces[0] == "local")
        scheme = URL_SCHEME_LOCAL;
    else if (pieces[0] == "http")
        scheme = URL_SCHEME_HTTP;
    else if (pieces[0] == "file")
        scheme = URL_SCHEME_FILE;
    else
        return false;
    return true;
}

bool GenTL_PortInterface::getAddressFromURL(const std::string &url, std::uint64_t &address)
{
    const std::vector<std::string> pieces = splitByChar(url, ';');
    return pieces.size() == 3 && parseHexadecimal(pieces[1], address);
}

bool GenTL_PortInterface::getLengthFromURL(const std::string &url, std::uint64_t &length)
{
    const std::vector<std::string> pieces = splitByChar(url, ';');
    return pieces.size() == 3 && parseHexadecimal(splitByChar(pieces[2], '?')[0], length);
}

bool GenTL_PortInterface::getFileNameFromURL(const std::string &url, std::string &fileName)
{
    const std::vector<std::string> pieces = splitByChar(url, ';');
    if (pieces.size() != 3)
        return false;
    const std::vector<std::string> location = splitByChar(pieces[0], ':');
    if (location.size() != 2)
        return false;
    fileName = location[1];
    fileName.erase(0, fileName.find_first_not_of('/'));
    return true;
}

std::vector<std::string> GenTL_PortInterface::splitByChar(const std::string &text, char delimiter)
{
    return splitString(text, delimiter, true);
}

} // namespace GenICam_Interfaces
