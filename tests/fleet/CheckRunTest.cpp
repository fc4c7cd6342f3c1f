// SPDX-License-Identifier: MIT
// torvane check over simulated cameras: its line, its status and its metrics file.
#include "Fleet.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QRegularExpression>
#include <fstream>
#include <iterator>

namespace {

using testing::HasSubstr;
using testing::Not;

std::string contentOf(const std::filesystem::path &file)
{
    std::ifstream input(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(input), {}};
}

std::string firstLine(const Ended &run)
{
    return run.output.substr(0, run.output.find('\n'));
}

// Two on the factory password, one of which bears a name that would end the line and begin performance data, one
// unlocked, one held, one without the lock, one as it should be.
std::string mixed()
{
    return cameras(camera("A1", "lock = \"default\"") +
                   camera("A2", "lock = \"default\"\nmodel = \"a|b=1\\nTORVANE OK\\u001b\"") +
                   camera("A3", "lock = \"unlocked\"") + camera("A4", "access = \"busy\"") +
                   camera("A5", "lock = \"none\"") + camera("A6"));
}

TEST(CheckRun, EndsAsMonitoringPluginsDo)
{
    struct Row
    {
        const char *arguments;
        int status;
        const char *line;
    };
    const Fleet fleet(mixed());
    const std::string counts = " | factory=2 unlocked=1 unknown=1 none=1 user=2";
    for (const Row &row :
         {Row{"", 2, "TORVANE CRITICAL - 2 factory, 1 unknown$"},
          {"--max-factory 1", 2, "TORVANE CRITICAL - 2 factory, 1 unknown$"},
          {"--max-factory 2", 0, "TORVANE OK - 6 cameras, 1 unknown$"},
          {"--warn-factory 1", 1, "TORVANE WARNING - 2 factory, 1 unknown$"},
          {"--warn-unlocked 0 --max-unknown 0", 2, "TORVANE CRITICAL - 1 unlocked, 1 unknown$"},
          {"--max-unlocked 1 --warn-unknown 1", 0, "TORVANE OK - 6 cameras, 1 unknown$"},
          {"--serial A6 --serial B9", 3,
           "TORVANE UNKNOWN - No camera matches --serial B9. | factory=0 unlocked=0 unknown=0 none=0 user=1"},
          {"--serial A1 --serial B9", 2,
           "TORVANE CRITICAL - 1 factory | factory=1 unlocked=0 unknown=0 none=0 user=0"},
          {"--serial B|9", 3, "TORVANE UNKNOWN - No camera matches --serial B\\x7c9."},
          {"--mac 02:00:00:00:00:ff", 3,
           "TORVANE UNKNOWN - No camera that can be opened has the MAC address 02:00:00:00:00:ff."},
          {"--library nowhere.cti", 3,
           "TORVANE UNKNOWN - There is no camera. Run 'torvane doctor' to see why."},
          {"--max-factory -1", 3, "TORVANE UNKNOWN - --max-factory: Value -1 not in range 0 to 1000000"},
          {"--textfile a.txt", 3,
           "TORVANE UNKNOWN - --textfile: no collector reads a file that does not end in .prom"},
          {"--help", 3, "For monitoring: hold the cameras' states against rules"}}) {
        const Ended run = fleet.run(
            QStringLiteral("check %1").arg(QLatin1String(row.arguments)).trimmed().split(QLatin1Char(' ')));
        std::string line = row.line;
        if (line.ends_with('$'))
            line.replace(line.size() - 1, 1, counts);
        EXPECT_EQ(run.status, row.status) << row.arguments;
        EXPECT_EQ(firstLine(run), line) << row.arguments;
    }
    const Environment none("GENICAM_GENTL64_PATH", "");
    EXPECT_EQ(fleet.run({"check"}).output,
              "TORVANE UNKNOWN - There is no producer. Run 'torvane doctor' to see why.\n");
}

TEST(CheckRun, TellsTheOffendersAndDisturbsNone)
{
    const Fleet fleet(mixed());
    const Ended run = fleet.run({"check", "--max-unknown", "0", "--warn-factory", "0"});
    EXPECT_EQ(run.output,
              "TORVANE CRITICAL - 2 factory, 1 unknown | factory=2 unlocked=1 unknown=1 none=1 user=2\n"
              "A1 (SimCam), A1: factory\n"
              "A2 (a\\x7cb=1\\x0aTORVANE OK\\x1b), A2: factory\n"
              "A4 (SimCam), A4: unknown, held: Another program holds the camera.\n");
    EXPECT_EQ(fleet.opens("A1", "2"), 1);
    EXPECT_EQ(fleet.simulator.calls("IFOpenDevice").size(), 5U);
    EXPECT_TRUE(fleet.simulator.calls("GCWritePort").empty());
}

// On the first way the camera is held, on the second it tells.
TEST(CheckRun, ACameraOnTwoWaysCountsOnceByTheOneThatTells)
{
    const Fleet fleet(cameras(camera("A1", "access = \"busy\""), "torvane_sim") +
                      cameras(camera("A1", "lock = \"default\""), "second"));
    const QString library = "--library";
    const Ended run = fleet.run({"check", library, QString::fromStdString(Simulator::cti()), library,
                                 QString::fromStdString(Simulator::cti("fleet_second"))});
    EXPECT_EQ(firstLine(run), "TORVANE CRITICAL - 1 factory | factory=1 unlocked=0 unknown=0 none=0 user=0");
}

TEST(CheckRun, TheMetricsFileIsReplacedAndNeverLooksFresherThanItIs)
{
    Fleet fleet(cameras(camera("A1")));
    const std::filesystem::path file = fleet.simulator.folder() / "out" / "torvane.prom";
    const QStringList check{"check", "--textfile", QString::fromStdString(file.string())};
    const Ended unwritable = fleet.run(check);
    EXPECT_EQ(unwritable.status, 3);
    EXPECT_THAT(firstLine(unwritable), HasSubstr("can't be written"));

    std::filesystem::create_directory(file.parent_path());
    const auto before = umask(077);
    EXPECT_EQ(fleet.run(check).status, 0);
    umask(before);
    EXPECT_THAT(contentOf(file), HasSubstr("torvane_camera_factory{serial=\"A1\",model=\"SimCam\"} 0\n"));
    const QRegularExpression time("\ntorvane_check_timestamp_seconds [1-9][0-9]{9}\n$");
    EXPECT_TRUE(time.match(QString::fromStdString(contentOf(file))).hasMatch());
    EXPECT_NE(std::filesystem::status(file).permissions() & std::filesystem::perms::others_read,
              std::filesystem::perms::none);

    fleet.simulator.configure("");
    EXPECT_EQ(fleet.run(check).status, 3);
    EXPECT_THAT(contentOf(file), Not(HasSubstr("torvane_camera")));
    EXPECT_THAT(contentOf(file), HasSubstr("\ntorvane_check_timestamp_seconds 0\n"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.parent_path()), {}), 1);
}

} // namespace
