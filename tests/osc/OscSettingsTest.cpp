#include "app/osc/OscSettings.h"

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(OscSettings, SavedTargetLoadsInTheNextRunAndABadOneLoadsTheDefault)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("vornosc.ini"));
    {
        QSettings lastRun(file, QSettings::IniFormat);
        SaveOscTarget(lastRun, {"::1", 7000});
    }

    QSettings settings(file, QSettings::IniFormat);
    EXPECT_EQ(settings.value(QStringLiteral("osc/target")).toString(),
              QStringLiteral("[::1]:7000"));
    EXPECT_EQ(ToString(LoadOscTarget(settings)), "[::1]:7000");
    for (const char* stored : {"", "nonsense", "example.org:0"}) {
        SCOPED_TRACE(stored);
        settings.setValue(QStringLiteral("osc/target"), QString::fromUtf8(stored));
        EXPECT_EQ(ToString(LoadOscTarget(settings)), "127.0.0.1:9000");
    }
}

}  // namespace
