// vornosc render as a user runs it: pictures of the example, and failures
// that leave no picture behind.
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Rendered {
    int status;
    QString errors;
};

Rendered Render(const QStringList& args)
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
    ASSERT_EQ(Render({kExample, QStringLiteral("--out"), plain}).status, 0);
    ASSERT_EQ(
        Render({kExample, QStringLiteral("--out=") + phone, QStringLiteral("--page"),
                QStringLiteral("2"), QStringLiteral("--device"), QStringLiteral("iphone"),
                QStringLiteral("--test-mode"), QStringLiteral("--select"), QStringLiteral("all")})
            .status,
        0);
    const QImage ipad(plain), iphone(phone);
    EXPECT_EQ(ipad.size(), QSize(1024, 768));
    EXPECT_EQ(iphone.size(), QSize(480, 320));
    EXPECT_EQ(ipad.pixel(4, 20), qRgb(0x3F, 0x3F, 0x3F)) << "the title strip";
    EXPECT_EQ(ipad.pixel(14, 60), qRgb(0, 0, 0)) << "an unselected label's outline";
    EXPECT_EQ(iphone.pixel(100, 28), qRgb(0x7F, 0, 0)) << "the test mode banner";
}

TEST(RenderCommand, FailsInOneLineWithoutLeavingAPicture)
{
    const QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.png"));
    const struct {
        QStringList args;
        int status;
        const char* says;
    } cases[] = {
        {{kExample, QStringLiteral("--page"), QStringLiteral("3")}, 1, "there is no page 3"},
        {{kExample, QStringLiteral("--page"), QStringLiteral("0")}, 1, "there is no page 0"},
        {{folder.filePath(QStringLiteral("missing.VornOsc"))}, 1, "cannot read"},
        {{kExample, QStringLiteral("--out"), folder.filePath(QStringLiteral("no/such.png"))},
         1,
         "no/such.png"},
        {{kExample, QStringLiteral("--out"), folder.filePath(QStringLiteral("out.jpg"))},
         2,
         "must end in .png"},
        {{kExample, QStringLiteral("--select"), QStringLiteral("some")}, 2, "only \"all\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.says);
        QStringList args = c.args;
        if (!args.contains(QStringLiteral("--out")))
            args << QStringLiteral("--out") << out;
        const Rendered run = Render(args);
        EXPECT_EQ(run.status, c.status);
        EXPECT_TRUE(run.errors.contains(QString::fromUtf8(c.says))) << run.errors.toStdString();
        if (c.status == 1) {
            EXPECT_EQ(run.errors.count(QLatin1Char('\n')), 1);
        }
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 0);
    }
}

}  // namespace
