// SPDX-License-Identifier: MIT
// From bytes to a description: plain, zipped and damaged, and shared between loads of the same bytes.
#include "Camera.h"
#include "DescriptionCache.h"

#include <gmock/gmock.h>
#include <zip.h>

#include <array>
#include <memory>
#include <thread>

using namespace GenApi_3_2_TVN;

namespace {

const std::string sound = description(constant("Gain", "7"));

/// A description whose "Gain" has these children.
std::string body(const std::string &children)
{
    return "<RegisterDescription><Integer Name='Gain'>" + children + "</Integer></RegisterDescription>";
}

/// What loading gives: the text of the refusal, or the value of "Gain".
std::string loaded(const std::string &bytes, EContentType_t contentType = ContentType_Xml)
{
    std::string outcome;
    const std::string text = refusal([&] {
        CNodeMapRef nodeMap;
        if (contentType == ContentType_ZippedXml)
            nodeMap._LoadXMLFromZIPData(bytes.data(), bytes.size());
        else
            nodeMap._LoadXMLFromString({bytes.data(), bytes.size()});
        outcome = std::to_string(CIntegerPtr(nodeMap._GetNode("Gain"))->GetValue());
    });
    return text.empty() ? outcome : text;
}

std::string loadedZip(const std::string &bytes)
{
    return loaded(bytes, ContentType_ZippedXml);
}

using Files = std::vector<std::pair<std::string, std::string>>;

/// An archive in memory with these files, each with an extra field that nobody knows.
std::string zipped(const Files &files, const char *password = nullptr)
{
    zip_source_t *const target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(target);
    zip_t *const archive = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
    for (const auto &[name, content] : files) {
        if (name.ends_with('/')) {
            zip_dir_add(archive, name.c_str(), 0);
            continue;
        }
        const auto index = static_cast<zip_uint64_t>(zip_file_add(
            archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0));
        const std::array<zip_uint8_t, 3> odd{1, 2, 3};
        zip_file_extra_field_set(archive, index, 0x4242, 0, odd.data(), odd.size(),
                                 ZIP_FL_LOCAL | ZIP_FL_CENTRAL);
        if (password != nullptr)
            zip_file_set_encryption(archive, index, ZIP_EM_AES_256, password);
    }
    EXPECT_EQ(zip_close(archive), 0) << zip_strerror(archive);

    zip_source_open(target);
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    EXPECT_EQ(zip_source_read(target, bytes.data(), bytes.size()), static_cast<zip_int64_t>(bytes.size()));
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

TEST(Description, AcceptsWhatTheFieldCarries)
{
    const std::size_t begin = sound.find('\n') + 1;
    std::string utf16 = "\xff\xfe"; // whose last byte is a zero of its own
    for (const char byte : sound.substr(begin, sound.rfind('>') + 1 - begin))
        utf16 += {byte, '\0'};
    const std::string byteOrderMark = "\xef\xbb\xbf";
    for (const std::string &text : {
             sound,
             byteOrderMark + sound + '\0',
             utf16 + std::string(7, '\0'),
             "<?xml version='1.0' encoding='iso-8859-1'?>" + sound.substr(begin) + "\xe4",
             sound + std::string(100, '\xff'), // padding of flash memory
             body("<Value><!-- old: 6 --><![CDATA[7]]></Value>"),
             body("<Value>&#x37;</Value>"),
         })
        EXPECT_EQ(loaded(text), "7") << text;
    for (const std::size_t padding : {1U, 2U, 3U})
        EXPECT_EQ(loaded(sound + std::string(padding, '\0')), "7") << padding << " zeros";
}

TEST(Description, RefusesWhatIsNone)
{
    const std::string noXml = "The description is no XML: ";
    const std::string entity =
        "Node 'Gain': Value: '&x;' is not a 64-bit integer"; // neither expanded nor fetched
    const std::pair<std::string, std::string> rows[] = {
        {"", "The description is empty"},
        {std::string((32U << 20) + 1, ' '), "The description is larger than 32 MiB"},
        {"<Html/>", "The description has the root 'Html' where RegisterDescription is expected"},
        {"<!DOCTYPE r [<!ENTITY x 'aaaa'>]>" + body("<Value>&x;</Value>"), entity},
        {"<!DOCTYPE r [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>" + body("<Value>&x;</Value>"), entity},
        {std::string(8, '\0'), noXml + "No document element found (line 1, byte 0)"},
        {"<RegisterDescription>\n<Integer Name='A'>", noXml + "Start-end tags mismatch (line 2, byte 39)"},
        {{"\xff\xfe<\0\xe4\0>\0<\0", 10}, noXml + "Could not determine tag type (byte 7 as UTF-8)"},
        {"\x4c\x6f\xa7\x94", noXml + "No document element found (line 1, byte 4)"}};
    for (const auto &[text, fault] : rows)
        EXPECT_EQ(loaded(text), fault) << text.substr(0, 80);
    EXPECT_EQ(loaded(body("<Value>7&#x7;&#x110000;</Value>")).substr(0, 23), "Node 'Gain': Value: '7?")
        << "characters that are none";
    EXPECT_EQ(refusal([] { CNodeMapFactory{ContentType_Xml, nullptr, 100}; }), "The description is empty");
    EXPECT_EQ(refusal([] {
                  CNodeMapFactory{static_cast<EContentType_t>(2), "x", 1};
              }),
              "The description is neither plain nor zipped XML");
    EXPECT_EQ(refusal([] { CNodeMapFactory{}.CreateNodeMap("Device"); }), "The factory has no description");
}

TEST(Description, NeedsNoStackForDeepNestingAndHoldsAMillionNodes)
{
    EXPECT_EQ(loaded(description(repeated(300'000, "<Group>") + constant("Gain", "7") +
                                 repeated(300'000, "</Group>"))),
              "7");
    const std::string text = "<RegisterDescription><Integer/><Integer Name=''><Value>1</Value></Integer>" +
                             repeated(1'000'000, "<Node Name='#'/>") + "</RegisterDescription>";
    CNodeMapRef nodeMap;
    nodeMap._LoadXMLFromString({text.data(), text.size()});
    EXPECT_EQ(nodeMap._GetNumNodes(), 1'000'000U) << "those without a name are none";
    EXPECT_EQ(nodeMap._GetNode(""), nullptr);
    EXPECT_STREQ(nodeMap._GetNode("999999")->GetName().c_str(), "999999");
}

TEST(Archive, HoldsOneDescription)
{
    for (const Files &files : {Files{{"camera.xml", sound}}, Files{{"description", sound}},
                               Files{{"__MACOSX/._camera.xml", "x"}, {"._.xml", "x"}, {"camera.xml", sound}},
                               Files{{"docs/", ""}, {"docs/read.me", "x"}, {"docs/CAMERA.XML", sound}}})
        EXPECT_EQ(loadedZip(zipped(files)), "7") << files.back().first;
    const std::string archive = zipped({{"camera.xml", sound}});
    for (const std::size_t padding : {600U, 65'537U})
        EXPECT_EQ(loadedZip(archive + std::string(padding, '\0')), "7") << "padding of the register";
    CNodeMapRef named{"Left"};
    named._LoadXMLFromZIPData(archive.data(), archive.size());
    EXPECT_EQ(named._GetDeviceName(), "Device") << "whatever the reference is called";
}

/// An archive with \p bytes behind the first \p signature, \p offset bytes from its begin.
std::string lying(std::string_view signature, std::size_t offset, std::string_view bytes)
{
    std::string archive = zipped({{"camera.xml", sound}});
    return archive.replace(archive.find(signature) + offset, bytes.size(), bytes);
}

/// What an archive states of a file is not believed: neither does a size of gigabytes take memory, nor does an extra
/// field that passes the end lead a reader there.
TEST(Archive, RefusesWhatHoldsNoneOrTooMuch)
{
    const std::string archive = zipped({{"camera.xml", sound + std::string(4000, ' ') + sound}});
    const std::string bomb = zipped({{"camera.xml", std::string(std::size_t{40} << 20, ' ')}});
    ASSERT_LT(bomb.size(), std::size_t{100} << 10);
    Files most{{"camera.xml", sound}};
    for (int file = 1; file < 256; ++file)
        most.emplace_back("f" + std::to_string(file), "");
    Files tooMany = most;
    tooMany.emplace_back("last", "");
    std::string ends = zipped({{"camera.xml", sound}});
    for (int end = 0; end < 16; ++end)
        ends += ends.substr(ends.find("PK\x05\x06"), 22);

    const char *const central = "PK\x01\x02";
    const std::string description = "The zipped description ";
    const std::pair<std::string, std::string> rows[] = {
        {"", "The description is empty"},
        {sound, description + "can't be opened: Not a zip archive"},
        {zipped({{"a.txt", sound}, {"b.txt", sound}}), description + "holds no XML file"},
        {zipped({{"a.xml", sound}, {"b.xml", sound}}),
         description + "holds 2 XML files where one is expected"},
        {zipped({{"camera.xml", sound}}, "secret"), description + "can't be unpacked: No password provided"},
        {zipped({{"camera.xml", zipped({{"camera.xml", sound}})}}), "The description is no XML: "},
        {bomb, description + "unpacks to more than 32 MiB"},
        {zipped(most), "7"},
        {zipped(tooMany), description + "holds more than 256 files"},
        {ends, description + "holds more than 16 ends"},
        {lying(central, 24, "\xfe\xff\xff\xff"), "7"}, // unpacked size
        {lying(central, 20, "\xfe\xff\xff\xff"), "7"}, // packed size
        {lying("BB\x03", 2, "\xff\xff"), "7"},         // length of the extra field
        {lying(central, 30, "\xff\xff"), description + "can't be opened: Zip archive inconsistent"},
        {lying(central, 16, "\x01\x02\x03\x04"), description + "can't be unpacked: CRC error"},
        {lying(central, 42, "\xff\xff\xff\x7f"), description + "can't be unpacked: Invalid argument"}};
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        const auto &[bytes, text] = rows[row];
        EXPECT_EQ(loadedZip(bytes).substr(0, text.size()), text) << "row " << row;
    }
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
    const std::string archive = zipped({{"camera.xml", sound}});
    const auto unpacked = sharedDescription(ContentType_ZippedXml, archive);
    EXPECT_EQ(sharedDescription(ContentType_ZippedXml, archive), unpacked);

    std::string other = sound;
    other[other.find('7')] = '8';
    std::weak_ptr<const Description> watched;
    {
        CNodeMapRef nodeMap;
        nodeMap._LoadXMLFromString({other.data(), other.size()});
        const auto shared = sharedDescription(ContentType_Xml, other);
        EXPECT_NE(shared, first) << "equal length, other bytes";
        watched = shared;
    }
    EXPECT_TRUE(watched.expired());
    CNodeMapRef holder;
    holder._LoadXMLFromString({other.data(), other.size()});
    watched = sharedDescription(ContentType_Xml, other);
    EXPECT_FALSE(watched.expired()) << "the node map holds it";
}

/// What \p load gives on several threads at once.
template <class Load>
auto onThreads(Load load)
{
    std::vector<decltype(load())> results(8);
    std::vector<std::thread> threads;
    for (auto &result : results)
        threads.emplace_back([&] { result = load(); });
    for (std::thread &thread : threads)
        thread.join();
    return results;
}

/// Of a description that takes long enough to read for the others to begin as well. A name that the index lacks makes it
/// look for formulas inside registers, once.
TEST(Sharing, ThreadsGetOneDescriptionAndReadIt)
{
    const std::string text =
        description("<Integer Name='Gain'><pValue>Where</pValue></Integer><IntReg Name='R'>"
                    "<IntSwissKnife Name='Where'><Formula>7</Formula></IntSwissKnife></IntReg>" +
                    std::string(100'000, ' '));
    for (int time = 0; time < 20; ++time) {
        const auto results = onThreads([&] {
            const auto shared = sharedDescription(ContentType_Xml, text);
            return std::pair{shared, loaded(text)};
        });
        EXPECT_THAT(results, testing::Each(std::pair{results.front().first, std::string{"7"}}));
    }
}

} // namespace
