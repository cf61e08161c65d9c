// vornosc render as a user runs it: pictures of the example, and failures
// that leave no picture behind.
#include "CanvasFixture.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace {

// The exit status and what went to stderr.
std::pair<int, QString> Render(QStringList args)
{
    QProcess vornosc;
    vornosc.start(QStringLiteral(VORNOSC_BINARY), QStringList{QStringLiteral("render")} + args);
    vornosc.waitForFinished();
    return {vornosc.exitCode(), QString::fromLocal8Bit(vornosc.readAllStandardError())};
}

const QString kExample = QStringLiteral(EXAMPLES_DIR "/Demo.VornOsc");

TEST(RenderCommand, PaintsAPageAtTheDevicesScreenSizeAsTheCanvasShowsIt)
{
    const QTemporaryDir folder;
    const QString plain = folder.filePath(QStringLiteral("plain.png"));
    const QString phone = folder.filePath(QStringLiteral("phone.png"));
    ASSERT_EQ(Render({kExample, QStringLiteral("--out"), plain}).first, 0);
    ASSERT_EQ(Render(QStringList{kExample, QStringLiteral("--out=") + phone} +
                     QStringLiteral("--page 2 --device iphone --test-mode --select all")
                         .split(QLatin1Char(' ')))
                  .first,
              0);
    const QImage ipad(plain), iphone(phone);
    EXPECT_EQ(ipad.size(), QSize(1024, 768));
    EXPECT_EQ(iphone.size(), QSize(480, 320));
    EXPECT_EQ(ipad.pixel(4, 20), qRgb(0x3F, 0x3F, 0x3F)) << "the title strip";
    EXPECT_EQ(ipad.pixel(870, 400), qRgb(0, 0, 0)) << "the page, with no scroll bar across it";
    EXPECT_EQ(ipad.pixel(14, 60), qRgb(0, 0, 0)) << "an unselected label's outline";
    EXPECT_EQ(iphone.pixel(100, 28), qRgb(0x7F, 0, 0)) << "the test mode banner";
}

TEST(RenderCommand, FailsInOneLineWithoutLeavingAPicture)
{
    const QTemporaryDir folder;
    for (const json& c : CanvasCases("renderFailures")) {
        SCOPED_TRACE(c["says"].get<std::string>());
        QStringList args;
        for (const json& arg : c["args"]) {
            args << QString::fromStdString(arg)
                        .replace(QStringLiteral("EXAMPLE"), kExample)
                        .replace(QStringLiteral("FOLDER"), folder.path());
        }
        if (!args.contains(QStringLiteral("--out")))
            args << QStringLiteral("--out") << folder.filePath(QStringLiteral("out.png"));
        const auto [status, errors] = Render(args);
        EXPECT_EQ(status, c["status"]);
        EXPECT_TRUE(errors.contains(QString::fromStdString(c["says"]))) << errors.toStdString();
        EXPECT_TRUE(status != 1 || errors.count(QLatin1Char('\n')) == 1) << errors.toStdString();
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 0);
    }
}

}  // namespace
