// SPDX-License-Identifier: MIT
// Whose the lock file of the PC is.
#include "RunLock.h"

#include <gmock/gmock.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

namespace fleet {

namespace {

using testing::HasSubstr;

TEST(RunLock, ItsFileIsAnotherRunsOnlyWhereARunHoldsIt)
{
    using namespace std::chrono_literals;
    const QTemporaryDir folder;
    const QString elsewhere = folder.filePath("tmp");
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    for (const char *variable : {"TMPDIR", "TMP"}) // of this test's process alone
        qputenv(variable, elsewhere.toUtf8());
    const QString here = folder.path();
    for (const QByteArray &left : {QByteArray(), QByteArray("left by nobody")}) {
        QFile file(here + "/torvane.lock");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(left) == left.size());
        file.setFileTime(QDateTime::currentDateTime().addSecs(-9), QFile::FileModificationTime);
        file.close();
        RunLock lock(here);
        EXPECT_TRUE(lock.acquire(0s)) << left.toStdString();
        EXPECT_TRUE(file.permissions().testFlag(QFile::ReadOther)) << "others could not see that it is held";
        EXPECT_FALSE(RunLock(here).acquire(0s));
    }
    {
        RunLock lock("/nowhere");
        EXPECT_TRUE(lock.acquire(0s));
        RunLock second(here);
        EXPECT_FALSE(second.acquire(0s));
        EXPECT_THAT(second.holder(), HasSubstr(QDir::toNativeSeparators(elsewhere).toStdString()));
    }
    ASSERT_TRUE(QDir().mkpath(here + "/torvane.lock"));
    EXPECT_THROW(RunLock(here).acquire(0s), std::runtime_error) << "it can't be told";
}

} // namespace

} // namespace fleet
