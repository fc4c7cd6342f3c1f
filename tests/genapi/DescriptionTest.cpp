// SPDX-License-Identifier: MIT
// From bytes to a description: plain, zipped and damaged, and shared between loads of the same bytes.
#include "Camera.h"
#include "DescriptionCache.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <memory>
#include <optional>
#include <thread>
#include <utility>

using namespace GenApi_3_2_TVN;

namespace {

const std::string sound = description("<Integer Name='Gain'><Value>7</Value></Integer>");

/// What loading gives: the text of the refusal, or the value of "Gain".
std::string loaded(const std::string &bytes, EContentType_t contentType)
{
    std::string outcome;
    const std::string text = refusal([&] {
        CNodeMapRef nodeMap;
        if (contentType == ContentType_ZippedXml)
            nodeMap._LoadXMLFromZIPData(bytes.data(), bytes.size());
        else
            nodeMap._LoadXMLFromString({bytes.data(), bytes.size()});
        outcome = std::to_string(CIntegerPtr { nodeMap._GetNode("Gain") } -> GetValue());
    });
    return text.empty() ? outcome : text;
}

std::string loadedPlain(const std::string &bytes)
{
    return loaded(bytes, ContentType_Xml);
}

std::string loadedZip(const std::string &bytes)
{
    return loaded(bytes, ContentType_ZippedXml);
}

/// An archive in memory with these files.
std::string zipped(const std::vector<std::pair<std::string, std::string>> &files,
                   const char *password = nullptr)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *const target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t *const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    for (const auto &[name, content] : files) {
        if (name.ends_with('/')) {
            zip_dir_add(archive, name.c_str(), 0);
            continue;
        }
        const zip_int64_t index = zip_file_add(
            archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
        if (password != nullptr)
            zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), ZIP_EM_AES_256, password);
    }
    EXPECT_EQ(zip_close(archive), 0) << zip_strerror(archive);

    zip_source_open(target);
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    EXPECT_EQ(zip_source_read(target, bytes.data(), bytes.size()), static_cast<zip_int64_t>(bytes.size()));
    zip_source_close(target);
    zip_source_free(target);
    zip_error_fini(&error);
    return bytes;
}

TEST(Description, AcceptsWhatTheFieldCarries)
{
    EXPECT_EQ(loadedPlain(sound), "7");
    EXPECT_EQ(loadedPlain("\xef\xbb\xbf" + sound), "7") << "byte-order mark";
    for (const std::size_t padding : {1U, 2U, 3U, 4U, 1000U})
        EXPECT_EQ(loadedPlain(sound + std::string(padding, '\0')), "7")
            << "padding of the register: " << padding;
    EXPECT_EQ(loadedPlain("\xef\xbb\xbf" + sound + '\0'), "7");
    std::string wide = "\xff\xfe";
    const std::size_t begin = sound.find('\n') + 1;
    for (const char byte : sound.substr(begin, sound.rfind('>') + 1 - begin))
        wide += {byte, '\0'};
    EXPECT_EQ(loadedPlain(wide), "7") << "UTF-16, whose last byte is a zero of its own";
    EXPECT_EQ(loadedPlain(wide + std::string(7, '\0')), "7");
}

TEST(Description, RefusesWhatIsNone)
{
    EXPECT_EQ(loadedPlain(""), "The description is empty");
    EXPECT_EQ(loadedPlain(std::string(8, '\0')),
              "The description is no XML: No document element found (line 1, byte 0)");
    EXPECT_EQ(loadedPlain("not a description"),
              "The description is no XML: No document element found (line 1, byte 17)");
    EXPECT_EQ(loadedPlain("<RegisterDescription>\n<Integer Name='A'>"),
              "The description is no XML: Start-end tags mismatch (line 2, byte 39)");
    EXPECT_EQ(loadedPlain("<Html/>"),
              "The description has the root 'Html' where RegisterDescription is expected");
    EXPECT_EQ(loadedPlain("<!DOCTYPE r [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]>" +
                          description("<Integer Name='Gain'><Value>&b;</Value></Integer>").substr(39)),
              "Node 'Gain': Value: '&b;' is not a 64-bit integer")
        << "entities are never expanded";
    EXPECT_EQ(loadedPlain(std::string((32U << 20) + 1, ' ')), "The description is larger than 32 MiB");
    EXPECT_EQ(refusal([] { CNodeMapFactory{ContentType_Xml, nullptr, 100}; }), "The description is empty");
    EXPECT_EQ(refusal([] {
                  CNodeMapFactory{static_cast<EContentType_t>(2), "x", 1};
              }),
              "The description is neither plain nor zipped XML");
    EXPECT_EQ(refusal([] { CNodeMapFactory{}.CreateNodeMap("Device"); }), "The factory has no description");
}

TEST(Description, DeepNestingNeedsNoStack)
{
    std::string nested = description("").substr(0, description("").find("\n</RegisterDescription>"));
    const int depth = 300'000;
    for (int level = 0; level < depth; ++level)
        nested += "<Group>";
    nested += "<Integer Name='Gain'><Value>7</Value></Integer>";
    for (int level = 0; level < depth; ++level)
        nested += "</Group>";
    EXPECT_EQ(loadedPlain(nested + "</RegisterDescription>"), "7");
}

TEST(Archive, HoldsOneDescription)
{
    EXPECT_EQ(loadedZip(zipped({{"camera.xml", sound}})), "7");
    EXPECT_EQ(loadedZip(zipped({{"docs/", ""}, {"docs/read.me", "x"}, {"docs/CAMERA.XML", sound}})), "7");
    EXPECT_EQ(loadedZip(zipped({{"description", sound}})), "7");
    CNodeMapRef named{"Left"};
    const std::string archive = zipped({{"camera.xml", sound}});
    named._LoadXMLFromZIPData(archive.data(), archive.size());
    EXPECT_EQ(named._GetDeviceName(), "Device") << "whatever the reference is called";
    EXPECT_EQ(loadedZip(zipped({{"camera.xml", sound}}) + std::string(600, '\0')), "7")
        << "padding of the register";
}

TEST(Archive, RefusesWhatHoldsNone)
{
    const std::string archive = zipped({{"camera.xml", sound + std::string(4000, ' ') + sound}});
    const std::string opened = "The zipped description can't be opened: ";
    EXPECT_EQ(loadedZip(""), "The description is empty");
    EXPECT_EQ(loadedZip(sound), opened + "Not a zip archive");
    EXPECT_EQ(loadedZip(archive.substr(0, archive.size() / 2)), opened + "Not a zip archive");
    EXPECT_EQ(loadedZip(zipped({{"docs/", ""}})), "The zipped description holds no XML file");
    EXPECT_EQ(loadedZip(zipped({{"a.txt", sound}, {"b.txt", sound}})),
              "The zipped description holds no XML file");
    EXPECT_EQ(loadedZip(zipped({{"a.xml", sound}, {"b.xml", sound}})),
              "The zipped description holds 2 XML files where one is expected");
    EXPECT_EQ(loadedZip(zipped({{"camera.xml", sound}}, "secret")),
              "The zipped description can't be unpacked: No password provided");
    EXPECT_EQ(loadedZip(zipped({{"camera.xml", zipped({{"camera.xml", sound}})}})).substr(0, 27),
              "The description is no XML: ")
        << "an archive in an archive is not unpacked";

    std::string damaged = archive;
    damaged[60] = static_cast<char>(damaged[60] ^ 0x55);
    EXPECT_EQ(loadedZip(damaged).substr(0, 42), "The zipped description can't be unpacked: ");
}

TEST(Archive, BombsAreNotUnpacked)
{
    const std::string bomb = zipped({{"camera.xml", std::string(std::size_t{40} << 20, ' ')}});
    ASSERT_LT(bomb.size(), std::size_t{100} << 10);
    EXPECT_EQ(loadedZip(bomb), "The zipped description unpacks to more than 32 MiB");
}

TEST(Archive, NoCutOrChangedByteBreaksTheReader)
{
    const std::string archive = zipped({{"camera.xml", sound}});
    for (std::size_t place = 0; place < archive.size(); ++place) {
        EXPECT_NE(loadedZip(archive.substr(0, place)), "7") << "cut at " << place;
        std::string changed = archive;
        changed[place] = static_cast<char>(changed[place] ^ 0xff);
        loadedZip(changed);
    }
}

TEST(Sharing, EqualBytesAreParsedOnceAndLetGoWithTheirLastUser)
{
    const auto first = sharedDescription(ContentType_Xml, sound);
    EXPECT_EQ(sharedDescription(ContentType_Xml, std::string{sound}), first);
    std::string other = sound;
    other[other.find('7')] = '8';
    EXPECT_NE(sharedDescription(ContentType_Xml, other), first) << "equal length, other bytes";

    const std::string archive = zipped({{"camera.xml", sound}});
    const auto unpacked = sharedDescription(ContentType_ZippedXml, archive);
    EXPECT_EQ(sharedDescription(ContentType_ZippedXml, archive), unpacked);

    std::weak_ptr<const Description> watched = sharedDescription(ContentType_Xml, other);
    EXPECT_TRUE(watched.expired());
    {
        CNodeMapRef nodeMap;
        nodeMap._LoadXMLFromString({other.data(), other.size()});
        watched = sharedDescription(ContentType_Xml, other);
        EXPECT_FALSE(watched.expired()) << "the node map holds it";
    }
    EXPECT_TRUE(watched.expired());
}

TEST(Sharing, LoadsOnSeveralThreadsGetOneDescription)
{
    std::vector<std::shared_ptr<const Description>> results(8);
    std::vector<std::thread> threads;
    for (auto &result : results)
        threads.emplace_back([&result] {
            for (int time = 0; time < 50; ++time)
                result = sharedDescription(ContentType_Xml, sound);
        });
    for (std::thread &thread : threads)
        thread.join();
    for (const auto &result : results)
        EXPECT_EQ(result, results.front());
}

} // namespace
