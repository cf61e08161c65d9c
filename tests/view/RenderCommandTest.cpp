// vornosc render as a user runs it: pictures of the example, and failures
// that leave no picture behind.
#include "tests/view/QtTestSupport.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(RenderCommand, PaintsAPageAtTheDevicesSizeAsTheCanvasShowsItOrFailsInOneLineLeavingNoPicture)
{
    for (const json& c : Cases(DATA_DIR "/canvas.json", "renders")) {
        const QTemporaryDir folder;
        QStringList args{QStringLiteral("render")};
        for (const json& arg : c["args"]) {
            args << QString::fromStdString(arg)
                        .replace(QStringLiteral("EXAMPLE"),
                                 QStringLiteral(EXAMPLES_DIR "/Demo.VornOsc"))
                        .replace(QStringLiteral("FOLDER"), folder.path());
        }
        SCOPED_TRACE(args.join(QLatin1Char(' ')).toStdString());
        QProcess vornosc;
        vornosc.start(QStringLiteral(VORNOSC_BINARY), args);
        vornosc.waitForFinished();
        const int status = vornosc.exitCode();
        const QString errors = QString::fromLocal8Bit(vornosc.readAllStandardError());
        EXPECT_EQ(status, c["status"]);
        EXPECT_TRUE(errors.contains(QString::fromStdString(c.value("says", ""))))
            << errors.toStdString();
        EXPECT_TRUE(status != 1 || errors.count(QLatin1Char('\n')) == 1) << errors.toStdString();
        const QStringList files = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
        ASSERT_EQ(files.size(), status == 0 ? 1 : 0);
        const QImage picture(folder.filePath(files.value(0)));
        EXPECT_EQ(json({picture.width(), picture.height()}), c.value("size", json({0, 0})));
        for (const json& p : c.value("pixels", json::array()))
            EXPECT_EQ(ColourAt(picture, p[0], p[1]), p[2]) << p[3];
    }
}

}  // namespace
