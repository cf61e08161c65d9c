// How vornosc starts the application, run as a user runs it.
#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

namespace {

TEST(Start, TheApplicationAnswersHelpVersionAndBadOptionsAndSaysWhenThereIsNoDisplay)
{
    const struct {
        QStringList args;
        bool display;
        int status;
        const char* shows;
    } cases[] = {
        {{QStringLiteral("--version")}, true, 0, "vornosc 0.1\n"},
        {{QStringLiteral("render"), QStringLiteral("--version")}, true, 0, "vornosc 0.1\n"},
        {{QStringLiteral("--help")},
         true,
         0,
         "       vornosc [--osc-target HOST:PORT] [--insert PARAMETERS.json] [LAYOUT...]"},
        {{QStringLiteral("--osc-target"), QStringLiteral("nowhere")},
         true,
         2,
         "vornosc: OSC target \"nowhere\" is not HOST:PORT"},
        {{QStringLiteral("--osc-target")}, true, 2, "vornosc: --osc-target needs HOST:PORT"},
        {{}, false, 1, "vornosc: there is no display to open the editor on"},
        {{QStringLiteral(EXAMPLES_DIR "/Demo.VornOsc")}, false, 1, "no display"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args.join(QLatin1Char(' ')).toStdString());
        QProcess vornosc;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(variable));
        vornosc.setProcessEnvironment(environment);
        vornosc.start(QStringLiteral(VORNOSC_BINARY), c.args);
        ASSERT_TRUE(vornosc.waitForFinished(10000));
        EXPECT_EQ(vornosc.exitCode(), c.status);
        const QString shown =
            QString::fromUtf8(vornosc.readAllStandardOutput() + vornosc.readAllStandardError());
        EXPECT_TRUE(shown.contains(QString::fromUtf8(c.shows))) << shown.toStdString();
    }
}

}  // namespace
