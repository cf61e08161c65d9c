// How vornosc starts the application, run as a user runs it, with no display.
#include "tests/support/TestFiles.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace {

TEST(Start, TheApplicationAnswersHelpVersionAndBadOptionsAndSaysWhenThereIsNoDisplay)
{
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "starts")) {
        SCOPED_TRACE(c.dump());
        QStringList arguments;
        for (const std::string argument : c["arguments"])
            arguments.append(QString::fromStdString(argument));
        QProcess vornosc;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(variable));
        vornosc.setProcessEnvironment(environment);
        vornosc.start(QStringLiteral(VORNOSC_BINARY), arguments);
        ASSERT_TRUE(vornosc.waitForFinished(10000));
        EXPECT_EQ(vornosc.exitCode(), c["status"]);
        const QByteArray shown = vornosc.readAllStandardOutput() + vornosc.readAllStandardError();
        EXPECT_TRUE(shown.contains(c["shows"].get<std::string>())) << shown.toStdString();
    }
}

}  // namespace
