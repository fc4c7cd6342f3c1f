// SPDX-License-Identifier: MIT
// torvane list and doctor over simulated cameras.
#include "Fleet.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const QString json = "--json";

TEST(ListRun, TellsTheTruthOfEachKindOfCamera)
{
    Fleet fleet(cameras(camera("A1") + camera("A2", "lock = \"default\"") +
                        camera("A3", "lock = \"unlocked\"") + camera("A4", "lock = \"none\"") +
                        camera("A5", "access = \"busy\"") + camera("A6", "access = \"readonly\"")));
    // The state of one more can't be read at all.
    fleet.simulator.configure(
        cameras(camera("A1") + camera("A2", "lock = \"default\"") + camera("A3", "lock = \"unlocked\"") +
                camera("A4", "lock = \"none\"") + camera("A5", "access = \"busy\"") +
                camera("A6", "access = \"readonly\"") + camera("A7")) +
        "[[failure]]\nfunction = \"GCReadPort\"\ncode = -1011\ncount = 0\nid = \"A7\"\n");
    EXPECT_THAT(fleet.states(),
                ElementsAre("A1 locked user", "A2 locked factory", "A3 unlocked user", "A4 none none",
                            "A5 unknown unknown", "A6 locked user", "A7 unknown unknown"));
    EXPECT_EQ(fleet.opens("A1", "2"), 1);
    EXPECT_EQ(fleet.opens("A5", "2"), 0);
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());

    fleet.simulator.clearLog();
    const Ended quick = fleet.run({"list", "--quick"});
    EXPECT_EQ(quick.status, 0);
    EXPECT_THAT(quick.output, HasSubstr("A7"));
    EXPECT_TRUE(fleet.simulator.calls("IFOpenDevice").empty());

    EXPECT_EQ(fleet.run({"list", "--serial", "B*"}).status, 4);
    const Ended factory = fleet.run({"list", "--factory"});
    EXPECT_THAT(factory.output, HasSubstr("A2"));
    EXPECT_THAT(factory.output, Not(HasSubstr("A1")));
}

TEST(ListRun, AProducerThatFailsHidesNoOther)
{
    const Fleet fleet(cameras(camera("A1")));
    const QString broken = fleet.file("broken.cti", "no library");
    const Ended list =
        fleet.run({"list", "--library", broken, "--library", QString::fromStdString(Simulator::cti())});
    EXPECT_EQ(list.status, 1);
    EXPECT_THAT(list.output, HasSubstr("A1"));
    EXPECT_THAT(list.errors, HasSubstr("broken.cti"));

    const Ended missing = fleet.run({"list", "--mac", "02:00:00:00:00:ff"});
    EXPECT_EQ(missing.status, 4);
    EXPECT_THAT(missing.errors, HasSubstr("02:00:00:00:00:ff"));

    // One that is named twice has not failed.
    const std::filesystem::path umlaut = fleet.simulator.folder() / u8"Geräte";
    std::filesystem::create_directory(umlaut);
    std::filesystem::copy_file(Simulator::cti(), umlaut / "a.cti");
    const std::string folder = fleet.simulator.folder().string() + "/Ger\xc3\xa4te";
    const char separator = testsystem::listSeparators.front();
    std::string folders = folder + separator + folder + '/';
    std::filesystem::current_path(fleet.simulator.folder());
    for (const std::string &link : testsystem::makeLinks(folder))
        folders += separator + (fleet.simulator.folder() / link).string();
    std::filesystem::current_path(fleet.simulator.folder().root_path());
    const Environment twice("GENICAM_GENTL64_PATH", folders);
    EXPECT_EQ(fleet.run({"list"}).status, 0);

    const Ended doctor = fleet.run({"doctor", "--library", broken, json});
    EXPECT_EQ(doctor.status, 1);
    EXPECT_THAT(doctor.output, HasSubstr("\"state\":\"no_library\""));
}

TEST(ListRun, TheDoctorKnowsThePlacesOfTheSearchPath)
{
    const Fleet fleet(cameras(camera("A1") + camera("A2", "access = \"noaccess\"")));
    const std::string sim = std::filesystem::path(Simulator::cti()).parent_path().string();
    const std::string empty = fleet.simulator.folder().string();
    std::string entries;
    for (const std::string &entry : {sim, std::string("/nowhere"), empty, Simulator::cti(), '"' + sim + '"',
                                     std::string("~/cti"), sim + "," + empty})
        entries += entry + testsystem::listSeparators.front();
    const Environment path("GENICAM_GENTL64_PATH", entries);
    const Ended doctor = fleet.run({"doctor"});
    EXPECT_EQ(doctor.status, 0);
    for (const std::string &line :
         {"Folder " + sim + ": ok\n", std::string("Folder /nowhere: missing."),
          "Folder " + empty + ": empty.", "Folder " + Simulator::cti() + ": not_a_folder.",
          "Folder \"" + sim + "\": quoted.", std::string("Folder ~/cti: tilde."),
          "Folder " + sim + "," + empty + ": separator."})
        EXPECT_THAT(doctor.output, HasSubstr(line));
    EXPECT_THAT(doctor.output, HasSubstr("another program holds it, or its address lies in another network"));
    EXPECT_TRUE(fleet.simulator.calls("IFOpenDevice").empty());
}

TEST(ListRun, TextsOfCamerasSteerNoTerminal)
{
    const Fleet fleet(cameras(camera("A1", "model = \"\\u001b]0;x\\u0007\\u202e\"\nuser_name = \"a\\nb\"")));
    for (const QStringList &arguments :
         {QStringList{"list"}, QStringList{"list", json}, QStringList{"doctor"}}) {
        const Ended run = fleet.run(arguments);
        EXPECT_THAT(run.output + run.errors, Not(HasSubstr("\x1b")));
        EXPECT_THAT(run.output + run.errors, Not(HasSubstr("\u202e")));
    }
    EXPECT_THAT(fleet.run({"list"}).output, HasSubstr("\\x1b]0;x\\x07\\xe2\\x80\\xae"));
}

TEST(ListRun, OneCameraBehindTwoProducersIsListedAsADouble)
{
    const Fleet fleet(cameras(camera("A1"), "torvane_sim") + cameras(camera("A1"), "second"));
    const Ended list = fleet.run({"list", "--library", QString::fromStdString(Simulator::cti()), "--library",
                                  QString::fromStdString(Simulator::cti("fleet_second"))});
    EXPECT_EQ(list.status, 0);
    EXPECT_THAT(list.output, HasSubstr("the same camera as A1 on ethtorvane_sim"));
}

} // namespace
